// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace stockbook::app {

// Calls once after a widget was painted for the first time, so that what takes long begins with something on the
// screen. A widget that nobody can see is not waited for longer than a moment. It deletes itself.
class FirstPaint : public QObject {
  Q_OBJECT

 public:
  FirstPaint(QWidget& widget, std::function<void()> call);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Call();

  std::function<void()> call_;
  QTimer moment_;
};

}  // namespace stockbook::app
