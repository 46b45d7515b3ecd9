// SPDX-License-Identifier: MIT
#include "stockbook/window/screen_fit.h"

#include <QScreen>

namespace stockbook::app {

void ResizeWithinScreen(QWidget& dialog, QSize wanted) {
  const QScreen* screen = dialog.screen();
  dialog.resize(screen == nullptr ? wanted : wanted.boundedTo(screen->availableSize() * 9 / 10));
}

}  // namespace stockbook::app
