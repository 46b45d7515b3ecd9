// SPDX-License-Identifier: MIT
#include "stockbook/window/room_keeper.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>

namespace stockbook::app {

RoomKeeper::RoomKeeper(QMainWindow& window, QWidget& bar, const QVector<QWidget*>& parts)
    : QObject(&window), window_(window), bar_(bar) {
  // Otherwise its layout would set one of its own.
  window_.setMinimumSize(1, 1);
  window_.installEventFilter(this);
  for (QWidget* part : parts) part->installEventFilter(this);
}

int RoomKeeper::NeededHeight() const { return window_.layout()->totalMinimumSize().height(); }

void RoomKeeper::YieldBar() {
  const bool yielded = bar_.isHidden();
  const QWidget* focus = QApplication::focusWidget();
  if (!yielded && focus != nullptr && bar_.isAncestorOf(focus)) return;
  const int needed = NeededHeight() + (yielded ? bar_.minimumSizeHint().height() : 0);
  bar_.setVisible(needed <= window_.height());
}

// One after the other: the window is asked again once its layout is without it.
void RoomKeeper::CloseEarlierParts() {
  if (NeededHeight() <= window_.height() || opened_.size() < 2) return;
  for (QWidget* part : opened_) {
    // A panel that floats takes no room.
    if (part->isWindow() || part == opened_.last()) continue;
    part->hide();
    return;
  }
}

void RoomKeeper::HoldSize() {
  QSize least = window_.layout()->totalMinimumSize();
  if (!bar_.isHidden()) least.rheight() -= bar_.minimumSizeHint().height();
  if (least == least_) return;
  least_ = least;
  const bool fills = window_.isMaximized() || window_.isFullScreen();
  window_.setMinimumSize(least.boundedTo(fills ? window_.normalGeometry().size() : window_.size()));
}

bool RoomKeeper::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) {
    const bool opens = event->type() == QEvent::Show;
    if (event->spontaneous() || (!opens && event->type() != QEvent::Hide)) return false;
    // What is deleted is no longer a part.
    auto* part = static_cast<QWidget*>(watched);
    opened_.removeOne(part);
    if (opens) opened_.append(part);
    return false;
  }
  const bool rearranged = event->type() == QEvent::LayoutRequest;
  if (!window_.isVisible() || (!rearranged && event->type() != QEvent::Resize)) return false;
  YieldBar();
  if (rearranged && bar_.isHidden()) CloseEarlierParts();
  if (rearranged) HoldSize();
  return false;
}

}  // namespace stockbook::app
