// SPDX-License-Identifier: MIT
#include "qt/sheet/scroll_bar.h"

#include <QStyle>
#include <QStyleOptionSlider>

namespace stockbook::qt {

QuietScrollBar::QuietScrollBar(Qt::Orientation orientation, QWidget* parent) : QScrollBar(orientation, parent) {}

QRect QuietScrollBar::SliderRect() const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
}

void QuietScrollBar::sliderChange(SliderChange change) {
  // At either end the style may show an arrow button as disabled.
  const bool at_end = value() == minimum() || value() == maximum();
  if (change == SliderValueChange && !at_end && !isSliderDown() && SliderRect() == painted_) return;
  QScrollBar::sliderChange(change);
}

void QuietScrollBar::paintEvent(QPaintEvent* event) {
  const bool at_end = value() == minimum() || value() == maximum();
  painted_ = at_end ? QRect() : SliderRect();
  QScrollBar::paintEvent(event);
}

}  // namespace stockbook::qt
