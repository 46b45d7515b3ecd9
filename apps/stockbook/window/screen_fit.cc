// SPDX-License-Identifier: MIT
#include "stockbook/window/screen_fit.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace stockbook::app {
namespace {

constexpr int kSignsOfTitle = 150;  // what a desktop draws beside a title
constexpr int kLeastMessage = 320;

QSize RoomFor(const QWidget& dialog, QSize wanted) {
  const QScreen* screen = dialog.screen();
  return screen == nullptr ? wanted : screen->availableSize() * 9 / 10;
}

bool HasButtons(QLayoutItem& item) {
  QWidget* part = item.widget();
  if (qobject_cast<QDialogButtonBox*>(part) != nullptr || qobject_cast<QPushButton*>(part) != nullptr) return true;
  QLayout* inner = item.layout();
  if (inner == nullptr) return false;
  for (int at = 0; at < inner->count(); ++at) {
    if (HasButtons(*inner->itemAt(at))) return true;
  }
  return false;
}

// The last row of the layout if the buttons are there, no longer part of it.
QLayoutItem* TakeButtons(QLayout& layout) {
  auto* rows = qobject_cast<QVBoxLayout*>(&layout);
  const int last = rows == nullptr ? 0 : rows->count() - 1;
  return last > 0 && HasButtons(*rows->itemAt(last)) ? rows->takeAt(last) : nullptr;
}

// The title has the program's name behind it.
void WidenForTitle(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  const QString title = box.windowTitle() + QStringLiteral(" — ") + QApplication::applicationDisplayName();
  const int wanted = std::max(box.fontMetrics().horizontalAdvance(title) + kSignsOfTitle, kLeastMessage);
  const QMargins margins = grid->contentsMargins();
  const int width = std::min(wanted, RoomFor(box, box.size()).width()) - margins.left() - margins.right();
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

void ResizeWithinScreen(QWidget& dialog, QSize wanted) { dialog.resize(wanted.boundedTo(RoomFor(dialog, wanted))); }

void ScrollBeyondScreen(QWidget& dialog) {
  QLayout* parts = dialog.layout();
  const QSize least = parts->totalMinimumSize();
  const QSize room = RoomFor(dialog, least);
  if (least == least.boundedTo(room)) return;
  QSize wanted = dialog.size().expandedTo(least);
  const QMargins margins = parts->contentsMargins();
  QLayoutItem* buttons = TakeButtons(*parts);
  // They never leave the dialog, which keeps the focus and its order.
  auto* area = new QScrollArea(&dialog);
  auto* body = new QWidget(area);
  body->setLayout(parts);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(body);
  auto* rows = new QVBoxLayout(&dialog);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(area, 1);
  if (buttons != nullptr) {
    auto* foot = new QVBoxLayout;
    foot->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    buttons->layout() == nullptr ? foot->addItem(buttons) : foot->addLayout(buttons->layout());
    rows->addLayout(foot);
  }
  if (least.height() > room.height()) wanted.rwidth() += area->verticalScrollBar()->sizeHint().width();
  rows->activate();
  ResizeWithinScreen(dialog, wanted);
}

ScreenFit::ScreenFit(QApplication& application) : QObject(&application) { application.installEventFilter(this); }

// The toolkit has given a dialog its size then, and places it next.
bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || event->spontaneous() || !watched->isWidgetType()) return false;
  auto* dialog = qobject_cast<QDialog*>(watched);
  if (dialog == nullptr || !dialog->isWindow()) return false;
  if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
    WidenForTitle(*box);
    return false;
  }
  if (dialog->layout() != nullptr) ScrollBeyondScreen(*dialog);
  ResizeWithinScreen(*dialog, dialog->size());
  return false;
}

}  // namespace stockbook::app
