// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "stockbook/platform/connection.h"
#include "stockbook/qt/beside.h"
#include "stockbook/window/change_watch.h"
#include "stockbook/window/journal_desk.h"
#include "stockbook/window/notice_bar.h"
#include "stockbook/window/work_bar.h"

namespace stockbook::app {

// The strip above the journal, which is only there when it has something to say: what is being read and how far it is,
// that the inventory of the last run is not the one that is open, why the last load failed, that the inventory was
// changed since, and the way back. Borrows what reads.
class LoadStrip : public QWidget {
  Q_OBJECT

 public:
  explicit LoadStrip(qt::Beside& beside, QWidget* parent = nullptr);

  // Another inventory was opened; `file` is "" for a server.
  void Follow(std::shared_ptr<platform::Connection> connection, const std::string& file);
  void LoadBegins();
  // `again` tries what failed once more.
  void LoadEnded(const LoadReport& report, std::function<void()> again);

  // In place of the inventory of the last run, which is called `name`, another one was opened, because of `reason` or,
  // where that is empty, because the last one has gone. `again` tries it once more.
  void TellReplacement(const QString& name, const QString& reason, std::function<void()> again);

  NoticeBar& replacement() { return *replacement_; }
  NoticeBar& failure() { return *failure_; }
  NoticeBar& change() { return *change_; }
  // The way back to a bill.
  NoticeBar& trail() { return *trail_; }
  WorkBar& work() { return *work_; }
  ChangeWatch& watch() { return *watch_; }

 signals:
  void ReloadWanted();

 private:
  void TellChange();
  // While a failed load is told, trying again is what is to be done about a change, too.
  void ShowChange();

  WorkBar* work_;
  NoticeBar* replacement_;
  NoticeBar* failure_;
  NoticeBar* change_;
  NoticeBar* trail_;
  ChangeWatch* watch_;
  bool is_changed_ = false;  // since what is shown was read, and the user has not closed that bar
};

}  // namespace stockbook::app
