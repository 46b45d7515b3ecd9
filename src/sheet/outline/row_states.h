// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "sheet/store/run_tree.h"

namespace stockbook::sheet {

// What is known about a row apart from its cells.
struct RowState {
  static constexpr int32_t kDefaultHeight = -1;

  int32_t height_twips = kDefaultHeight;
  int16_t level = 0;
  bool subtotal = false;
  bool collapsed = false;  // a folded node
  bool covered = false;    // by a folded node
  bool hidden = false;     // on its own account

  bool IsShown() const { return !covered && !hidden; }
  bool operator==(const RowState&) const = default;
};

// The height of rows without one of their own, and the limits for all rows, in twips.
struct RowHeights {
  int32_t default_twips = 300;
  float min_twips = 0;  // 0: no limit
  float max_twips = 0;

  int32_t TwipsOf(int32_t height_twips) const;
};

// Is notified after each change of row states. What it does then must not fail.
class RowStatesWatcher {
 public:
  virtual ~RowStatesWatcher() = default;

  // Rows [row, row + count) are new and all alike.
  virtual void RowsInserted(int64_t row, int64_t count) = 0;
  virtual void RowsRemoved(int64_t row, int64_t count) = 0;
  // At least some of the rows [first, last) have changed.
  virtual void RowsUpdated(int64_t first, int64_t last) = 0;
  virtual void AllRowsChanged() = 0;
  // The states are being destroyed: the watcher need not be removed any more.
  virtual void StatesGone() = 0;
};

// The states of all rows, stored as runs of equal states. Counts shown rows and nodes before a row, and finds rows by
// these counts; each in O(log runs), whatever the number of rows.
class RowStates {
 public:
  RowStates() = default;
  ~RowStates();
  RowStates(const RowStates&) = delete;
  RowStates& operator=(const RowStates&) = delete;

  int64_t Rows() const { return runs_.size(); }
  size_t RunCount() const { return runs_.RunCount(); }
  RowState At(int64_t row) const { return runs_.At(row); }

  // Makes room for a few changes of any kind but InsertBeforeEach: they need no memory then.
  void Reserve() { runs_.Reserve(); }
  void Insert(int64_t row, int64_t count, const RowState& state);
  // One row of the state before each of the ascending `rows` (numbered as they are now), and room for a few changes;
  // O(runs + rows).
  void InsertBeforeEach(const std::vector<int64_t>& rows, const RowState& state);
  void Remove(int64_t row, int64_t count);
  template <typename Change>
  void Update(int64_t first, int64_t last, Change change) {
    runs_.Update(first, last, change);
    TellUpdated(first, last);
  }
  // Calls visit(first, count, state) run by run over [first, last) until it returns false.
  template <typename Visit>
  void ForEachRun(int64_t first, int64_t last, Visit visit) const {
    runs_.ForEach(first, last, [&](const auto& place) { return visit(place.first, place.count, place.value); });
  }

  const RowHeights& heights() const { return heights_; }
  void SetHeights(const RowHeights& heights);

  // The states and heights as they are, to be put back. O(runs).
  class Kept;
  Kept Keep() const;
  void PutBack(Kept kept);

  int64_t ShownBefore(int64_t row) const { return runs_.Before(row).shown; }
  int64_t TotalShown() const { return runs_.Total().shown; }
  // The shown row with `index` shown rows before it, or Rows().
  int64_t ShownRow(int64_t index) const;
  // The nearest shown row at or after / at or before `row`; Rows() or -1 when there is none.
  int64_t ShownAtOrAfter(int64_t row) const;
  int64_t ShownAtOrBefore(int64_t row) const;

  // The first node at or after `row`, or -1.
  int64_t NextNode(int64_t row) const;
  int64_t NodeCount() const { return runs_.Total().nodes; }
  bool HasCollapsedNodes() const { return runs_.Total().collapsed > 0; }
  int64_t CoveredRows() const { return Rows() - runs_.Total().uncovered; }
  // The last row before `row` that no collapsed node governs, or -1.
  int64_t UncoveredBefore(int64_t row) const;
  // The first row at or after `row` whose level is `level` or less, or Rows().
  int64_t NextRowOfLevelAtMost(int64_t row, int level) const;
  // The last row before `row` whose level is below `level`, or -1.
  int64_t LastRowOfLevelBelow(int64_t row, int level) const;

  // Watching does not change the states.
  void AddWatcher(RowStatesWatcher* watcher) const { watchers_.push_back(watcher); }
  void RemoveWatcher(RowStatesWatcher* watcher) const { std::erase(watchers_, watcher); }

  bool CheckInvariants() const { return runs_.CheckInvariants(); }
  size_t MemoryBytes() const { return runs_.MemoryBytes(); }

 private:
  struct Summary {
    int64_t shown = 0;
    int64_t nodes = 0;
    int64_t collapsed = 0;
    int64_t uncovered = 0;
    int16_t lowest_level = INT16_MAX;
    bool operator==(const Summary&) const = default;
  };
  struct Traits {
    using Value = RowState;
    using Summary = RowStates::Summary;
    static Summary Of(const RowState& state, int64_t count);
    static Summary Combine(const Summary& left, const Summary& right);
    static RowState Advance(const RowState& state, int64_t) { return state; }
    static bool Continues(const RowState& state, int64_t, const RowState& next) { return state == next; }
  };

  void TellUpdated(int64_t first, int64_t last);

  RunTree<Traits> runs_;
  RowHeights heights_;
  mutable std::vector<RowStatesWatcher*> watchers_;
};

class RowStates::Kept {
 private:
  friend class RowStates;
  RunTree<Traits> runs_;
  RowHeights heights_;
};

}  // namespace stockbook::sheet
