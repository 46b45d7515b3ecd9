// SPDX-License-Identifier: MIT
#include "stockbook/window/first_paint.h"

#include <QEvent>
#include <utility>

namespace stockbook::app {
namespace {

constexpr int kMomentMs = 1000;

}  // namespace

FirstPaint::FirstPaint(QWidget& widget, std::function<void()> call) : QObject(&widget), call_(std::move(call)) {
  widget.installEventFilter(this);
  moment_.setSingleShot(true);
  connect(&moment_, &QTimer::timeout, this, &FirstPaint::Call);
  moment_.start(kMomentMs);
}

// The paint event is only the beginning of a frame; what is due at once comes after the end of it.
bool FirstPaint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint && call_) moment_.start(0);
  return QObject::eventFilter(watched, event);
}

void FirstPaint::Call() {
  const std::function<void()> call = std::exchange(call_, {});
  deleteLater();
  if (call) call();
}

}  // namespace stockbook::app
