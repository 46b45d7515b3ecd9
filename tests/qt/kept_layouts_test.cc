// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QSettings>
#include <memory>

#include "qt/kept_layout.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/error.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/stockbook_widget.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::JournalLine;

TEST_F(KeptLayout, IsThereAgainInTheNextProgram) {
  Load();
  SetWidth("BillNo", 4321);
  Hide("Explain");
  Hide("Depot", false);
  grid().SetColPosition(Column("StoQty"), 2);
  grid().SetFrozenCols(3);
  journal_->SetRowHeight(777);
  journal_->SetRowHeightTitle(888);
  journal_->SetRowHeightSum(999);
  journal_->SetBackColor(Qt::yellow);
  OpenAgain();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
  EXPECT_TRUE(IsHidden("Explain"));
  EXPECT_FALSE(IsHidden("Depot"));
  EXPECT_EQ(Column("StoQty"), 2);
  EXPECT_EQ(grid().FrozenCols(), 3);
  EXPECT_EQ(grid().OutlineCol(), Column("BillNo"));
  EXPECT_EQ(journal_->RowHeight(), 777);
  EXPECT_EQ(journal_->RowHeightTitle(), 888);
  EXPECT_EQ(journal_->RowHeightSum(), 999);
  EXPECT_EQ(journal_->BackColor(), QColor(Qt::yellow));
}

TEST_F(KeptLayout, StaysFromLoadToLoad) {
  Load();
  SetWidth("BillNo", 4321);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
  SetWidth("BillNo", 1234);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 1234);
}

TEST_F(KeptLayout, IsOnlyKeptForWhoAsksForIt) {
  journal_ = std::make_unique<StockbookWidget>();
  journal_->SetConn(connection_);
  Load();
  const int usual = WidthOf("BillNo");
  SetWidth("BillNo", 4321);
  journal_->SaveLayout(settings_, Group());
  Load();
  EXPECT_EQ(WidthOf("BillNo"), usual);
  Open();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321) << "saved all the same";
}

TEST_F(KeptLayout, IsAnotherOneForEachJournalType) {
  connection_->Answer("Select ", {"ksID"}, {});
  connection_->Answer("SELECT dir.AccPeriod", testing::JournalFieldNames(), {});
  Load();
  SetWidth("BillNo", 4321);
  journal_->SetJournalType(StockbookWidget::SupplierJournal);
  Load();
  EXPECT_NE(WidthOf("BillNo"), 4321);
  SetWidth("BillNo", 1234);
  OpenAgain();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
  journal_->SetJournalType(StockbookWidget::SupplierJournal);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 1234);
}

TEST_F(KeptLayout, IsTheUsualOneAgainWhereTheUserWantsIt) {
  Load();
  const int usual = WidthOf("BillNo");
  SetWidth("BillNo", 4321);
  Load();
  journal_->DefaultFormat();
  EXPECT_EQ(WidthOf("BillNo"), usual);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), usual);
}

TEST_F(KeptLayout, ShowsNothingThatTheHostHides) {
  Load();
  OpenAgain();
  QObject::connect(journal_.get(), &StockbookWidget::AfterFormatted, journal_.get(), [this] { Hide("StoAcc"); });
  Load();
  EXPECT_TRUE(IsHidden("StoAcc"));
  OpenAgain();
  Load();
  EXPECT_FALSE(IsHidden("StoAcc")) << "who may see it has not hidden it";
}

TEST_F(KeptLayout, ShowsNothingThatARightHides) {
  journal_->SetAllowInv(true);
  Load();
  Hide("Tax", false);
  OpenAgain();
  journal_->SetAllowInv(false);
  Load();
  EXPECT_TRUE(IsHidden("Tax"));
}

TEST_F(KeptLayout, HasTheWidthsOfTheHostUntilTheUserHasOthers) {
  int width = 1000;
  QObject::connect(journal_.get(), &StockbookWidget::AfterFormatted, journal_.get(),
                   [&] { SetWidth("BillNo", width); });
  Load();
  width = 2000;
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 2000);
  SetWidth("BillNo", 1234);
  width = 3000;
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 1234);
}

