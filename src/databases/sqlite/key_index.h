// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace stockbook::databases {

// Numbers distinct whole-number keys from 0 on, in the order in which they are first added. O(1) each.
class KeyIndex {
 public:
  static constexpr uint32_t kNone = UINT32_MAX;

  uint32_t Add(int64_t key);
  uint32_t Find(int64_t key) const;
  const std::vector<int64_t>& keys() const { return keys_; }

 private:
  size_t SlotOf(int64_t key) const;
  void Grow();

  std::vector<int64_t> keys_;
  std::vector<uint32_t> slots_;  // number + 1; 0 is free
};

}  // namespace stockbook::databases
