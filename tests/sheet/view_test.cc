// SPDX-License-Identifier: MIT
// Several views of one sheet, each at its own place.
#include "stockbook/sheet/view/view.h"

#include <gtest/gtest.h>

#include <random>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Together;

// Counts what it is told.
class Counter : public SheetViewer {
 public:
  void Damaged(const Rect&) override { ++damages; }
  void ScrollChanged() override { ++scrolls; }
  void CursorChanged(Cursor) override {}

  int damages = 0;
  int scrolls = 0;
};

// A thousand rows of 20 pixels under a caption, four columns of 64 pixels after a fixed one.
class Views : public ::testing::Test {
 protected:
  Views() {
    sheet.LoadColumns(Together(Periods(1000, 10), Numbers(1000), Numbers(1000), Numbers(1000)), 1);
    sheet.view().SetSize({300, 220}, 1.0);
    other.SetSize({150, 420}, 2.0);
  }
  ~Views() override {
    EXPECT_TRUE(sheet.CheckInvariants());
    EXPECT_TRUE(other.CheckInvariants());
  }

  GridSheet sheet;
  View other{sheet};
};

TEST_F(Views, HavePlacesOfTheirOwn) {
  sheet.SetTopRow(500);
  other.ScrollTo({0, 40 * 100});
  EXPECT_EQ(sheet.TopRow(), 500);
  EXPECT_EQ(other.geometry().TopRow(), 101);
  sheet.Select(510, 2);
  EXPECT_TRUE(other.ChangeSelection({{7, 3}, {9, 4}}));
  EXPECT_EQ(sheet.view().selection(), Selection::Of({510, 2}));
  EXPECT_EQ(other.selection(), (Selection{{7, 3}, {9, 4}}));
}

TEST_F(Views, EachKeepTheirTopRowWhenRowsComeAndGo) {
  sheet.SetTopRow(500);
  other.ScrollTo({0, 40 * 100});
  sheet.AddItem("new", 300);
  EXPECT_EQ(sheet.TopRow(), 501);
  EXPECT_EQ(other.geometry().TopRow(), 101);
  sheet.GroupBy(1, 2, "%s");
  EXPECT_EQ(sheet.TextMatrix(sheet.TopRow(), 2), "499");
  EXPECT_EQ(sheet.TextMatrix(other.geometry().TopRow(), 2), "100");
  sheet.SetRows(50);
  EXPECT_EQ(other.geometry().TopRow(), 40);
}

TEST_F(Views, KeepTheirSelectionWithinTheSheet) {
  other.ChangeSelection({{900, 4}, {950, 3}});
  sheet.SetRows(100);
  sheet.SetCols(3);
  EXPECT_EQ(other.selection(), (Selection{{99, 2}, {99, 2}}));
}

TEST_F(Views, AreAllToldOfAChangeAndOfNoOthersPlace) {
  Counter first;
  Counter second;
  sheet.view().SetViewer(&first);
  other.SetViewer(&second);
  sheet.SetTextMatrix(2, 1, "text");
  EXPECT_EQ(first.damages, 1);
  EXPECT_EQ(second.damages, 1);
  sheet.SetTopRow(300);
  EXPECT_EQ(first.scrolls, 1);
  EXPECT_EQ(second.scrolls, 0);
  sheet.SetRedraw(false);
  sheet.SetRowHeight(-1, 400);
  EXPECT_EQ(first.damages + second.damages, 2);
  sheet.SetRedraw(true);
  EXPECT_EQ(first.damages, 2);
  EXPECT_EQ(second.damages, 2);
  other.SetViewer(nullptr);
  sheet.view().SetViewer(nullptr);
}

TEST_F(Views, TakenOfAViewAreAtItsPlaceAtAnotherScale) {
  sheet.SetTopRow(400);
  sheet.view().ScrollBy(30, 0);
  sheet.Select(405, 2);
  const View copy(sheet.view(), {600, 440}, 2.0);
  EXPECT_EQ(copy.geometry().TopRow(), 400);
  EXPECT_EQ(copy.geometry().scroll().x, 2 * sheet.view().geometry().scroll().x);
  EXPECT_EQ(copy.selection(), sheet.view().selection());
  EXPECT_EQ(copy.geometry().CellRect(405, 2).height, 2 * sheet.view().geometry().CellRect(405, 2).height);
}

TEST_F(Views, StayValidThoughTheirRowsHaveGone) {
  sheet.SetTopRow(900);
  sheet.view().ScrollBy(0, 7);
  const View copy(sheet.view(), {430, 220}, 1.0);
  sheet.SetRows(20);
  EXPECT_TRUE(copy.CheckInvariants());
  sheet.SetFixedRows(3);
  sheet.SetRows(3);
  EXPECT_TRUE(copy.CheckInvariants());
  EXPECT_EQ(copy.geometry().scroll().y, 0);
}

TEST_F(Views, MayScrollTheFrozenColumns) {
  sheet.SetFrozenCols(2);
  EXPECT_EQ(other.PinnedCols(), 3);
  EXPECT_EQ(other.PartOf(5, 1), CellPart::kFrozen);
  other.SetPinnedCols(0);
  EXPECT_EQ(other.PinnedCols(), 1);
  EXPECT_EQ(other.PartOf(5, 1), CellPart::kBody);
  EXPECT_EQ(other.PartOf(5, 0), CellPart::kFixed);
  EXPECT_EQ(sheet.view().PinnedCols(), 3);
}

TEST_F(Views, OfManyScalesAgreeWithOnesThatAreMadeAnew) {
  std::mt19937 random(3);
  const auto row = [&] { return 1 + static_cast<int>(random() % static_cast<unsigned>(sheet.Rows() - 1)); };
  sheet.GroupBy(1, 2, "%s");
  for (int round = 0; round < 300; ++round) {
    switch (random() % 6) {
      case 0:
        sheet.SetRowHeight(row(), static_cast<int>(random() % 600));
        break;
      case 1:
        sheet.SetRowHidden(row(), random() % 2 == 0);
        break;
      case 2:
        sheet.AddItem("new", row());
        break;
      case 3:
        sheet.RemoveItem(row());
        break;
      case 4:
        sheet.SetIsCollapsed(sheet.NextSubtotal(1), random() % 2 == 0);
        break;
      default:
        if (random() % 8 == 0) random() % 2 == 0 ? sheet.CollapseAll() : sheet.ExpandAll();
    }
    const View fresh(other, other.size(), other.scale());
    ASSERT_EQ(other.rows().Total(), fresh.rows().Total()) << round;
    const int probe = row();
    ASSERT_EQ(other.rows().Top(probe), fresh.rows().Top(probe)) << round;
    ASSERT_TRUE(other.CheckInvariants()) << round;
  }
}

}  // namespace
}  // namespace stockbook::sheet
