// SPDX-License-Identifier: MIT
// Nothing on the screen is ever out of date: whatever looks different after a change was
// reported as damaged, and painting only a part gives the same pixels as painting everything.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "sheet/gesture_world.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::sheet {
namespace {

using test::GestureWorld;
using test::RecordingCanvas;

using SeenText = std::tuple<std::string, int, int, int, int, int, std::string, platform::Colour>;

// What a test sees of a painted sheet or a part of it: the colours of some pixels, and the texts.
class Picture {
 public:
  static constexpr int kStep = 3;

  Picture(const GridSheet& sheet, const Rect& area)
      : size_(sheet.view().size()), scroll_(sheet.view().geometry().scroll()) {
    RecordingCanvas canvas;
    Paint(Snapshot::Of(sheet.view(), area), canvas);
    colours_.resize(static_cast<size_t>(Columns()) * static_cast<size_t>(size_.height / kStep + 1), 0xFFFFFFFF);
    for (const auto& fill : canvas.fills) Fill(fill.colour, fill.rect.Intersected(fill.clip));
    for (const auto& text : canvas.texts) {
      if (!text.rect.Intersects(text.clip)) continue;
      texts_.emplace(text.text, text.rect.x, text.rect.y, text.rect.width, text.rect.height,
                     static_cast<int>(text.align), text.font, text.colour);
    }
  }

  bool IsOfTheSamePlaceAs(const Picture& other) const { return size_ == other.size_ && scroll_ == other.scroll_; }
  const std::set<SeenText>& texts() const { return texts_; }
  platform::Colour At(int x, int y) const { return colours_[Index(x / kStep, y / kStep)]; }
  // Calls `visit` for every recorded point.
  template <typename Visit>
  void ForEachPoint(Visit visit) const {
    for (int y = 0; y < size_.height; y += kStep) {
      for (int x = 0; x < size_.width; x += kStep) visit(Point{x, y});
    }
  }

 private:
  int Columns() const { return size_.width / kStep + 1; }
  size_t Index(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(Columns()) + static_cast<size_t>(x);
  }
  void Fill(platform::Colour colour, const Rect& rect) {
    const auto first = [](int at) { return (std::max(at, 0) + kStep - 1) / kStep; };
    for (int y = first(rect.y); y * kStep < rect.bottom(); ++y) {
      for (int x = first(rect.x); x * kStep < rect.right(); ++x) colours_[Index(x, y)] = colour;
    }
  }

  Size size_;
  ScrollPosition scroll_;
  std::vector<platform::Colour> colours_;
  std::set<SeenText> texts_;
};

Rect Everything(const GridSheet& sheet) { return {0, 0, sheet.view().size().width, sheet.view().size().height}; }

Rect PlaceOf(const SeenText& text) {
  return {std::get<1>(text), std::get<2>(text), std::get<3>(text), std::get<4>(text)};
}

class Damage : public ::testing::TestWithParam<unsigned> {};

TEST_P(Damage, CoversAllThatLooksDifferentAfterAChange) {
  GestureWorld world(GetParam(), 200, 5);
  Picture before(world.sheet(), Everything(world.sheet()));
  bool was_on = true;
  for (int gesture = 0; gesture < 1500; ++gesture) {
    world.TakeDamage();
    world.Act();
    const std::vector<Rect> damage = world.TakeDamage();
    const bool on = world.sheet().Redraw();
    Picture after(world.sheet(), Everything(world.sheet()));
    // Scrolling moves pixels, and nothing is painted while redraw is off.
    if (on && was_on && after.IsOfTheSamePlaceAs(before)) {
      const auto repainted = [&](Point point) {
        return std::any_of(damage.begin(), damage.end(), [&](const Rect& area) { return area.Contains(point); });
      };
      after.ForEachPoint([&](Point point) {
        if (!HasFailure() && after.At(point.x, point.y) != before.At(point.x, point.y) && !repainted(point)) {
          ADD_FAILURE() << "gesture " << gesture << ": the pixel " << point.x << ' ' << point.y << " is out of date";
        }
      });
      std::vector<SeenText> changed;
      std::set_symmetric_difference(before.texts().begin(), before.texts().end(), after.texts().begin(),
                                    after.texts().end(), std::back_inserter(changed));
      for (const SeenText& text : changed) {
        const Rect place = PlaceOf(text).Intersected(Everything(world.sheet()));
        if (!place.IsEmpty() && !repainted({place.x + place.width / 2, place.y + place.height / 2}))
          ADD_FAILURE() << "gesture " << gesture << ": the text " << std::get<0>(text) << " is out of date";
      }
    }
    if (HasFailure()) return;
    before = std::move(after);
    was_on = on;
  }
}

TEST_P(Damage, PaintedAloneLooksLikeThatPartOfEverything) {
  GestureWorld world(GetParam() + 50, 200, 5);
  std::mt19937 random(GetParam());
  const auto below = [&](int limit) {
    return limit <= 1 ? 0 : static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int gesture = 0; gesture < 1500; ++gesture) {
    world.Act();
    const Size view = world.sheet().view().size();
    if (gesture % 3 != 0 || view.width == 0 || view.height == 0) continue;
    const Picture whole(world.sheet(), Everything(world.sheet()));
    const int x = below(view.width);
    const int y = below(view.height);
    const Rect area{x, y, 1 + below(view.width - x), 1 + below(view.height - y)};
    const Picture part(world.sheet(), area);
    whole.ForEachPoint([&](Point point) {
      const auto expected = area.Contains(point) ? whole.At(point.x, point.y) : 0xFFFFFFFF;
      if (!HasFailure() && part.At(point.x, point.y) != expected)
        ADD_FAILURE() << "gesture " << gesture << ": the pixel " << point.x << ' ' << point.y << " differs";
    });
    EXPECT_TRUE(std::includes(whole.texts().begin(), whole.texts().end(), part.texts().begin(), part.texts().end()));
    for (const SeenText& text : whole.texts()) {
      const Rect place = PlaceOf(text).Intersected(area);
      const bool within = area.Contains(PlaceOf(text).Intersected(Everything(world.sheet())));
      if (!place.IsEmpty() && within && part.texts().count(text) == 0)
        ADD_FAILURE() << "gesture " << gesture << ": the text " << std::get<0>(text) << " is missing";
    }
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Damage, ::testing::Range(1U, 5U));

}  // namespace
}  // namespace stockbook::sheet
