// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "qt/application.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"
#include "support/journal_rows.h"

namespace stockbook::qt {

// A program that keeps the layout of its journal.
class KeptLayout : public WithApplication {
 protected:
  KeptLayout()
      : connection_(std::make_shared<testing::FakeConnection>()),
        settings_(folder_.filePath(QStringLiteral("layout.ini")), QSettings::IniFormat) {
    testing::AnswerJournal(*connection_, {testing::JournalLine{}, testing::JournalLine{}});
    Open();
  }

  static QString Group() { return QStringLiteral("journal"); }

  // A program that starts, with what it has saved before.
  void Open() {
    journal_ = std::make_unique<StockbookWidget>();
    journal_->SetConn(connection_);
    journal_->RestoreLayout(settings_, Group());
  }
  void OpenAgain() {
    journal_->SaveLayout(settings_, Group());
    Open();
  }
  void Open(const QStringList& columns) {
    settings_.setValue(QStringLiteral("journal/Columns0"), columns);
    Open();
  }
  QStringList Saved(const char* key) {
    return settings_.value(Group() + QLatin1Char('/') + QLatin1String(key)).toStringList();
  }
  // The hitch is gone afterwards.
  void LoadThatFailsAt(const char* statement) {
    connection_->Fail(statement, "damaged", platform::ErrorKind::kDamaged);
    EXPECT_FALSE(journal_->Load(7, 0));
    testing::AnswerJournal(*connection_, {testing::JournalLine{}, testing::JournalLine{}});
  }
  void Load() { ASSERT_TRUE(journal_->Load(7, 0)); }

  platform::Grid& grid() { return journal_->Grid(); }
  int Column(const char* key) { return grid().ColIndex(key); }
  int WidthOf(const char* key) { return grid().ColWidth(Column(key)); }
  bool IsHidden(const char* key) { return grid().ColHidden(Column(key)); }
  void SetWidth(const char* key, int twips) { grid().SetColWidth(Column(key), twips); }
  void Hide(const char* key, bool hidden = true) { grid().SetColHidden(Column(key), hidden); }

  QTemporaryDir folder_;
  std::shared_ptr<testing::FakeConnection> connection_;
  QSettings settings_;
  std::unique_ptr<StockbookWidget> journal_;
};

}  // namespace stockbook::qt
