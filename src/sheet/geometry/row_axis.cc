// SPDX-License-Identifier: MIT
#include "sheet/geometry/row_axis.h"

#include <utility>
#include <vector>

#include "sheet/geometry/scale.h"

namespace stockbook::sheet {

RowAxis::RowAxis(const RowStates& states, double scale) : states_(states), scale_(scale) { states_.AddWatcher(this); }

RowAxis::~RowAxis() {
  if (!states_gone_) states_.RemoveWatcher(this);
}

void RowAxis::SetScale(double scale) {
  scale_ = scale;
  valid_ = false;
}

int32_t RowAxis::HeightOf(const RowState& state) const {
  return state.IsShown() ? static_cast<int32_t>(ToPixels(states_.heights().TwipsOf(state.height_twips), scale_)) : 0;
}

int64_t RowAxis::Height(int64_t row) const { return row < 0 || row >= Count() ? 0 : Runs().At(row); }

int64_t RowAxis::RowAt(int64_t pixel) const {
  return Runs().FindFirst([&](int64_t sum) { return sum > pixel && sum > 0; });
}

void RowAxis::RowsInserted(int64_t row, int64_t count) {
  if (count > 0) Follow([&] { runs_.Insert(row, count, HeightOf(states_.At(row))); });
}

void RowAxis::RowsRemoved(int64_t row, int64_t count) {
  Follow([&] { runs_.Remove(row, count); });
}

void RowAxis::RowsUpdated(int64_t first, int64_t last) {
  Follow([&] {
    states_.ForEachRun(first, last, [&](int64_t row, int64_t count, const RowState& state) {
      const int32_t height = HeightOf(state);
      const auto run = runs_.RunAt(row);
      if (run.value != height || row + count > run.first + run.count)
        runs_.Update(row, row + count, [&](int32_t& value) { value = height; });
      return true;
    });
  });
}

const RowAxis::HeightRuns& RowAxis::Runs() const {
  if (valid_) return runs_;
  std::vector<HeightRuns::RunType> runs;
  runs.reserve(states_.RunCount());
  states_.ForEachRun(0, Count(), [&](int64_t, int64_t count, const RowState& state) {
    const int32_t height = HeightOf(state);
    if (!runs.empty() && runs.back().value == height) {
      runs.back().count += count;
    } else {
      runs.push_back({count, height});
    }
    return true;
  });
  runs_.Assign(std::move(runs));
  valid_ = true;
  return runs_;
}

bool RowAxis::CheckInvariants() const {
  const HeightRuns& runs = Runs();
  if (!runs.CheckInvariants() || runs.size() != Count()) return false;
  bool right = true;
  runs.ForEach(0, Count(), [&](const HeightRuns::Place& place) {
    states_.ForEachRun(place.first, place.first + place.count, [&](int64_t, int64_t, const RowState& state) {
      right = HeightOf(state) == place.value;
      return right;
    });
    return right;
  });
  return right;
}

}  // namespace stockbook::sheet
