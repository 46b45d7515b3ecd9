// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace stockbook::app {

// Gives a dialog the size, or what the screen has room for beside the desktop's own bars and the dialog's frame.
void ResizeWithinScreen(QWidget& dialog, QSize wanted);

}  // namespace stockbook::app
