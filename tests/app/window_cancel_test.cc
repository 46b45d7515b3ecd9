// SPDX-License-Identifier: MIT
// A load that is cancelled, at whatever moment, and the window afterwards.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QPushButton>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "app/window_fixture.h"
#include "stockbook/base/column_keys.h"
#include "stockbook/interaction/event_listener.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

// Calls at the chosen event of the control, whichever it is.
class AtEvent : public interaction::EventListener {
 public:
  AtEvent(control::Stockbook& control, std::function<void()> call) : control_(control), call_(std::move(call)) {
    control_.AddListener(this);
  }
  ~AtEvent() override { control_.RemoveListener(this); }
  AtEvent(const AtEvent&) = delete;
  AtEvent& operator=(const AtEvent&) = delete;

  // Counted from 0 from now on.
  void Choose(int event) {
    chosen_ = event;
    heard_ = 0;
  }
  int heard() const { return heard_; }

  void Process(int16_t) override { Hear(); }
  void AfterLoaded() override { Hear(); }
  void AfterFormatted() override { Hear(); }
  void CommandExecute(const std::string&, bool&) override { Hear(); }
  void Notify(const std::string&) override { Hear(); }

 private:
  void Hear() {
    if (heard_++ == chosen_) call_();
  }

  control::Stockbook& control_;
  std::function<void()> call_;
  int chosen_ = -1;
  int heard_ = 0;
};

class CancelledLoad : public WindowTest {
 protected:
  static constexpr int kLines = 120;
  static constexpr int kAmongTheRows = 40;
  // A few lines, since a load is cancelled at everything that it tells of them.
  void OpenFirst() {
    SampleOptions few;
    few.lines = kLines;
    WriteSampleInventory(PathOf("few.db"), few);
    window_->OpenDatabase(PathOf("few.db"));
    window_->show();
    ASSERT_TRUE(window_->LoadFirstJournal().loaded);
    beside().SetGrace(std::chrono::milliseconds(0));
    beside().SetStep(std::chrono::milliseconds(0));
    Settle();
  }
  qt::Beside& beside() { return window_->reading().loader().beside(); }
  LoadStrip& strip() { return window_->reading().strip(); }
  void ClickCancel() { strip().work().findChild<QPushButton*>()->click(); }

  // A place in the middle, folds, columns of the user's own and a selection of several cells.
  void MakeItOwn() {
    int row = grid().Rows() / 2;
    while (grid().RecordOfRow(row) < 0) ++row;
    grid().SetIsCollapsed(grid().NextSubtotal(grid().FixedRows()), true);
    grid().SetColHidden(grid().ColIndex(keys::kDepot), true);
    grid().SetColWidth(grid().ColIndex(keys::kStoQty), 2345);
    Settle();
    const int column = grid().ColIndex(keys::kIssQty);
    stockbook().sheet().SelectRange(row, column, row + 2, column + 1);
    stockbook().sheet().view().ScrollTo({37, 301});
    Settle();
  }
  static JournalOptions Customers() {
    JournalOptions options;
    options.journal_type = 2;
    options.allow_inv = true;
    options.acc_restrict = true;
    return options;
  }
  static JournalRange February() {
    return JournalRange::Of({RangeBound::OfPeriod({2025, 2}), RangeBound::OfPeriod({2025, 2})});
  }

