// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <utility>

#include "stockbook/base/scope_exit.h"

namespace stockbook::sheet {

// Maps row ids to codes, stored as intervals of equal codes. Ids without a code have code 0, which is never stored.
// Reading is O(log intervals), changing a range O(log intervals + intervals in it), whatever the number of ids.
class IntervalMap {
 public:
  bool IsEmpty() const { return intervals_.empty(); }
  size_t Count() const { return intervals_.size(); }

  uint32_t At(int64_t id) const {
    auto next = intervals_.upper_bound(id);
    if (next == intervals_.begin()) return 0;
    const auto& [first, interval] = *std::prev(next);
    return id < interval.last ? interval.code : 0;
  }

  // Replaces the code of every id in [first, last) by change(code). If that fails, or there is no memory, some of the
  // codes have been replaced.
  template <typename Change>
  void Update(int64_t first, int64_t last, Change change) {
    if (first >= last) return;
    const base::ScopeExit joined([&] { JoinWithin(first, last); });
    Cut(first);
    Cut(last);
    auto at = intervals_.lower_bound(first);
    int64_t from = first;
    const uint32_t of_gaps = change(0U);
    while (from < last) {
      if (at == intervals_.end() || at->first >= last) {
        if (of_gaps != 0) intervals_.emplace_hint(at, from, Interval{last, of_gaps});
        break;
      }
      if (at->first > from && of_gaps != 0) intervals_.emplace_hint(at, from, Interval{at->first, of_gaps});
      from = at->second.last;
      at->second.code = change(at->second.code);
      at = at->second.code == 0 ? intervals_.erase(at) : std::next(at);
    }
  }

  void Erase(int64_t first, int64_t last) {
    Update(first, last, [](uint32_t) { return 0U; });
  }
  void Clear() { intervals_.clear(); }

  // Calls visit(first, last, code) for the intervals in ascending order until it returns false. Returns false in that
  // case.
  template <typename Visit>
  bool ForEach(Visit visit) const {
    for (const auto& [first, interval] : intervals_) {
      if (!visit(first, interval.last, interval.code)) return false;
    }
    return true;
  }

  // Approximate memory of the intervals.
  size_t MemoryBytes() const {
    constexpr size_t kTreeNode = 4 * sizeof(void*);
    return intervals_.size() * (sizeof(std::pair<const int64_t, Interval>) + kTreeNode);
  }

  bool CheckInvariants() const {
    int64_t end = INT64_MIN;
    uint32_t code = 0;
    for (const auto& [first, interval] : intervals_) {
      const bool joinable = first == end && interval.code == code;
      if (first < end || interval.last <= first || interval.code == 0 || joinable) return false;
      end = interval.last;
      code = interval.code;
    }
    return true;
  }

 private:
  struct Interval {
    int64_t last = 0;
    uint32_t code = 0;
  };

  // Splits the interval that contains `id`, so that `id` begins one.
  void Cut(int64_t id) {
    auto next = intervals_.lower_bound(id);
    if (next == intervals_.begin()) return;
    auto at = std::prev(next);
    if (at->second.last <= id) return;
    intervals_.emplace_hint(next, id, at->second);
    at->second.last = id;
  }

  void JoinWithin(int64_t first, int64_t last) {
    auto at = intervals_.lower_bound(first);
    if (at != intervals_.begin()) at = std::prev(at);
    while (at != intervals_.end() && at->first <= last) {
      auto next = std::next(at);
      if (next != intervals_.end() && next->first == at->second.last && next->second.code == at->second.code) {
        at->second.last = next->second.last;
        intervals_.erase(next);
      } else {
        at = next;
      }
    }
  }

  std::map<int64_t, Interval> intervals_;
};

}  // namespace stockbook::sheet
