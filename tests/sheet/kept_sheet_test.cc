// SPDX-License-Identifier: MIT
// A grid that is put back as it was, after other rows were loaded.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "sheet/columns.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::Texts;
using test::Together;

class AnyPicture : public platform::Picture {
 public:
  int WidthPx() const override { return 1; }
  int HeightPx() const override { return 1; }
};

class CountedMoves : public platform::GridObserver {
 public:
  int moves = 0;
  platform::Verdict BeforeRowColChange(platform::CellPosition, platform::CellPosition) override {
    ++moves;
    return platform::Verdict::kAllow;
  }
};

class KeptGrid : public ::testing::Test {
 protected:
  KeptGrid() {
    sheet_.view().SetSize({400, 300}, 1.0);
    sheet_.LoadColumns(Together(Numbers(90), Periods(90, 3), Numbers(90)), 1);
    sheet_.SetColKey(1, "Number");
    sheet_.SetColKey(2, "Period");
    sheet_.GroupBy(2, 1, "%s");
    sheet_.SetOutlineCol(1);
    sheet_.AddItem("", 40);
    sheet_.SetTextMatrix(40, 1, "total");
    sheet_.SetCellData(40, 2, base::Value(7.5));
    sheet_.SetRowHeight(40, 800);
    sheet_.SetRowHidden(60, true);
    sheet_.SetCellColors({5, 1, 8, 3}, 0x000000FF, 0x0000FF00);
    sheet_.SetLoadedPictures(3, std::vector<uint8_t>(90, 1), {nullptr, std::make_shared<AnyPicture>()},
                             platform::PictureAlignment::kLeftTop);
    sheet_.SetColWidth(2, 2000);
    sheet_.SetColPosition(3, 2);
    sheet_.SetFrozenCols(1);
    sheet_.SetIsCollapsed(1, true);
    sheet_.SelectRange(50, 1, 55, 2);
    sheet_.view().ScrollTo({30, 411});
  }

  // All that can be read of it.
  std::string Everything() const {
    std::string all;
    const auto add = [&](const auto& value) {
      if constexpr (std::is_convertible_v<decltype(value), std::string>) {
        all += value;
      } else {
        all += std::to_string(value);
      }
      all += '|';
    };
    for (int column = 0; column < sheet_.Cols(); ++column) {
      add(sheet_.ColKey(column));
      add(sheet_.ColWidth(column));
      for (int row = 0; row < sheet_.Rows(); ++row) {
        add(sheet_.DisplayText(row, column));
        add(sheet_.CellData(row, column).Text());
        add(sheet_.CellBackColor(row, column));
        add(sheet_.CellPicture(row, column) != nullptr);
      }
    }
    for (int row = 0; row < sheet_.Rows(); ++row) {
      add(sheet_.RowHeight(row));
      add(sheet_.RowHidden(row));
      add(sheet_.RowOutlineLevel(row));
      add(sheet_.IsCollapsed(row));
      add(sheet_.RecordOfRow(row));
    }
    const ScrollPosition scroll = sheet_.view().geometry().scroll();
    for (const int64_t number :
         {int64_t{sheet_.FixedRows()}, int64_t{sheet_.FrozenCols()}, int64_t{sheet_.OutlineCol()},
          int64_t{sheet_.Row()}, int64_t{sheet_.Col()}, int64_t{sheet_.RowSel()}, int64_t{sheet_.ColSel()}, scroll.x,
          scroll.y, sheet_.Revision(), sheet_.TextRevision(), sheet_.ColRevision(), sheet_.LoadedRevision()})
      add(number);
    return all;
  }

  void LoadOther() {
    sheet_.SetRows(1);
    sheet_.SetCols(1);
    sheet_.LoadColumns(Together(Texts({"a", "b", "c"}), Texts({"x", "y", "z"})), 1);
    sheet_.SetColKey(1, "Other");
    sheet_.SetTextMatrix(2, 1, "edited");
    sheet_.SetFrozenCols(0);
    sheet_.SetRowHeight(-1, 500);
    sheet_.Select(3, 2);
  }

  GridSheet sheet_;
};

