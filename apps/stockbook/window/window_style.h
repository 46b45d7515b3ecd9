// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace stockbook::app {

// The desktop's style with what can be seen on dark palettes, too: boxes before they are ticked, whose frames the usual
// styles draw in a colour next to the window's; frames around menus; the signs for what a tool bar has no room for and
// for closing and loosening what is in the window, which they draw in black or grey; and hints in empty fields, for
// which some desktops have no light colour.
class WindowStyle : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                     const QWidget* widget = nullptr) const override;
};

}  // namespace stockbook::app
