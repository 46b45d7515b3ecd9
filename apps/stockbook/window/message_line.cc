// SPDX-License-Identifier: MIT
#include "stockbook/window/message_line.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "qt/tool_tip.h"

namespace stockbook::app {

MessageLine::MessageLine(QWidget* parent) : QWidget(parent) { setMinimumWidth(1); }

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
  setAccessibleName(Text());
  UpdateToolTip();
  update();
}

QSize MessageLine::sizeHint() const { return {1, fontMetrics().height()}; }

void MessageLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, palette(), isEnabled(),
                        Shown(), QPalette::WindowText);
}

void MessageLine::resizeEvent(QResizeEvent*) { UpdateToolTip(); }

void MessageLine::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  updateGeometry();
  UpdateToolTip();
}

QString MessageLine::Shown() const { return fontMetrics().elidedText(Text(), Qt::ElideRight, width()); }

void MessageLine::UpdateToolTip() { setToolTip(Shown() == Text() ? QString() : qt::PlainToolTip(Text())); }

}  // namespace stockbook::app
