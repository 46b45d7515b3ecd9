// SPDX-License-Identifier: MIT
#include "com/object/memory_bag.h"

#include <algorithm>

namespace stockbook::com {

platform::BagValue MemoryBag::Read(std::string_view key, const platform::BagValue& fallback) {
  for (const auto& [known, value] : entries_) {
    if (known == key) return value;
  }
  return fallback;
}

void MemoryBag::Write(std::string_view key, const platform::BagValue& value) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.first == key; });
  if (found == entries_.end())
    entries_.emplace_back(key, value);
  else
    found->second = value;
}

}  // namespace stockbook::com
