// SPDX-License-Identifier: MIT
// A window that moves its pixels and paints what is damaged shows the same as one that paints everything.
#include "sheet/view/pixel_moves.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "sheet/columns.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"
#include "sheet/recording_canvas.h"
#include "sheet/sheet_in_view.h"

namespace stockbook::sheet {
namespace {

using test::Numbers;
using test::Periods;
using test::RecordingCanvas;
using test::Together;

// What every pixel of a view shows, as a number.
class Pixels {
 public:
  explicit Pixels(const View& view) : size_(view.size()), values_(Area()) {
    RecordingCanvas canvas;
    Paint(Snapshot::Of(view), canvas);
    for (const auto& fill : canvas.fills)
      Set(fill.rect.Intersected(fill.clip), [&](int, int) { return size_t{fill.colour}; });
    for (const auto& text : canvas.texts) {
      const size_t shown = std::hash<std::string>()(text.text + text.font) ^ text.colour;
      Set(text.rect.Intersected(text.clip), [&](int x, int y) {
        return shown + static_cast<size_t>(x - text.rect.x) * 1021 + static_cast<size_t>(y - text.rect.y) * 65521;
      });
    }
  }

  // What is to be painted waits, and moves with the pixels.
  void Follow(const PixelMove& move) {
    const Pixels before = *this;
    Set(move.area, [&](int x, int y) {
      const int64_t from_x = x - move.dx;
      const int64_t from_y = y - move.dy;
      const bool inside =
          from_x >= move.area.x && from_x < move.area.right() && from_y >= move.area.y && from_y < move.area.bottom();
      return inside && !move.IsDamage() ? before.At(static_cast<int>(from_x), static_cast<int>(from_y)) : kWaits;
    });
  }
  void PaintWhatWaits(const Pixels& painted) {
    for (size_t at = 0; at < values_.size(); ++at)
      values_[at] = values_[at] == kWaits ? painted.values_[at] : values_[at];
  }
  // The number of pixels that differ.
  int Difference(const Pixels& other) const {
    int count = 0;
    for (size_t at = 0; at < values_.size(); ++at) count += values_[at] == other.values_[at] ? 0 : 1;
    return count;
  }

 private:
  static constexpr size_t kWaits = 1;  // no pixel has that value

  size_t Area() const { return static_cast<size_t>(size_.width) * static_cast<size_t>(size_.height); }
  size_t At(int x, int y) const {
    return values_[static_cast<size_t>(y) * static_cast<size_t>(size_.width) + static_cast<size_t>(x)];
  }
  template <typename Value>
  void Set(const Rect& rect, Value value) {
    const Rect area = rect.Intersected({0, 0, size_.width, size_.height});
    for (int y = area.y; y < area.bottom(); ++y) {
      for (int x = area.x; x < area.right(); ++x)
        values_[static_cast<size_t>(y) * static_cast<size_t>(size_.width) + static_cast<size_t>(x)] = value(x, y);
    }
  }

  Size size_;
  std::vector<size_t> values_;
};

// Ten columns of 100 pixels, the first frozen, and a thousand rows.
class ScrolledWindow : public test::SheetInView {
 protected:
  ScrolledWindow()
      : SheetInView(Together(Periods(1000, 50), Numbers(1000), Numbers(1000), Numbers(1000), Numbers(1000),
                             Numbers(1000), Numbers(1000), Numbers(1000), Numbers(1000), Numbers(1000))) {
    sheet.SetFrozenCols(1);
    for (int column = 2; column < sheet.Cols(); ++column) sheet.SetColDataType(column, platform::DataType::kDouble);
  }

  // Scrolls to random places near and far, and expects that nothing in the window is ever out of date.
  void ScrollAbout() {
    View& view = sheet.view();
    Pixels window(view);
    PixelMoves moves;
    moves.Follow(view);
    std::mt19937 random(1);
    const auto below = [&](int64_t limit) { return static_cast<int64_t>(random() % static_cast<uint64_t>(limit)); };
    for (int step = 0; step < 60; ++step) {
      const ScrollPosition now = view.geometry().scroll();
      const int64_t reach = step % 3 == 0 ? 2000 : 90;
      view.ScrollTo({now.x + (step % 4 == 1 ? 0 : below(reach) - reach / 2),
                     now.y + (step % 4 == 2 ? 0 : below(reach) - reach / 3)});
      const Pixels painted(view);
      for (const PixelMove& move : moves.Follow(view)) window.Follow(move);
      window.PaintWhatWaits(painted);
      ASSERT_EQ(window.Difference(painted), 0) << "step " << step;
    }
  }
};

TEST_F(ScrolledWindow, IsNeverOutOfDate) { ScrollAbout(); }

TEST_F(ScrolledWindow, IsNeverOutOfDateAtAFractionOfAPixel) {
  sheet.view().SetSize({430, 220}, 1.5);
  ScrollAbout();
}

TEST_F(ScrolledWindow, IsNeverOutOfDateBesideTheLastColumn) {
  for (int column = 5; column < sheet.Cols(); ++column) sheet.SetColHidden(column, true);
  sheet.view().SetSize({600, 220}, 1.0);
  ScrollAbout();
}

TEST_F(ScrolledWindow, MovesNothingThatStands) {
  PixelMoves moves;
  moves.Follow(sheet.view());
  EXPECT_TRUE(moves.Follow(sheet.view()).empty());
  sheet.view().ScrollTo({0, 40});
  const std::vector<PixelMove> down = moves.Follow(sheet.view());
  ASSERT_EQ(down.size(), 2u);
  EXPECT_FALSE(down[0].IsDamage());
  EXPECT_EQ(down[0].dx, 0);
  EXPECT_EQ(down[0].dy, -40);
  EXPECT_EQ(down[0].area.y, sheet.view().geometry().PinnedHeight()) << "the captions stay";
  EXPECT_TRUE(down[1].IsDamage());
}

}  // namespace
}  // namespace stockbook::sheet
