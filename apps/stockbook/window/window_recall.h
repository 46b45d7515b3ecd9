// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QSettings>
#include <memory>
#include <optional>
#include <string>

#include "stockbook/window/journal_bar.h"
#include "stockbook/window/journal_keeper.h"
#include "stockbook/window/journal_zoom.h"
#include "stockbook/window/panel_height.h"
#include "stockbook/window/recent_inventories.h"
#include "stockbook/window/subject_uses.h"
#include "stockbook/window/window_memory.h"
#include "stockbook/window/window_menus.h"

namespace stockbook::app {

// The parts of a window that remember something.
struct RecallParts {
  QMainWindow& window;
  qt::StockbookWidget& stockbook;
  ShownJournal& journal;
  JournalBar& bar;
  JournalZoom& zoom;
  WindowMenus& menus;
  PanelHeight& panels;
};

// Makes a window remember: its place on the screen, which it fits, its zoom, the height of its panels, the inventories
// that were opened in it, and of each what JournalKeeper keeps. The one place to forget all of it is an item of the
// view menu.
class WindowRecall : public QObject {
  Q_OBJECT

 public:
  // The settings outlive this.
  WindowRecall(QSettings& settings, const RecallParts& parts);

  WindowMemory& memory() { return memory_; }
  // Before another inventory takes the place of the present one.
  void LeaveInventory() { keeper_.Keep(); }
  // `name` tells the inventory from others; `file` is empty for a server.
  void EnterInventory(const std::string& name, const QString& file);
  RecentInventories& recent() { return recent_; }
  SubjectUses& uses() { return uses_; }
  std::optional<JournalOptions> LastSubject() const { return memory_.LastSubject(); }
  // To where the journal that was loaded was left.
  void ReturnToPlace() { keeper_.ReturnToPlace(); }
  // Before the window closes.
  void KeepWindow();
  // Forgets everything and gives the window its first looks.
  void Forget();

 signals:
  // A file that was opened earlier.
  void FileWanted(const QString& file);
  // Everything was forgotten.
  void Forgotten();

 private:
  void PlaceWindow();
  void AskToForget();

  RecallParts parts_;
  WindowMemory memory_;
  JournalKeeper keeper_;
  RecentInventories recent_;
  SubjectUses uses_;
};

}  // namespace stockbook::app
