// SPDX-License-Identifier: MIT
#include "stockbook/window/message_line.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "qt/sheet/tool_tip.h"
#include "stockbook/window/bar_layout.h"

namespace stockbook::app {

MessageLine::MessageLine(QWidget* parent) : QLabel(parent) {
  setMinimumWidth(1);
  setContentsMargins(kBarMargin, 0, 0, 0);
}

void MessageLine::Show(const QString& message) {
  message_ = message;
  description_.clear();
  TextChanged();
}

void MessageLine::Describe(const QString& description) {
  description_ = description;
  TextChanged();
}

void MessageLine::TextChanged() {
  // Every call is announced.
  if (accessibleName() != Text()) setAccessibleName(Text());
  UpdateToolTip();
  update();
}

QSize MessageLine::sizeHint() const { return {1, fontMetrics().height()}; }

void MessageLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, palette(),
                        isEnabled(), Shown(), QPalette::WindowText);
}

void MessageLine::resizeEvent(QResizeEvent*) { UpdateToolTip(); }

void MessageLine::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  updateGeometry();
  UpdateToolTip();
}

QString MessageLine::Shown() const { return fontMetrics().elidedText(Text(), Qt::ElideRight, contentsRect().width()); }

void MessageLine::UpdateToolTip() {
  const bool cut_off = Shown() != Text();
  setToolTip(cut_off ? qt::PlainToolTip(Text()) : QString());
  // A tooltip is read aloud as a description, with its markup.
  const QString description = cut_off ? Text() : QString();
  if (accessibleDescription() != description) setAccessibleDescription(description);
}

}  // namespace stockbook::app
