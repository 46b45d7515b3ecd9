// SPDX-License-Identifier: MIT
#include "stockbook/window/window_recall.h"

#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <optional>

namespace stockbook::app {
namespace {

// What frames and panels take of a screen that is otherwise free.
constexpr QSize kFrameRoom(16, 48);
constexpr QSize kPlainSize(1280, 800);
constexpr int kLowRoom = 400;

QString GeometryName() { return QStringLiteral("geometry"); }
QString ZoomName() { return QStringLiteral("zoom"); }
QString PanelsName() { return QStringLiteral("panels"); }

}  // namespace

WindowRecall::WindowRecall(QSettings& settings, const RecallParts& parts)
    : parts_(parts),
      memory_(settings),
      keeper_(parts.stockbook, parts.journal, memory_),
      recent_(memory_, *parts.menus.AddMenu(MenuPlace::kFileOpen, tr("最近打开(&R)"))) {
  parts_.menus.Add(MenuPlace::kViewMemory, tr("清除记住的设置(&M)..."), {}, this, &WindowRecall::AskToForget);
  connect(&recent_, &RecentInventories::Chosen, this, &WindowRecall::FileWanted);
  if (const QVariant zoom = memory_.OfWindow(ZoomName()); zoom.isValid()) parts_.zoom.Set(zoom.toDouble());
  connect(&parts_.zoom, &JournalZoom::Changed, this, [this](double zoom) { memory_.SetOfWindow(ZoomName(), zoom); });
  if (const QVariant share = memory_.OfWindow(PanelsName()); share.isValid()) parts_.panels.Choose(share.toDouble());
  connect(&parts_.panels, &PanelHeight::Changed, this,
          [this](double share) { memory_.SetOfWindow(PanelsName(), share); });
  PlaceWindow();
}

// A place on a screen that is gone is moved to one that is there, which the toolkit does.
void WindowRecall::PlaceWindow() {
  const QByteArray geometry = memory_.OfWindow(GeometryName()).toByteArray();
  if (!geometry.isEmpty() && parts_.window.restoreGeometry(geometry)) return;
  const QScreen* screen = parts_.window.screen();
  const QSize room = screen == nullptr ? kPlainSize : screen->availableSize() - kFrameRoom;
  parts_.window.resize(kPlainSize.boundedTo(room));
  // There every line counts, and the desktop knows how much its frame takes.
  if (room.height() < kLowRoom) parts_.window.setWindowState(Qt::WindowMaximized);
}

void WindowRecall::EnterInventory(const std::string& name, const QString& file) {
  keeper_.OpenInventory(name);
  uses_.KeepIn(&memory_.settings(), memory_.InventoryGroup());
  parts_.bar.SetUses(&uses_);
  recent_.Add(file);
}

void WindowRecall::KeepWindow() {
  keeper_.Keep();
  memory_.SetOfWindow(GeometryName(), parts_.window.saveGeometry());
}

void WindowRecall::AskToForget() {
  auto* box = new QMessageBox(
      QMessageBox::Question, tr("清除记住的设置"),
      tr("清除所有库存的列布局、折叠的会计期、区间、阅读位置、最近打开的文件和窗口位置？库存数据不受影响。"),
      QMessageBox::NoButton, &parts_.window);
  QPushButton* forget = box->addButton(tr("清除(&C)"), QMessageBox::AcceptRole);
  box->addButton(tr("取消"), QMessageBox::RejectRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  connect(forget, &QPushButton::clicked, this, &WindowRecall::Forget);
  box->open();
}

void WindowRecall::Forget() {
  memory_.Forget();
  keeper_.Forget();
  recent_.Refill();
  parts_.zoom.Set(1.0);
  parts_.panels.Choose(std::nullopt);
  memory_.Forget();
  parts_.window.showNormal();
  PlaceWindow();
  emit Forgotten();
}

}  // namespace stockbook::app
