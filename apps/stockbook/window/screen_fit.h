// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QDialog>
#include <QObject>

namespace stockbook::app {

// Gives a dialog the size, or what the screen has room for beside the desktop's own bars and the dialog's frame.
void ResizeWithinScreen(QWidget& dialog, QSize wanted);

// To be called once a dialog has its layout. Where its parts take more than the screen has room for, they scroll, all
// but the row of its buttons, which stays in sight; elsewhere nothing changes.
void ScrollBeyondScreen(QWidget& dialog);

// Does both with every dialog of the program that is about to be shown, the toolkit's own ones too, and makes boxes
// with a message wide enough for their titles, which belongs to the application.
class ScreenFit : public QObject {
  Q_OBJECT

 public:
  explicit ScreenFit(QApplication& application);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace stockbook::app
