// SPDX-License-Identifier: MIT
#include "qt/accessible_table.h"

namespace stockbook::qt {
namespace {

// What a screen reader hears while it listens.
class AccessibleNewsTest : public AccessibleTable {
 protected:
  AccessibleNewsTest() : AccessibleTable(&Hear) {
    // What the view puts off when it gets the focus is over by then.
    QApplication::processEvents();
    QAccessible::setActive(true);
    sheet_.Select(kFirstLine, testing::kLedgerBill);
    heard_.clear();
  }
  ~AccessibleNewsTest() override { QAccessible::setActive(false); }

  static void Hear(QAccessibleEvent* event) {
    std::string text = qAccessibleEventString(event->type());
    if (const QAccessibleInterface* from = event->accessibleInterface(); from != nullptr) {
      text += " " + from->text(QAccessible::Name).toStdString();
    }
    if (event->type() == QAccessible::TableModelChanged) {
      const auto* change = static_cast<QAccessibleTableModelChangeEvent*>(event);
      text += " " + std::to_string(change->modelChangeType()) + " " + std::to_string(change->firstRow()) + ".." +
              std::to_string(change->lastRow());
    }
    heard_.push_back(text);
  }
  static std::vector<std::string> Heard() { return std::exchange(heard_, {}); }

  static inline std::vector<std::string> heard_;
};

TEST_F(AccessibleNewsTest, TellsTheNewCurrentCell) {
  sheet_.Select(kFirstNode, testing::kLedgerBill);
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Focus 2004-01", "Selection 2004-01"}));
  sheet_.Select(sheet_.Rows() - kGroup, testing::kLedgerBill);
  EXPECT_EQ(Heard(), (std::vector<std::string>{"Focus 2004-03", "Selection 2004-03"})) << "out of view as well";
  sheet_.Select(sheet_.Rows() - kGroup, testing::kLedgerBill);
  EXPECT_TRUE(Heard().empty()) << "nothing moved";
}

TEST_F(AccessibleNewsTest, TellsThatMoreIsSelected) {
  sheet_.SelectRange(kFirstLine, testing::kLedgerBill, kFirstLine + 3, testing::kLedgerBill);
  EXPECT_EQ(Heard(), std::vector<std::string>{"SelectionWithin 库存明细账"});
}

TEST_F(AccessibleNewsTest, TellsThatANodeWasFolded) {
  sheet_.SetIsCollapsed(kFirstNode, true);
  EXPECT_EQ(Heard(), (std::vector<std::string>{"StateChanged 2004-01", "TableModelChanged 库存明细账 4 1..10"}));
  sheet_.SetIsCollapsed(kFirstNode, false);
  EXPECT_EQ(Heard(), (std::vector<std::string>{"StateChanged 2004-01", "TableModelChanged 库存明细账 2 1..10"}));
}

TEST_F(AccessibleNewsTest, TellsTheNewDescriptionOfTheNodeWithTheCurrentCell) {
  sheet_.Select(kFirstNode, testing::kLedgerBill);
  Heard();
  sheet_.SetIsCollapsed(kFirstNode, true);
  EXPECT_EQ(Heard(), (std::vector<std::string>{"StateChanged 2004-01", "DescriptionChanged 2004-01",
                                               "TableModelChanged 库存明细账 4 1..10"}));
  sheet_.Select(kFirstNode, testing::kLedgerBill);
  EXPECT_TRUE(Heard().empty());
}

TEST_F(AccessibleNewsTest, EndsWithTheCurrentCellWhenTheViewGetsTheFocus) {
  view_->clearFocus();
  QApplication::processEvents();
  Heard();
  view_->setFocus();
  // The view's own event goes to the toolkit at once and not to this test.
  EXPECT_TRUE(Heard().empty());
  QApplication::processEvents();
  EXPECT_EQ(Heard(), std::vector<std::string>{"Focus " + Name(Cell(kFirstLine - 1, kBill))});
}

TEST_F(AccessibleNewsTest, TellsOfALoadOnceWhenItIsDone) {
  sheet_.SetRedraw(false);
  SampleLedger({2, 4}).Fill(sheet_);
  EXPECT_TRUE(Heard().empty());
  sheet_.SetRedraw(true);
  const std::vector<std::string> heard = Heard();
  ASSERT_FALSE(heard.empty());
  EXPECT_EQ(heard.front(), "TableModelChanged 库存明细账 0 -1..-1");
  EXPECT_EQ(std::count(heard.begin(), heard.end(), heard.front()), 1);
  EXPECT_EQ(heard[1], "Focus 2004-01");
}

TEST_F(AccessibleNewsTest, TellsNothingOfScrollingAndPainting) {
  sheet_.view().ScrollTo({0, 60});
  QApplication::processEvents();
  view_->viewport()->repaint();
  EXPECT_TRUE(Heard().empty());
}

TEST_F(AccessibleNewsTest, TellsNothingWhileNobodyListens) {
  QAccessible::setActive(false);
  sheet_.Select(kFirstNode, testing::kLedgerBill);
  EXPECT_TRUE(Heard().empty());
}

}  // namespace
}  // namespace stockbook::qt
