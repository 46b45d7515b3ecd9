// SPDX-License-Identifier: MIT
#include "databases/sqlite/key_index.h"

namespace stockbook::databases {

KeyIndex::KeyIndex(int64_t lowest, int64_t highest, size_t count) : lowest_(lowest) {
  constexpr uint64_t kSparsest = 4;
  constexpr uint64_t kSmall = 4096;
  if (lowest > highest) return;
  const uint64_t range = static_cast<uint64_t>(highest) - static_cast<uint64_t>(lowest);
  if (range < count * kSparsest + kSmall) by_key_.assign(range + 1, kNone);
}

size_t KeyIndex::SlotOf(int64_t key) const {
  const size_t mask = slots_.size() - 1;
  size_t slot = static_cast<size_t>(hash_(static_cast<uint64_t>(key))) & mask;
  while (slots_[slot] != 0 && keys_[slots_[slot] - 1] != key) slot = (slot + 1) & mask;
  return slot;
}

uint32_t KeyIndex::Add(int64_t key) {
  if (IsDense()) {
    uint32_t& number = by_key_[static_cast<uint64_t>(key) - static_cast<uint64_t>(lowest_)];
    if (number == kNone) {
      number = static_cast<uint32_t>(keys_.size());
      keys_.push_back(key);
    }
    return number;
  }
  if ((keys_.size() + 1) * 2 > slots_.size()) Grow();
  const size_t slot = SlotOf(key);
  if (slots_[slot] == 0) {
    keys_.push_back(key);
    slots_[slot] = static_cast<uint32_t>(keys_.size());
  }
  return slots_[slot] - 1;
}

uint32_t KeyIndex::Find(int64_t key) const {
  if (IsDense()) {
    const uint64_t at = static_cast<uint64_t>(key) - static_cast<uint64_t>(lowest_);
    return at < by_key_.size() ? by_key_[at] : kNone;
  }
  if (slots_.empty()) return kNone;
  const uint32_t number = slots_[SlotOf(key)];
  return number == 0 ? kNone : number - 1;
}

void KeyIndex::Grow() {
  constexpr size_t kLeast = 64;
  slots_.assign(slots_.empty() ? kLeast : slots_.size() * 2, 0);
  for (size_t number = 0; number < keys_.size(); ++number) {
    slots_[SlotOf(keys_[number])] = static_cast<uint32_t>(number + 1);
  }
}

}  // namespace stockbook::databases
