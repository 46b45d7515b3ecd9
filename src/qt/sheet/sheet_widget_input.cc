// SPDX-License-Identifier: MIT
// The keys, the mouse and the focus of a SheetWidget.
#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QWheelEvent>
#include <utility>

#include "qt/sheet/input_events.h"
#include "qt/sheet/sheet_widget_parts.h"
#include "sheet/input/line_step.h"

namespace stockbook::qt {
namespace {

constexpr double kWheelStep = 120.0;  // the wheel's angle for one notch, in eighths of a degree
constexpr int kAutoScrollMs = 50;

}  // namespace

void SheetWidget::keyPressEvent(QKeyEvent* event) {
  // The key that ends a drag must not also close a dialog around the grid.
  if (event->key() == Qt::Key_Escape && parts_->mouse->Cancel()) return;
  // X11 knows no such key for menus.
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier && OpenMenu({})) return;
  if (!parts_->keyboard->Press(ToSheet(*event))) event->ignore();
}

void SheetWidget::mousePressEvent(QMouseEvent* event) { parts_->mouse->Press(ToSheet(*event, ratio_)); }

void SheetWidget::mouseMoveEvent(QMouseEvent* event) {
  parts_->mouse->Move(ToSheet(*event, ratio_));
  KeepAutoScrolling();
}

void SheetWidget::mouseReleaseEvent(QMouseEvent* event) {
  parts_->mouse->Release(ToSheet(*event, ratio_));
  KeepAutoScrolling();
}

void SheetWidget::mouseDoubleClickEvent(QMouseEvent* event) { parts_->mouse->DoubleClick(ToSheet(*event, ratio_)); }

// The right button already opens the menu when it is pressed. Here only the keyboard asks: for the current cell, or
// with Ctrl for the caption of its column.
void SheetWidget::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard) {
    event->setAccepted(view_->IsObserved());
    return;
  }
  event->setAccepted(OpenMenu(event->modifiers()));
}

bool SheetWidget::OpenMenu(Qt::KeyboardModifiers modifiers) {
  const int16_t control = modifiers.testFlag(Qt::ControlModifier) ? sheet::Modifiers::kControl : 0;
  const bool nested = std::exchange(menu_by_key_, true);
  const bool taken = parts_->keyboard->Press({sheet::Key::kMenu, {control}});
  menu_by_key_ = nested;
  return taken;
}

QPoint SheetWidget::MenuPlace() const {
  const auto [row, column] = view_->mouse_cell();
  if (!menu_by_key_ || row < 0 || column < 0) return QCursor::pos();
  const sheet::Geometry geometry = view_->geometry();
  const QRect cell = ToScreen(geometry.CellRect(row, column).Intersected(geometry.PaneOf(row, column)));
  return {cell.left(), cell.bottom() + 1};
}

void SheetWidget::KeepAutoScrolling() {
  if (!parts_->mouse->WantsAutoScroll()) {
    auto_scroll_.stop();
  } else if (!auto_scroll_.isActive()) {
    auto_scroll_.start(kAutoScrollMs, this);
  }
}

void SheetWidget::timerEvent(QTimerEvent* event) {
  if (event->timerId() != auto_scroll_.timerId()) {
    QAbstractScrollArea::timerEvent(event);
    return;
  }
  parts_->mouse->AutoScroll();
  KeepAutoScrolling();
}

void SheetWidget::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  view_->SetFocused(true);
  // The toolkit says itself, after this event, that the view has the focus; the current cell is to be the last word.
  QMetaObject::invokeMethod(
      this, [this] { parts_->news.TellFocus(); }, Qt::QueuedConnection);
}

void SheetWidget::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  // The focus comes back when the menu closes.
  if (event->reason() != Qt::PopupFocusReason) view_->SetFocused(false);
}

void SheetWidget::hideEvent(QHideEvent* event) {
  LetGo();
  QAbstractScrollArea::hideEvent(event);
}

// A touchpad reports pixels, a wheel notches of as many rows as the desktop is set to. Both scroll by pixels, and
// fractions are kept for slow turning.
void SheetWidget::wheelEvent(QWheelEvent* event) {
  QPointF turned;
  if (!event->pixelDelta().isNull()) {
    turned = QPointF(event->pixelDelta()) * ratio_;
  } else {
    turned = QPointF(event->angleDelta()) / kWheelStep * QApplication::wheelScrollLines() * sheet::LineStep(*view_);
  }
  // With Shift the wheel of a plain mouse scrolls sideways.
  if (event->modifiers().testFlag(Qt::ShiftModifier) && turned.x() == 0) turned = QPointF(turned.y(), 0);
  wheel_rest_ += turned;
  const auto dx = static_cast<int64_t>(wheel_rest_.x());
  const auto dy = static_cast<int64_t>(wheel_rest_.y());
  wheel_rest_ -= QPointF(static_cast<double>(dx), static_cast<double>(dy));
  parts_->mouse->Wheel(-dx, -dy);
  event->accept();
}

}  // namespace stockbook::qt