TEST_F(KeptLayout, HasTheHeightsOfTheFontUntilTheUserHasOthers) {
  Load();
  const float usual = journal_->RowHeight();
  OpenAgain();
  QFont large = journal_->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  journal_->setFont(large);
  Load();
  EXPECT_GT(journal_->RowHeight(), usual);
}

TEST_F(KeptLayout, KeepsTheHeightsOfLinesWhereAJournalHasNone) {
  Load();
  journal_->SetRowHeight(777);
  AnswerJournal(*connection_, {});
  connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period"}, {});
  Load();
  AnswerJournal(*connection_, {JournalLine{}});
  OpenAgain();
  Load();
  EXPECT_EQ(journal_->RowHeight(), 777);
}

TEST_F(KeptLayout, SurvivesALoadThatFails) {
  Load();
  SetWidth("BillNo", 4321);
  connection_->Do("SELECT TOP 1 AccPeriod AS Period", [this]() -> platform::Recordset {
    connection_->Answer("SELECT TOP 1 AccPeriod AS Period", {"Period"}, {});
    throw platform::Error("execute", "damaged", 0, platform::ErrorKind::kDamaged);
  });
  EXPECT_FALSE(journal_->Load(7, 0));
  AnswerJournal(*connection_, {JournalLine{}});
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, SurvivesALoadThatFailsWhereTheGridIsEmpty) {
  Load();
  SetWidth("BillNo", 4321);
  LoadThatFailsAt("SELECT * FROM (SELECT  * FROM (");
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, IsSavedWholeAfterALoadThatFails) {
  Load();
  SetWidth("BillNo", 4321);
  LoadThatFailsAt("SELECT * FROM (SELECT  * FROM (");
  OpenAgain();
  EXPECT_EQ(Saved("Columns0").size(), 55);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, IsNotTakenFromAnEmptyGridWhereNobodyKeepsIt) {
  journal_ = std::make_unique<StockbookWidget>();
  journal_->SetConn(connection_);
  Load();
  SetWidth("BillNo", 4321);
  journal_->SaveLayout(settings_, Group());
  LoadThatFailsAt("SELECT * FROM (SELECT  * FROM (");
  journal_->SaveLayout(settings_, Group());
  EXPECT_EQ(Saved("Columns0").size(), 55);
}

TEST_F(KeptLayout, SurvivesTheLayoutOfAGridThatAFailedLoadHasLeftEmpty) {
  Load();
  SetWidth("BillNo", 4321);
  LoadThatFailsAt("SELECT * FROM (SELECT  * FROM (");
  journal_->DefaultFormat();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, SurvivesASlotThatLoadsInsideOfALoad) {
  Load();
  SetWidth("BillNo", 4321);
  int loads_inside = 0;
  QObject::connect(journal_.get(), &StockbookWidget::Notify, journal_.get(), [&](const QString& message) {
    if (message.startsWith(QStringLiteral("正在读入"))) loads_inside += journal_->Load(7, 0) ? 0 : 1;
  });
  QObject::connect(journal_.get(), &StockbookWidget::Process, journal_.get(), [&](int indicator) {
    if (indicator == 35) journal_->SaveLayout(settings_, Group());
  });
  Load();
  EXPECT_EQ(loads_inside, 1);
  Open();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, SurvivesAProgramThatSetsTheTypeThatItHas) {
  Load();
  SetWidth("BillNo", 4321);
  OpenAgain();
  journal_->SetJournalType(StockbookWidget::MaterialJournal);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, StaysWhereAListenerCancelsTheLoad) {
  Load();
  const auto cancelling =
      QObject::connect(journal_.get(), &StockbookWidget::CommandExecute, journal_.get(),
                       [](const QString&, const BooleanReference& cancel) { cancel.SetValue(true); });
  EXPECT_FALSE(journal_->Load(7, 0));
  SetWidth("BillNo", 4321);
  QObject::disconnect(cancelling);
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, CountsAsNotSavedWhereItMeansNothing) {
  Load();
  const int usual = WidthOf("BillNo");
  settings_.setValue(QStringLiteral("journal/Columns0"),
                     QStringList{QStringLiteral("BillNo:wide:0"), QStringLiteral("BillNo:-5:0"),
                                 QStringLiteral("BillNo"), QStringLiteral("NoSuchColumn:100:0"), QString()});
  settings_.setValue(QStringLiteral("journal/Frozen0"), 12345);
  settings_.setValue(QStringLiteral("journal/Heights0"), QStringList{QStringLiteral("tall")});
  Open();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), usual);
  EXPECT_LT(grid().FrozenCols(), grid().Cols());
}