TEST_F(KeptGrid, IsAsItWasAfterOtherRowsWereLoaded) {
  const std::string before = Everything();
  GridSheet::Kept kept = sheet_.Keep();
  LoadOther();
  EXPECT_NE(Everything(), before);
  sheet_.PutBack(std::move(kept));
  EXPECT_TRUE(sheet_.CheckInvariants());
  EXPECT_EQ(Everything(), before);
  EXPECT_EQ(sheet_.ColIndex("Period"), 3);
  EXPECT_EQ(sheet_.ColIndex("Other"), -1);
}

TEST_F(KeptGrid, IsPutBackOnce) {
  GridSheet::Kept kept = sheet_.Keep();
  LoadOther();
  const std::string other = Everything();
  GridSheet::Kept moved = std::move(kept);
  sheet_.PutBack(std::move(kept));
  EXPECT_EQ(Everything(), other);
  sheet_.PutBack(std::move(moved));
  EXPECT_EQ(sheet_.ColIndex("Period"), 3);
}

TEST_F(KeptGrid, GoesOnBeingChangedLikeOneThatWasNeverReplaced) {
  GridSheet::Kept kept = sheet_.Keep();
  LoadOther();
  sheet_.PutBack(std::move(kept));
  sheet_.SetIsCollapsed(1, false);
  sheet_.SetTextMatrix(45, 1, "after");
  sheet_.RemoveItem(40);
  sheet_.SetColKey(1, "Renamed");
  EXPECT_TRUE(sheet_.CheckInvariants());
  EXPECT_EQ(sheet_.TextMatrix(44, 1), "after");
  EXPECT_EQ(sheet_.ColIndex("Renamed"), 1);
  sheet_.ReplaceLoadedText(1, Numbers(90));
  EXPECT_TRUE(sheet_.CheckInvariants());
}

TEST_F(KeptGrid, StaysAsItWasKeptWhileTheGridChanges) {
  const std::string before = Everything();
  GridSheet::Kept kept = sheet_.Keep();
  sheet_.SetTextMatrix(40, 1, "changed");
  sheet_.ExpandAll();
  sheet_.SetCellColors({1, 1, 20, 3}, 0x00123456, 0);
  sheet_.PutBack(std::move(kept));
  EXPECT_EQ(Everything(), before);
}

// What was found in the rows between would be taken for something found in these.
TEST_F(KeptGrid, NeverHasTheRevisionsOfTheRowsBetweenAgain) {
  GridSheet::Kept kept = sheet_.Keep();
  LoadOther();
  const int64_t rows = sheet_.Revision();
  const int64_t texts = sheet_.TextRevision();
  const int64_t loaded = sheet_.LoadedRevision();
  const int64_t columns = sheet_.ColRevision();
  sheet_.PutBack(std::move(kept));
  constexpr int kChanges = 50;
  for (int change = 0; change < kChanges; ++change) {
    sheet_.AddItem("", 40);
    sheet_.SetTextMatrix(40, 1, std::to_string(change));
    sheet_.SetColWidth(1, 1000 + change);
    sheet_.ReplaceLoadedText(1, Numbers(90));
    EXPECT_NE(sheet_.Revision(), rows);
    EXPECT_NE(sheet_.TextRevision(), texts);
    EXPECT_NE(sheet_.LoadedRevision(), loaded);
    EXPECT_NE(sheet_.ColRevision(), columns);
  }
}

TEST_F(KeptGrid, IsPutBackWithoutTheObserver) {
  GridSheet::Kept kept = sheet_.Keep();
  LoadOther();
  CountedMoves observer;
  sheet_.SetObserver(&observer);
  sheet_.PutBack(std::move(kept));
  EXPECT_EQ(observer.moves, 0);
  EXPECT_EQ(sheet_.Row(), 50);
  sheet_.SetObserver(nullptr);
}

TEST_F(KeptGrid, LeavesAnotherViewOfTheSheetInside) {
  View other(sheet_);
  LoadOther();
  GridSheet::Kept kept = sheet_.Keep();
  sheet_.SetRows(1);
  sheet_.LoadColumns(Together(Numbers(500)), 1);
  other.ScrollTo({0, 5000});
  sheet_.PutBack(std::move(kept));
  EXPECT_TRUE(other.CheckInvariants());
}

}  // namespace
}  // namespace stockbook::sheet
