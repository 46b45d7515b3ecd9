// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

namespace stockbook::app {

// Calls once, when the widget is shown for the first time: what only a shown widget needs, its icons say, does not
// delay the start of the program. It deletes itself.
class OnceShown : public QObject {
  Q_OBJECT

 public:
  OnceShown(QWidget& widget, std::function<void()> call);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void()> call_;
};

}  // namespace stockbook::app
