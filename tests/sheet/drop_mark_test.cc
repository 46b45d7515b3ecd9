// SPDX-License-Identifier: MIT
// The mark that shows where a column being moved would go.
#include <gtest/gtest.h>

#include <vector>

#include "sheet/columns.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"
#include "sheet/recording_canvas.h"
#include "sheet/sheet_in_view.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::RecordingCanvas;
using test::Together;

class DropMark : public test::SheetInView {
 protected:
  DropMark() : SheetInView(Together(Numbers(100), Numbers(100), Numbers(100), Numbers(100))) {
    sheet.view().SetSize({500, 220}, 1.0);
  }

  // Where the marks begin and end; a mark is as high as the cells and wider than a line.
  std::vector<Span> Marks() const {
    RecordingCanvas canvas;
    Paint(Snapshot::Of(sheet.view()), canvas);
    std::vector<Span> marks;
    for (const auto& fill : canvas.fills) {
      const Rect seen = fill.rect.Intersected(fill.clip);
      if (fill.colour == sheet.appearance().accent && seen.height == 220 && seen.width > 1)
        marks.push_back({seen.x, seen.right()});
    }
    return marks;
  }
};

TEST_F(DropMark, StandsBetweenTheTwoColumnsWhileThereIsOne) {
  EXPECT_TRUE(Marks().empty());
  sheet.view().SetDropColumn(3);
  EXPECT_EQ(Marks(), std::vector<Span>({{229, 232}}));
  sheet.view().SetDropColumn(5);
  EXPECT_EQ(Marks(), std::vector<Span>({{429, 432}})) << "after the last column";
  sheet.view().SetDropColumn(-1);
  EXPECT_TRUE(Marks().empty());
}

TEST_F(DropMark, IsSeenThoughTheColumnsEdgeIsScrolledAway) {
  sheet.SetFrozenCols(1);
  sheet.view().SetSize({300, 220}, 1.0);
  sheet.view().ScrollTo({60, 0});
  sheet.view().SetDropColumn(2);
  EXPECT_EQ(Marks(), std::vector<Span>({{129, 132}})) << "at the edge of the frozen columns, not on them";
  sheet.view().SetDropColumn(4);
  EXPECT_EQ(Marks(), std::vector<Span>({{269, 272}}));
  sheet.view().SetDropColumn(5);
  EXPECT_EQ(Marks(), std::vector<Span>({{297, 300}})) << "at the edge of the view";
}

TEST_F(DropMark, IsPaintedAnewWhenTheSheetScrollsUnderIt) {
  class Viewer : public test::IdleViewer {
   public:
    void Damaged(const Rect& area) override { damaged = area; }
    void ScrollChanged() override { damaged = {}; }
    Rect damaged;
  } viewer;
  sheet.view().SetSize({300, 220}, 1.0);
  sheet.view().SetDropColumn(5);
  sheet.view().SetViewer(&viewer);
  sheet.view().ScrollBy(10, 0);
  EXPECT_EQ(viewer.damaged, (Rect{0, 0, 300, 220}));
  sheet.view().SetDropColumn(-1);
  sheet.view().ScrollBy(10, 0);
  EXPECT_TRUE(viewer.damaged.IsEmpty());
  sheet.view().SetViewer(nullptr);
}

}  // namespace
}  // namespace stockbook::sheet
