// SPDX-License-Identifier: MIT
#include "sheet/print/page_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "sheet/outline/outline.h"
#include "sheet/print/carried_line.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/sample_ledger.h"

namespace stockbook::sheet {
namespace {

using testing::SampleLedger;

// A text on a page, in pixels of 1/96 inch.
struct Placed {
  std::string text;
  double x = 0;
  double y = 0;
};

// Notes the texts of a part of a page. Every character is six pixels wide.
class NotingCanvas : public Canvas {
 public:
  NotingCanvas(const PagePlace& place, std::vector<Placed>& texts) : place_(place), texts_(texts) {}

  void PushClip(const Rect&) override {}
  void PopClip() override {}
  void FillRects(platform::Colour, std::span<const Rect>) override {}
  void DrawPictures(std::span<const PictureItem>) override {}
  void DrawTexts(const platform::Font&, platform::Colour, std::span<const TextItem> items) override {
    for (const TextItem& item : items) {
      texts_.push_back({std::string(item.text), place_.x + item.rect.x / PageTarget::kScale * place_.zoom,
                        place_.y + item.rect.y / PageTarget::kScale * place_.zoom});
    }
  }
  int TextWidth(const platform::Font&, std::string_view line) override { return static_cast<int>(line.size()) * 48; }
  int LineHeight(const platform::Font&) override { return 16 * 8; }

 private:
  PagePlace place_;
  std::vector<Placed>& texts_;
};

class NotingPage : public PageTarget {
 public:
  void Paint(const PagePlace& place, const PageRoom&, const std::function<void(Canvas&)>& paint) override {
    NotingCanvas canvas(place, texts);
    paint(canvas);
  }

  const Placed* Find(const std::string& text) const {
    const auto found = std::find_if(texts.begin(), texts.end(), [&](const Placed& one) { return one.text == text; });
    return found == texts.end() ? nullptr : &*found;
  }
  // The texts on the same line, from left to right.
  std::vector<std::string> LineOf(const std::string& text) const {
    const Placed* placed = Find(text);
    std::vector<std::string> line;
    for (const Placed& one : texts) {
      if (placed != nullptr && std::abs(one.y - placed->y) < 1) line.push_back(one.text);
    }
    return line;
  }

  std::vector<Placed> texts;
};

class PaintedPages : public ::testing::Test {
 protected:
  PaintedPages() { SampleLedger({6, 40}).Fill(sheet); }

  static PageRoom A4() { return {1046, 720}; }
  PageSetup Carrying() const {
    PageSetup setup;
    setup.carried_columns = {testing::kLedgerStoQty, testing::kLedgerStoAcc};
    return setup;
  }
  static NotingPage Page(PagePainter& painter, int page) {
    NotingPage target;
    painter.Paint(page, target);
    return target;
  }

