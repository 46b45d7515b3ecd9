// SPDX-License-Identifier: MIT
#include "stockbook/message_line.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "qt/tool_tip.h"

namespace stockbook::app {

MessageLine::MessageLine(QWidget* parent) : QWidget(parent) { setMinimumWidth(1); }

void MessageLine::Show(const QString& message) {
  message_ = message;
  setAccessibleName(message);
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

QString MessageLine::Shown() const { return fontMetrics().elidedText(message_, Qt::ElideRight, width()); }

void MessageLine::UpdateToolTip() { setToolTip(Shown() == message_ ? QString() : qt::PlainToolTip(message_)); }

}  // namespace stockbook::app
