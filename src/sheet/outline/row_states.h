// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "sheet/store/run_tree.h"

namespace stockbook::sheet {

// What is known of a row beside its cells. Rows are mostly alike, so it is kept by runs.
struct RowState {
  static constexpr int32_t kDefaultHeight = -1;

  int32_t height_twips = kDefaultHeight;
  int16_t level = 0;
  bool subtotal = false;
  bool collapsed = false;  // of a node: what it governs is folded away
  bool covered = false;    // a collapsed node governs the row
  bool hidden = false;     // hidden for itself

  bool IsShown() const { return !covered && !hidden; }
  bool operator==(const RowState&) const = default;
};

// Heights of rows in twips, and what a twip is on the screen.
struct RowHeights {
  int32_t default_twips = 300;
  float min_twips = 0;  // 0: no limit
  float max_twips = 0;
  double pixels_per_twip = 1.0 / 15.0;

  int32_t TwipsOf(int32_t height_twips) const;
  int64_t PixelsOf(int32_t height_twips) const;
  static int64_t ToPixels(int32_t twips, double pixels_per_twip);
};

// The states of all rows, with positions: shown rows, nodes and pixels before a row, and back. All O(log runs),
// whatever the number of rows.
class RowStates {
 public:
  int64_t Rows() const { return runs_.size(); }
  size_t RunCount() const { return runs_.RunCount(); }
  RowState At(int64_t row) const { return runs_.At(row); }

  void Insert(int64_t row, int64_t count, const RowState& state) { runs_.Insert(row, count, state); }
  // One row of the state before each of the ascending `rows` (numbered as they are now); O(runs + rows).
  void InsertBeforeEach(const std::vector<int64_t>& rows, const RowState& state);
  void Remove(int64_t row, int64_t count) { runs_.Remove(row, count); }
  template <typename Change>
  void Update(int64_t first, int64_t last, Change change) {
    runs_.Update(first, last, change);
  }
  // Calls visit(first, count, state) run by run over [first, last) until it returns false.
  template <typename Visit>
  void ForEachRun(int64_t first, int64_t last, Visit visit) const {
    runs_.ForEach(first, last, [&](const auto& place) { return visit(place.first, place.count, place.value); });
  }

  const RowHeights& heights() const { return runs_.traits().heights; }
  // O(runs).
  void SetHeights(const RowHeights& heights);
  int64_t PixelHeight(int64_t row) const;

  int64_t PixelsBefore(int64_t row) const { return runs_.Before(row).pixels; }
  int64_t TotalPixels() const { return runs_.Total().pixels; }
  // The shown row at the pixel, or Rows() behind the last one; pixels above row 0 give the first shown row.
  int64_t RowAtPixel(int64_t pixel) const;

  int64_t ShownBefore(int64_t row) const { return runs_.Before(row).shown; }
  int64_t TotalShown() const { return runs_.Total().shown; }
  // The shown row with so many shown rows before it, or Rows().
  int64_t ShownRow(int64_t index) const;
  // The nearest shown row at or behind / at or before `row`; Rows() or -1 when there is none.
  int64_t ShownAtOrAfter(int64_t row) const;
  int64_t ShownAtOrBefore(int64_t row) const;

  // The first node at or behind `row`, or -1.
  int64_t NextNode(int64_t row) const;
  int64_t NodeCount() const { return runs_.Total().nodes; }
  bool HasCollapsedNodes() const { return runs_.Total().collapsed > 0; }
  int64_t CoveredRows() const { return Rows() - runs_.Total().uncovered; }
  // The last row before `row` that no collapsed node governs, or -1.
  int64_t UncoveredBefore(int64_t row) const;
  // The first row at or behind `row` whose level is `level` or less, or Rows().
  int64_t NextRowOfLevelAtMost(int64_t row, int level) const;
  // The last row before `row` whose level is below `level`, or -1.
  int64_t LastRowOfLevelBelow(int64_t row, int level) const;

  bool CheckInvariants() const { return runs_.CheckInvariants(); }
  size_t MemoryBytes() const { return runs_.MemoryBytes(); }

 private:
  struct Summary {
    int64_t shown = 0;
    int64_t pixels = 0;
    int64_t nodes = 0;
    int64_t collapsed = 0;
    int64_t uncovered = 0;
    int16_t lowest_level = INT16_MAX;
    bool operator==(const Summary&) const = default;
  };
  struct Traits {
    using Value = RowState;
    using Summary = RowStates::Summary;
    RowHeights heights;
    Summary Of(const RowState& state, int64_t count) const;
    static Summary Combine(const Summary& left, const Summary& right);
    static RowState Advance(const RowState& state, int64_t) { return state; }
    static bool Continues(const RowState& state, int64_t, const RowState& next) { return state == next; }
  };

  RunTree<Traits> runs_;
};

}  // namespace stockbook::sheet