  GridSheet sheet;
};

TEST_F(PaintedPages, CarryTheStockOfTheirLastLineToTheNextPage) {
  PagePainter painter(sheet, A4(), {}, Carrying());
  ASSERT_GT(painter.PageCount(), 4);
  for (int page = 0; page < painter.PageCount(); ++page) {
    const NotingPage shown = Page(painter, page);
    int line = painter.PageAt(page).rows.last - 1;
    while (sheet.IsSubtotal(line)) --line;
    const std::vector<std::string> values{sheet.DisplayText(line, testing::kLedgerStoQty),
                                          sheet.DisplayText(line, testing::kLedgerStoAcc)};
    const bool last = page + 1 == painter.PageCount();
    EXPECT_EQ(shown.Find("承前页") == nullptr, page == 0) << page;
    ASSERT_EQ(shown.Find("过次页") == nullptr, last) << page;
    if (last) break;
    EXPECT_EQ(shown.LineOf("过次页"), (std::vector<std::string>{"过次页", values[0], values[1]})) << page;
    EXPECT_EQ(Page(painter, page + 1).LineOf("承前页"), (std::vector<std::string>{"承前页", values[0], values[1]}));
  }
}

TEST_F(PaintedPages, TellWhatIsCarriedBetweenTheCaptionsAndTheRowsAndAfterThem) {
  PagePainter painter(sheet, A4(), {}, Carrying());
  const NotingPage shown = Page(painter, 1);
  const Placed* before = shown.Find("承前页");
  const Placed* after = shown.Find("过次页");
  ASSERT_TRUE(before != nullptr && after != nullptr);
  EXPECT_LT(shown.Find("摘要")->y, before->y);
  EXPECT_EQ(std::count_if(shown.texts.begin(), shown.texts.end(), [](const Placed& one) { return one.text == "摘要"; }),
            1);
  for (int row = painter.PageAt(1).rows.first; row < painter.PageAt(1).rows.last; ++row) {
    if (sheet.IsSubtotal(row)) continue;
    const Placed* line = shown.Find(sheet.DisplayText(row, testing::kLedgerBill));
    ASSERT_NE(line, nullptr) << row;
    EXPECT_LT(before->y, line->y);
    EXPECT_LT(line->y, after->y);
  }
  EXPECT_LT(after->y + 22 * painter.zoom(), 720 - 24) << "above the page's number";
}

TEST_F(PaintedPages, CarryTheValueOfAFoldedLineAndWriteABlankOneAsZero) {
  sheet.CollapseAll();
  PaperLayout paper(sheet, 8);
  const PageSetup setup = Carrying();
  const CarriedLine carried(paper, setup);
  int total = 0;
  for (int row = 1; row < sheet.Rows() && total == 0; ++row) {
    if (sheet.IsSubtotal(row) && !sheet.outline().Governs(row)) total = row;
  }
  ASSERT_GT(total, 1);
  EXPECT_EQ(carried.TextBefore(total + 1, testing::kLedgerStoQty),
            sheet.DisplayText(total - 1, testing::kLedgerStoQty));
  sheet.SetTextMatrix(total - 1, testing::kLedgerStoQty, "");
  EXPECT_EQ(carried.TextBefore(total + 1, testing::kLedgerStoQty), "0.00");
  EXPECT_EQ(carried.TextBefore(1, testing::kLedgerStoQty), "") << "no line is before the first one";
}

TEST_F(PaintedPages, SayWhatTheyAreOf) {
  PageWords words;
  words.heading = "商品:六角螺栓";
  words.below_left = "范围:全部";
  words.below_right = "打印:2005-01-02";
  words.foot = "库.db";
  PagePainter painter(sheet, A4(), words);
  const NotingPage shown = Page(painter, 2);
  for (const std::string& text : {words.heading, words.below_left, words.below_right, words.foot})
    EXPECT_NE(shown.Find(text), nullptr) << text;
  EXPECT_EQ(shown.LineOf(words.foot).back(), "第 3 页 共 " + std::to_string(painter.PageCount()) + " 页");
  EXPECT_EQ(shown.LineOf(words.below_left).back(), words.below_right);
  EXPECT_LT(shown.Find(words.heading)->y, shown.Find(words.below_left)->y);
  EXPECT_LT(shown.Find(words.below_left)->y, shown.Find("摘要")->y);
}

TEST_F(PaintedPages, MarkThePeriodsThatAreShown) {
  PagePainter painter(sheet, A4(), {});
  const std::vector<PageBookmark> bookmarks = painter.Bookmarks();
  ASSERT_EQ(bookmarks.size(), 6U) << "totals are no periods";
  EXPECT_EQ(bookmarks[1].title, "2004-02");
  for (const PageBookmark& bookmark : bookmarks)
    EXPECT_NE(Page(painter, bookmark.page).Find(bookmark.title), nullptr) << bookmark.title;
  for (int row = 1; row < 20; ++row) sheet.SetRowHidden(row, true);
  EXPECT_EQ(PagePainter(sheet, A4(), {}).Bookmarks().size(), 5U);
}

TEST_F(PaintedPages, RepeatTheBillWhereTheColumnsGoOn) {
  PageSetup setup;
  setup.pages_wide = 2;
  setup.repeated_column = testing::kLedgerBill;
  PagePainter painter(sheet, {700, 720}, {}, setup);
  ASSERT_EQ(painter.PageAt(0).rows, painter.PageAt(1).rows);
  const std::string bill = sheet.DisplayText(3, testing::kLedgerBill);
  EXPECT_NE(Page(painter, 0).Find(bill), nullptr);
  EXPECT_NE(Page(painter, 1).Find(bill), nullptr);
  EXPECT_EQ(Page(painter, 1).Find("摘要"), nullptr);
  EXPECT_EQ(sheet.FrozenCols(), 0) << "the sheet itself is as it was";
}

}  // namespace
}  // namespace stockbook::sheet