  // All that a user or a host can see of the journal, but for the messages.
  std::vector<std::string> Everything() {
    const control::Stockbook& of = stockbook().control();
    const sheet::GridSheet& sheet = stockbook().sheet();
    std::vector<std::string> all = {Title(),
                                    of.Caption(),
                                    of.KeyName(),
                                    of.dpCode(),
                                    of.ColsFilter(),
                                    of.AccRestrict(),
                                    of.OutlineColKey(),
                                    of.SupplierTitle(),
                                    window_->bar().Options().dp_code,
                                    window_->views().RowCount().toStdString(),
                                    window_->views().range().from ? window_->views().range().from->Text() : "",
                                    window_->selection_line().text().toStdString(),
                                    window_->coverage().text().toStdString(),
                                    sheet.Tag()};
    const auto add = [&](auto... numbers) { (all.push_back(std::to_string(numbers)), ...); };
    add(of.KeyID(), of.dpID(), static_cast<int>(of.JournalType()), of.AllowInv(), of.RowHeight(), of.RowHeightSum(),
        of.RowHeightTitle(), window_->bar().Options().key_id, window_->bar().Options().journal_type);
    const sheet::ScrollPosition scroll = sheet.view().geometry().scroll();
    add(sheet.Rows(), sheet.Cols(), sheet.Row(), sheet.Col(), sheet.RowSel(), sheet.ColSel(), scroll.x, scroll.y,
        sheet.FrozenCols(), sheet.FixedRows(), sheet.OutlineCol(), sheet.Redraw(), sheet.Revision(),
        sheet.TextRevision(), sheet.LoadedRevision(), sheet.ColRevision(), window_->columns().CanUndo());
    for (int column = 0; column < sheet.Cols(); ++column) {
      all.push_back(sheet.ColKey(column));
      add(sheet.ColWidth(column), sheet.ColHidden(column));
      for (int row = 0; row < sheet.Rows(); ++row) {
        all.push_back(sheet.DisplayText(row, column));
        all.push_back(sheet.CellData(row, column).Text());
        add(sheet.CellBackColor(row, column), sheet.CellPicture(row, column) != nullptr);
      }
    }
    for (int row = 0; row < sheet.Rows(); ++row)
      add(sheet.RowHeight(row), sheet.RowHidden(row), sheet.IsCollapsed(row), sheet.RowOutlineLevel(row));
    return all;
  }
  QImage Picture() { return stockbook().grab().toImage(); }

  // Cancels another journal at every event of its load, one after the other, and compares.
  void CancelEverywhere(const std::function<void()>& cancel) {
    const std::vector<std::string> before = Everything();
    const QImage picture = Picture();
    AtEvent at(stockbook().control(), cancel);
    int cancelled = 0;
    for (int event = 0;; ++event) {
      at.Choose(event);
      const LoadReport report = window_->LoadJournal(Customers());
      const bool reached = at.heard() > event;
      at.Choose(-1);
      Settle();
      if (!reached) {
        EXPECT_TRUE(report.loaded);
        break;
      }
      // The names of the products are composed and the columns arranged when the journal is already there.
      if (report.loaded) continue;
      ++cancelled;
      ASSERT_TRUE(report.cancelled) << event;
      ASSERT_EQ(Everything(), before) << event;
      ASSERT_TRUE(stockbook().sheet().CheckInvariants()) << event;
      ASSERT_EQ(Picture(), picture) << event;
      ASSERT_EQ(window_->message().Message().toStdString(), "已取消读取。") << event;
      ASSERT_FALSE(strip().failure().isVisible()) << event;
      ASSERT_FALSE(strip().work().isVisible()) << event;
      ASSERT_TRUE(stockbook().updatesEnabled()) << event;
    }
    constexpr int kLeast = 50;
    EXPECT_GT(cancelled, kLeast) << "a load announces itself often";
    EXPECT_EQ(stockbook().control().JournalType(), 2);
  }
};

TEST_F(CancelledLoad, LeavesTheJournalAsItWasAtWhateverEventItWasCancelled) {
  OpenFirst();
  MakeItOwn();
  CancelEverywhere([this] { beside().Cancel(); });
}

TEST_F(CancelledLoad, LeavesARangeAsItWasAtWhateverEventItWasCancelled) {
  OpenFirst();
  window_->views().ShowRange(February());
  Settle();
  CancelEverywhere([this] { beside().Cancel(); });
}

// The button is clicked while the control takes the rows over: so the window handles events there.
TEST_F(CancelledLoad, HearsTheButtonWhileTheRowsAreTakenOver) {
  OpenFirst();
  MakeItOwn();
  const std::vector<std::string> before = Everything();
  AtEvent at(stockbook().control(), [this] {
    QMetaObject::invokeMethod(
        window_.get(), [this] { ClickCancel(); }, Qt::QueuedConnection);
  });
  int cancelled = 0;
  // The last event of a load: nothing is left to be done there but to arrange the columns.
  for (int event = 0; cancelled == event; ++event) {
    at.Choose(event);
    cancelled += static_cast<int>(window_->LoadJournal(Customers()).cancelled);
    if (cancelled > event) {
      ASSERT_EQ(Everything(), before) << event;
    }
    at.Choose(-1);
    Settle();
  }
  constexpr int kLeast = 50;
  EXPECT_GT(cancelled, kLeast);
}

