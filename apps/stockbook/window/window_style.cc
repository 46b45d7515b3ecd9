// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <QPainter>
#include <QStyleOption>

#include "qt/colour.h"

namespace stockbook::app {

void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
  if (!box || !qt::IsDark(option->palette.color(QPalette::Window))) return;
  QColor ink = option->palette.color(QPalette::WindowText);
  constexpr int kPale = 150;  // of 255: weaker than a text
  ink.setAlpha(option->state.testFlag(State_Enabled) ? kPale : kPale / 2);
  painter->save();
  painter->setPen(ink);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
  painter->restore();
}

}  // namespace stockbook::app
