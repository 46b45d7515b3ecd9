// SPDX-License-Identifier: MIT
#include "sheet/print/page_painter.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::sheet {
namespace {

constexpr double kFineScale = PageTarget::kScale;
// The heights of the lines beside the cells in pixels of 1/96 inch, and their text sizes.
constexpr double kHeadingHeight = 30;
constexpr double kBelowHeight = 20;
constexpr double kFooterHeight = 24;
constexpr double kHeadingSize = 1.2;
constexpr double kSmallSize = 0.9;
constexpr double kMargin = 12;  // between the texts of a line
constexpr platform::Colour kInk = 0x00000000;
constexpr std::string_view kBroughtForward = "承前页";
constexpr std::string_view kCarriedForward = "过次页";

int Fine(double pixels) { return static_cast<int>(std::lround(pixels * kFineScale)); }

enum class Weight { kNormal, kBold };

platform::Font Sized(platform::Font font, double factor, Weight weight) {
  font.size_pt *= factor;
  font.bold = weight == Weight::kBold;
  return font;
}

// As the eye weighs them.
bool IsDarkColour(platform::Colour colour) {
  const uint32_t red = colour & 0xFF;
  const uint32_t green = colour >> 8 & 0xFF;
  const uint32_t blue = colour >> 16 & 0xFF;
  return (red * 11 + green * 16 + blue * 5) / 32 <= 128;
}

Appearance OnPaper(const Appearance& looks) {
  Appearance light = looks;
  if (IsDarkColour(looks.Of(platform::GridColour::kBackColor))) light.palette() = Palette();
  return light;
}

// A line with a text at its left and one at its right, which is never cut: the left one ends before it.
void DrawLine(Canvas& canvas, const platform::Font& font, PageRoom room, std::string_view left,
              std::string_view right) {
  const Rect whole{0, 0, Fine(room.width), Fine(room.height)};
  const int taken = right.empty() ? 0 : canvas.TextWidth(font, right) + Fine(kMargin);
  const TextItem at_right{right, whole, HorizontalAlign::kRight};
  const TextItem at_left{left, {0, 0, std::max(whole.width - taken, 0), whole.height}, HorizontalAlign::kLeft};
  if (!left.empty()) canvas.DrawTexts(font, kInk, {&at_left, 1});
  if (!right.empty()) canvas.DrawTexts(font, kInk, {&at_right, 1});
}

}  // namespace

PagePainter::PagePainter(Sheet& sheet, PageRoom paper, PageWords words, PageSetup setup)
    : paper_(paper),
      words_(std::move(words)),
      setup_(std::move(setup)),
      layout_(sheet, kFineScale),
      looks_(OnPaper(sheet.appearance())),
      plan_(layout_, CellRoom(), setup_),
      carried_(layout_, setup_) {}

double PagePainter::HeadHeight() const {
  return kHeadingHeight + (words_.below_left.empty() && words_.below_right.empty() ? 0 : kBelowHeight);
}

// In pixels of the layout.
PageRoom PagePainter::CellRoom() const {
  return {std::max(1.0, paper_.width * kFineScale),
          std::max(1.0, (paper_.height - HeadHeight() - kFooterHeight) * kFineScale)};
}

void PagePainter::Paint(int page, PageTarget& target) {
  if (page < 0 || page >= PageCount()) return;
  PaintHead(target);
  PaintCells(page, target);
  PaintFoot(page, target);
}

void PagePainter::PaintHead(PageTarget& target) const {
  const PageRoom heading{paper_.width, kHeadingHeight};
  target.Paint({}, heading, [&](Canvas& canvas) {
    DrawLine(canvas, Sized(looks_.font, kHeadingSize, Weight::kBold), heading, words_.heading, {});
  });
  if (HeadHeight() <= kHeadingHeight) return;
  const PageRoom below{paper_.width, kBelowHeight};
  target.Paint({0, kHeadingHeight, 1}, below, [&](Canvas& canvas) {
    DrawLine(canvas, Sized(looks_.font, kSmallSize, Weight::kNormal), below, words_.below_left, words_.below_right);
  });
}

void PagePainter::PaintFoot(int page, PageTarget& target) const {
  const std::string number = "第 " + std::to_string(page + 1) + " 页 共 " + std::to_string(PageCount()) + " 页";
  const PageRoom foot{paper_.width, kFooterHeight};
  target.Paint({0, paper_.height - kFooterHeight, 1}, foot, [&](Canvas& canvas) {
    DrawLine(canvas, Sized(looks_.font, kSmallSize, Weight::kNormal), foot, words_.foot, number);
  });
}

void PagePainter::PaintCells(int page, PageTarget& target) {
  const PagePlan::Page shown = plan_.At(page);
  layout_.Show(shown.rows, shown.columns);
  const Size size = layout_.view().size();
  const int caption = std::min(layout_.CaptionHeight(), size.height);
  const PageRoom all = CellRoom();
  double y = HeadHeight();
  // A row higher than the page does not reach into the footer line.
  const auto paint = [&](int height, const std::function<void(Canvas&)>& painting) {
    const double left = (paper_.height - kFooterHeight - y) / plan_.zoom();
    if (left > 0) target.Paint({0, y, plan_.zoom()}, {all.width / kFineScale / plan_.zoom(), left}, painting);
    y += height / kFineScale * plan_.zoom();
  };
  const auto cells = [&](const Rect& area) {
    return [this, area](Canvas& canvas) { sheet::Paint(Snapshot::OnPaper(layout_.view(), area, looks_), canvas); };
  };
  const auto carried = [&](std::string_view words, int row) {
    return [this, words, row, shown](Canvas& canvas) { carried_.Paint(canvas, looks_, words, row, shown.columns); };
  };
  const int line = plan_.carried_height();
  if (line == 0 || !plan_.GoesOnBefore(page)) {
    paint(size.height, cells({0, 0, size.width, size.height}));
  } else {
    paint(caption, cells({0, 0, size.width, caption}));
    paint(line, carried(kBroughtForward, shown.rows.first));
    y -= caption / kFineScale * plan_.zoom();
    paint(size.height, cells({0, caption, size.width, size.height - caption}));
  }
  if (line > 0 && plan_.GoesOnAfter(page)) paint(line, carried(kCarriedForward, shown.rows.last));
}

std::vector<PageBookmark> PagePainter::Bookmarks() const {
  const Sheet& sheet = layout_.sheet();
  std::vector<PageBookmark> bookmarks;
  const int column = sheet.OutlineCol();
  if (column < 0) return bookmarks;
  for (int row = sheet.NextSubtotal(sheet.FixedRows()); row >= 0; row = sheet.NextSubtotal(row + 1)) {
    if (sheet.outline().Governs(row) && sheet.states().At(row).IsShown())
      bookmarks.push_back({sheet.DisplayText(row, column), plan_.PageOfRow(row)});
    if (row + 1 >= sheet.Rows()) break;
  }
  return bookmarks;
}

}  // namespace stockbook::sheet
