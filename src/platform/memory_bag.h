// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/property_bag.h"

namespace stockbook::platform {

// A property bag in memory, which keeps its values in the order in which they were first written. Keys compare exactly.
// Numbers are read as the fallback's kind when they fit it; a number read as a picture, a picture read as a number and
// a number too large throw Error. O(values) a call.
class MemoryBag : public PropertyBag {
 public:
  using Entry = std::pair<std::string, BagValue>;

  BagValue Read(std::string_view key, const BagValue& fallback) override;
  void Write(std::string_view key, const BagValue& value) override;

  const std::vector<Entry>& entries() const { return entries_; }
  void Remove(std::string_view key);

 private:
  std::vector<Entry>::iterator Find(std::string_view key);

  std::vector<Entry> entries_;
};

}  // namespace stockbook::platform
