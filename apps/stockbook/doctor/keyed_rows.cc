// SPDX-License-Identifier: MIT
#include "stockbook/doctor/keyed_rows.h"

#include <algorithm>

namespace stockbook::app {

KeyedRows::KeyedRows(const columns::Column& keys) {
  sorted_.reserve(keys.size());
  for (size_t row = 0; row < keys.size(); ++row) {
    if (const auto key = keys.At(row).AsInteger()) sorted_.emplace_back(*key, static_cast<uint32_t>(row));
  }
  if (!std::is_sorted(sorted_.begin(), sorted_.end())) std::sort(sorted_.begin(), sorted_.end());
  if (sorted_.empty()) return;
  least_ = sorted_.front().first;
  constexpr uint64_t kSpare = 1024;
  const uint64_t range = static_cast<uint64_t>(sorted_.back().first) - static_cast<uint64_t>(least_);
  if (range > sorted_.size() * uint64_t{4} + kSpare) return;
  dense_.assign(range + 1, kNone);
  for (const auto& [key, row] : sorted_) {
    uint32_t& place = dense_[static_cast<size_t>(key - least_)];
    if (place == kNone) place = row;
  }
  sorted_ = {};
}

std::optional<size_t> KeyedRows::Find(int64_t key) const {
  if (!dense_.empty()) {
    const uint64_t place = static_cast<uint64_t>(key) - static_cast<uint64_t>(least_);
    if (place >= dense_.size() || dense_[place] == kNone) return std::nullopt;
    return dense_[place];
  }
  const auto found = std::lower_bound(sorted_.begin(), sorted_.end(), std::pair<int64_t, uint32_t>(key, 0));
  if (found == sorted_.end() || found->first != key) return std::nullopt;
  return found->second;
}

}  // namespace stockbook::app
