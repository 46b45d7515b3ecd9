// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace stockbook::app {

// The desktop's style with boxes that can be seen before they are ticked: on dark palettes the usual styles draw their
// frames in a colour next to the window's.
class WindowStyle : public QProxyStyle {
  Q_OBJECT

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
};

}  // namespace stockbook::app