TEST_F(KeptLayout, CountsTheFirstOfColumnsThatAreSavedTwice) {
  QStringList columns;
  for (int count = 0; count < 3000; ++count) columns << QStringLiteral("BillNo:%1:0").arg(100 + count);
  columns << QStringLiteral("StoQty:200:0") << QStringLiteral("StoQty:300:0");
  ASSERT_NO_THROW(Open(columns));
  Load();
  EXPECT_EQ(Column("BillNo"), 1);
  EXPECT_EQ(WidthOf("BillNo"), 100);
  EXPECT_EQ(Column("StoQty"), 2);
  EXPECT_EQ(WidthOf("StoQty"), 200);
}

TEST_F(KeptLayout, OfAnotherTypeNeverStopsALoad) {
  connection_->Answer("Select ", {"ksID"}, {});
  connection_->Answer("SELECT dir.AccPeriod", testing::JournalFieldNames(), {});
  settings_.setValue(QStringLiteral("journal/Columns1"), QStringList(80, QStringLiteral("BillNo:100:0")));
  Open();
  journal_->SetJournalType(StockbookWidget::SupplierJournal);
  Load();
}

TEST_F(KeptLayout, CountsAsNotSavedWhereNumbersAreBeyondAllMeaning) {
  Load();
  const int usual = WidthOf("BillNo");
  const float height = journal_->RowHeight();
  settings_.setValue(QStringLiteral("journal/Columns0"),
                     QStringList{QStringLiteral("BillNo:99999999999:0"), QStringLiteral("BillNo:2147483647:0"),
                                 QStringLiteral("Explain:1000:yes"), QStringLiteral("Explain:1000:-1"),
                                 QStringLiteral("::1"), QStringLiteral(":100:1"), QStringLiteral("No:100:1")});
  settings_.setValue(QStringLiteral("journal/Frozen0"), QStringLiteral("-7"));
  settings_.setValue(QStringLiteral("journal/Heights0"),
                     QStringList{QStringLiteral("-1"), QStringLiteral("2147483647"), QString()});
  Open();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), usual);
  EXPECT_EQ(journal_->RowHeight(), height);
  EXPECT_EQ(grid().FrozenCols(), 0);
  settings_.setValue(QStringLiteral("journal/Columns0"), QString());
  settings_.setValue(QStringLiteral("journal/Heights0"), QString());
  Open();
  Load();
  EXPECT_EQ(WidthOf("BillNo"), usual);
}

TEST_F(KeptLayout, NeedsNoGroup) {
  Load();
  SetWidth("BillNo", 4321);
  journal_->SaveLayout(settings_, {});
  journal_ = std::make_unique<StockbookWidget>();
  journal_->SetConn(connection_);
  journal_->RestoreLayout(settings_, {});
  Load();
  EXPECT_EQ(WidthOf("BillNo"), 4321);
}

TEST_F(KeptLayout, SettingsThatCannotBeWrittenSaySo) {
  Load();
  QSettings nowhere(QStringLiteral("/proc/no/such/layout.ini"), QSettings::IniFormat);
  EXPECT_THROW(journal_->SaveLayout(nowhere, Group()), platform::Error);
}

TEST_F(KeptLayout, LetsASlotDeleteTheWidget) {
  QObject::connect(journal_.get(), &StockbookWidget::AfterFormatted, [this] { delete journal_.release(); });
  StockbookWidget* journal = journal_.get();
  journal->DefaultFormat();
  EXPECT_EQ(journal_, nullptr);
}

}  // namespace
}  // namespace stockbook::qt
