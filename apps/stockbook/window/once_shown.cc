// SPDX-License-Identifier: MIT
#include "stockbook/window/once_shown.h"

#include <QEvent>
#include <utility>

namespace stockbook::app {

OnceShown::OnceShown(QWidget& widget, std::function<void()> call) : QObject(&widget), call_(std::move(call)) {
  widget.installEventFilter(this);
}

bool OnceShown::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && call_) {
    std::exchange(call_, {})();
    deleteLater();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace stockbook::app
