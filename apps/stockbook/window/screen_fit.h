// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace stockbook::app {

// Gives a dialog the size, or what the screen has room for beside the desktop's own bars and the dialog's frame.
void ResizeWithinScreen(QWidget& dialog, QSize wanted);

// To be called once a dialog has its layout. Where its parts take more than the screen has room for, they scroll;
// elsewhere nothing changes.
void ScrollBeyondScreen(QWidget& dialog);

}  // namespace stockbook::app