TEST_F(CancelledLoad, OfTheFirstJournalLeavesNone) {
  Open();
  beside().SetGrace(std::chrono::milliseconds(0));
  AtEvent at(stockbook().control(), [this] { beside().Cancel(); });
  at.Choose(kAmongTheRows);
  EXPECT_TRUE(window_->LoadJournal(Customers()).cancelled);
  at.Choose(-1);
  EXPECT_EQ(grid().RecordCount(), 0U);
  EXPECT_FALSE(window_->journal().options().has_value());
  EXPECT_TRUE(window_->LoadJournal(Customers()).loaded);
}

// The button is clicked when the columns of the new journal are already those that the user had there.
TEST_F(CancelledLoad, IsHeardAfterTheColumnsWereArranged) {
  constexpr int kMine = 3456;
  OpenFirst();
  const JournalOptions first = *window_->journal().options();
  ASSERT_TRUE(window_->LoadJournal(Customers()).loaded);
  grid().SetColWidth(grid().ColIndex(keys::kExplain), kMine);
  Settle();
  ASSERT_TRUE(window_->LoadJournal(first).loaded);
  MakeItOwn();
  const std::vector<std::string> before = Everything();
  const QImage picture = Picture();
  const auto is_arranged = [this] {
    return stockbook().control().JournalType() == 2 && grid().ColWidth(grid().ColIndex(keys::kExplain)) == kMine;
  };
  bool arranged = false;
  window_->journal().SetLoader([&](const JournalOptions& options, const std::function<void()>& arrange) {
    return window_->reading().loader().Load(options, [&] {
      arrange();
      arranged = is_arranged();
      QMetaObject::invokeMethod(
          window_.get(), [this] { ClickCancel(); }, Qt::QueuedConnection);
    });
  });
  EXPECT_TRUE(window_->LoadJournal(Customers()).cancelled);
  EXPECT_TRUE(arranged);
  window_->journal().SetLoader([&](const JournalOptions& options, const std::function<void()>& arrange) {
    return window_->reading().loader().Load(options, arrange);
  });
  Settle();
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(Picture(), picture);
  ASSERT_TRUE(window_->LoadJournal(Customers()).loaded);
  EXPECT_TRUE(is_arranged()) << "what was given up has not been learnt as the user's columns";
  ASSERT_TRUE(window_->LoadJournal(first).loaded);
  EXPECT_EQ(grid().ColWidth(grid().ColIndex(keys::kStoQty)), 2345);
}

// What the journal of the file would be now is not what was in the window.
TEST_F(CancelledLoad, OrAFailedOneReadsNothingToShowTheOldJournalAgain) {
  OpenFirst();
  const std::vector<std::string> before = Everything();
  AtEvent at(stockbook().control(), [this] { Change(PathOf("few.db"), "DELETE FROM 入库记录"); });
  class Failing : public interaction::EventListener {
   public:
    void AfterLoaded() override { throw std::runtime_error("the host fails"); }
  };
  Failing failing;
  stockbook().control().AddListener(&failing);
  at.Choose(kAmongTheRows);
  const LoadReport report = window_->LoadJournal(Customers());
  at.Choose(-1);
  stockbook().control().RemoveListener(&failing);
  EXPECT_FALSE(report.loaded);
  EXPECT_FALSE(report.cancelled);
  EXPECT_TRUE(strip().failure().isVisible());
  Settle();
  EXPECT_EQ(Everything(), before);
}

TEST_F(CancelledLoad, AndAClosedWindowByTheKeysOfTheMenu) {
  OpenFirst();
  const std::vector<std::string> before = Everything();
  bool stayed = false;
  AtEvent at(stockbook().control(), [&] {
    QMetaObject::invokeMethod(
        window_.get(),
        [&] {
          QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::ControlModifier);
          QApplication::sendEvent(&stockbook(), &press);
          stayed = window_->isVisible();
        },
        Qt::QueuedConnection);
  });
  at.Choose(kAmongTheRows);
  EXPECT_TRUE(window_->LoadJournal(Customers()).cancelled);
  at.Choose(-1);
  EXPECT_TRUE(stayed) << "whoever loads is still at it";
  EXPECT_EQ(Everything(), before);
  Settle();
  EXPECT_FALSE(window_->isVisible());
}

}  // namespace
}  // namespace stockbook::app
