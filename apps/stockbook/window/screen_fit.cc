// SPDX-License-Identifier: MIT
#include "stockbook/window/screen_fit.h"

#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace stockbook::app {
namespace {

QSize RoomFor(const QWidget& dialog, QSize wanted) {
  const QScreen* screen = dialog.screen();
  return screen == nullptr ? wanted : screen->availableSize() * 9 / 10;
}

}  // namespace

void ResizeWithinScreen(QWidget& dialog, QSize wanted) { dialog.resize(wanted.boundedTo(RoomFor(dialog, wanted))); }

void ScrollBeyondScreen(QWidget& dialog) {
  const QSize least = dialog.layout()->minimumSize();
  if (least == least.boundedTo(RoomFor(dialog, least))) return;
  const QSize wanted = dialog.size();
  auto* body = new QWidget;
  body->setLayout(dialog.layout());
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(body);
  auto* rows = new QVBoxLayout(&dialog);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(area);
  ResizeWithinScreen(dialog, wanted);
}

}  // namespace stockbook::app
