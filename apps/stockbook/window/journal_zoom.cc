// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_zoom.h"

#include <QEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace stockbook::app {
namespace {

constexpr int kNotch = 120;  // the wheel's angle, in eighths of a degree
constexpr int kStepPercent = 10;
constexpr int kLeastPercent = 50;
constexpr int kMostPercent = 300;
constexpr double kPercent = 100.0;

}  // namespace

JournalZoom::JournalZoom(qt::StockbookWidget& stockbook, WindowMenus& menus) : stockbook_(stockbook) {
  stockbook_.viewport()->installEventFilter(this);
  // Ctrl with plus and minus closes and opens periods in the grid.
  menus.Add(MenuPlace::kViewZoom, tr("放大(&I)"), QKeySequence(Qt::CTRL | Qt::Key_BracketRight), this,
            [this] { Step(1); });
  menus.Add(MenuPlace::kViewZoom, tr("缩小(&O)"), QKeySequence(Qt::CTRL | Qt::Key_BracketLeft), this,
            [this] { Step(-1); });
  menus.Add(MenuPlace::kViewZoom, tr("实际大小(&N)"), QKeySequence(Qt::CTRL | Qt::Key_0), this, [this] { Set(1.0); });
}

void JournalZoom::Set(double zoom) {
  const double before = stockbook_.Zoom();
  stockbook_.SetZoom(zoom);
  if (stockbook_.Zoom() != before) emit Changed(stockbook_.Zoom());
}

void JournalZoom::Step(int steps) {
  const int percent = static_cast<int>(std::lround(stockbook_.Zoom() * kPercent)) + steps * kStepPercent;
  Set(std::clamp(percent, kLeastPercent, kMostPercent) / kPercent);
}

bool JournalZoom::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QObject::eventFilter(watched, event);
  const auto& wheel = static_cast<const QWheelEvent&>(*event);
  if (!wheel.modifiers().testFlag(Qt::ControlModifier)) return QObject::eventFilter(watched, event);
  turned_ += wheel.angleDelta().y();
  const int steps = turned_ / kNotch;
  turned_ -= steps * kNotch;
  if (steps != 0) Step(steps);
  return true;
}

}  // namespace stockbook::app
