// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace stockbook::app {

// The desktop's style with what can be seen on dark palettes, too: boxes before they are ticked, whose frames the usual
// styles draw in a colour next to the window's; frames around menus and lines between their groups; the signs for
// closing and loosening what is in the window, and the one for what a bar has no room for, which they draw in black or
// grey; and hints in empty fields, for which some desktops have no light colour. Scroll bars of the toolkit's own style
// are drawn level, and menus that are higher than the screen scroll.
class WindowStyle : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget = nullptr) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget = nullptr) const override;
  int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                QStyleHintReturn* result = nullptr) const override;
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                     const QWidget* widget = nullptr) const override;
};

}  // namespace stockbook::app
