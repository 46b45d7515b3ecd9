// SPDX-License-Identifier: MIT
#include "sheet/outline/row_states.h"

#include <algorithm>
#include <utility>

namespace stockbook::sheet {

int32_t RowHeights::TwipsOf(int32_t height_twips) const {
  auto twips = static_cast<float>(height_twips == RowState::kDefaultHeight ? default_twips : height_twips);
  if (max_twips > 0) twips = std::min(twips, max_twips);
  if (min_twips > 0) twips = std::max(twips, min_twips);
  return static_cast<int32_t>(twips);
}

RowStates::Summary RowStates::Traits::Of(const RowState& state, int64_t count) {
  if (count == 0) return {};
  Summary sum;
  if (state.IsShown()) sum.shown = count;
  if (state.subtotal) sum.nodes = count;
  if (state.subtotal && state.collapsed) sum.collapsed = count;
  if (!state.covered) sum.uncovered = count;
  sum.lowest_level = state.level;
  return sum;
}

RowStates::Summary RowStates::Traits::Combine(const Summary& left, const Summary& right) {
  return {left.shown + right.shown, left.nodes + right.nodes, left.collapsed + right.collapsed,
          left.uncovered + right.uncovered, std::min(left.lowest_level, right.lowest_level)};
}

RowStates::~RowStates() {
  for (RowStatesWatcher* watcher : watchers_) watcher->StatesGone();
}

void RowStates::Insert(int64_t row, int64_t count, const RowState& state) {
  runs_.Insert(row, count, state);
  for (RowStatesWatcher* watcher : watchers_) watcher->RowsInserted(row, count);
}

void RowStates::Remove(int64_t row, int64_t count) {
  runs_.Remove(row, count);
  for (RowStatesWatcher* watcher : watchers_) watcher->RowsRemoved(row, count);
}

void RowStates::TellUpdated(int64_t first, int64_t last) {
  for (RowStatesWatcher* watcher : watchers_) {
    if (first == 0 && last == Rows()) {
      watcher->AllRowsChanged();
    } else {
      watcher->RowsUpdated(first, last);
    }
  }
}

void RowStates::InsertBeforeEach(const std::vector<int64_t>& rows, const RowState& state) {
  std::vector<Run<RowState>> runs;
  runs.reserve(RunCount() + 2 * rows.size());
  size_t next = 0;
  int64_t first = 0;
  for (const Run<RowState>& run : runs_.Runs()) {
    int64_t done = 0;
    for (; next < rows.size() && rows[next] < first + run.count; ++next) {
      runs.push_back({rows[next] - first - done, run.value});
      runs.push_back({1, state});
      done = rows[next] - first;
    }
    runs.push_back({run.count - done, run.value});
    first += run.count;
  }
  for (; next < rows.size(); ++next) runs.push_back({1, state});
  runs_.Assign(std::move(runs));
  for (RowStatesWatcher* watcher : watchers_) watcher->AllRowsChanged();
}

RowStates::Kept RowStates::Keep() const {
  Kept kept;
  kept.runs_ = runs_;
  kept.heights_ = heights_;
  return kept;
}

void RowStates::PutBack(Kept kept) {
  runs_ = std::move(kept.runs_);
  heights_ = kept.heights_;
  for (RowStatesWatcher* watcher : watchers_) watcher->AllRowsChanged();
}

void RowStates::SetHeights(const RowHeights& heights) {
  heights_ = heights;
  for (RowStatesWatcher* watcher : watchers_) watcher->AllRowsChanged();
}

int64_t RowStates::ShownRow(int64_t index) const {
  return runs_.FindFirst([&](const Summary& sum) { return sum.shown > index; });
}

int64_t RowStates::ShownAtOrAfter(int64_t row) const { return ShownRow(ShownBefore(row)); }

int64_t RowStates::ShownAtOrBefore(int64_t row) const {
  const int64_t shown = ShownBefore(row + 1);
  return shown == 0 ? -1 : ShownRow(shown - 1);
}

int64_t RowStates::NextNode(int64_t row) const {
  const int64_t before = runs_.Before(row).nodes;
  const int64_t found = runs_.FindFirst([&](const Summary& sum) { return sum.nodes > before; });
  return found < Rows() ? found : -1;
}

int64_t RowStates::UncoveredBefore(int64_t row) const {
  const int64_t uncovered = runs_.Before(row).uncovered;
  if (uncovered == 0) return -1;
  return runs_.FindFirst([&](const Summary& sum) { return sum.uncovered >= uncovered; });
}

int64_t RowStates::NextRowOfLevelAtMost(int64_t row, int level) const {
  const int64_t found = runs_.FindFrom(row, [&](const Summary& sum) { return sum.lowest_level <= level; });
  return found < 0 ? Rows() : found;
}

int64_t RowStates::LastRowOfLevelBelow(int64_t row, int level) const {
  return runs_.FindBefore(row, [&](const Summary& sum) { return sum.lowest_level < level; });
}

}  // namespace stockbook::sheet
