// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "stockbook/base/seeded_hash.h"

namespace stockbook::databases {

// Numbers distinct whole-number keys from 0 on, in the order in which they are first added. O(1) each.
class KeyIndex {
 public:
  static constexpr uint32_t kNone = UINT32_MAX;

  // About `count` keys in [lowest, highest] will come: if that range is dense, no hashing is needed.
  KeyIndex(int64_t lowest, int64_t highest, size_t count);

  uint32_t Add(int64_t key);
  uint32_t Find(int64_t key) const;
  const std::vector<int64_t>& keys() const { return keys_; }

 private:
  size_t SlotOf(int64_t key) const;
  void Grow();

  bool IsDense() const { return !by_key_.empty(); }

  int64_t lowest_ = 0;
  std::vector<uint32_t> by_key_;  // dense: number of key lowest_ + index, or kNone
  std::vector<int64_t> keys_;
  std::vector<uint32_t> slots_;  // number + 1; 0 is free
  base::SeededHash hash_;
};

}  // namespace stockbook::databases
