// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/platform/error.h"
#include "stockbook/platform/property_bag.h"

namespace stockbook::testing {

using platform::BagValue;
using platform::PictureRef;

// A property bag in memory, which keeps its values in the order in which they were first written. Keys compare exactly.
// Numbers are read as the type of the fallback if they fit; reading a number as a picture or the reverse, or a number
// that is too large, throws platform::Error. O(values) per call.
class MemoryBag : public platform::PropertyBag {
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

inline bool IsPicture(const BagValue& value) { return std::holds_alternative<PictureRef>(value); }

inline int32_t NumberOf(const BagValue& value) {
  const auto* small = std::get_if<int16_t>(&value);
  return small != nullptr ? *small : std::get<int32_t>(value);
}

inline std::vector<MemoryBag::Entry>::iterator MemoryBag::Find(std::string_view key) {
  return std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.first == key; });
}

inline BagValue MemoryBag::Read(std::string_view key, const BagValue& fallback) {
  const auto found = Find(key);
  if (found == entries_.end()) return fallback;
  const BagValue& value = found->second;
  if (value.index() == fallback.index()) return value;
  if (IsPicture(value) || IsPicture(fallback)) {
    throw platform::Error(
        "read " + std::string(key),
        "类型不匹配：属性包中的 " + std::string(key) + " 应为" + (IsPicture(fallback) ? "图片" : "数字") + "。", 13);
  }
  const int32_t number = NumberOf(value);
  if (std::holds_alternative<int32_t>(fallback)) return number;
  if (number < std::numeric_limits<int16_t>::min() || number > std::numeric_limits<int16_t>::max()) {
    throw platform::Error("read " + std::string(key),
                          "溢出：属性包中的 " + std::string(key) + " 必须在 -32768 与 32767 之间，读到的是 " +
                              std::to_string(number) + "。",
                          6);
  }
  return static_cast<int16_t>(number);
}

inline void MemoryBag::Write(std::string_view key, const BagValue& value) {
  const auto found = Find(key);
  if (found == entries_.end())
    entries_.emplace_back(key, value);
  else
    found->second = value;
}

inline void MemoryBag::Remove(std::string_view key) {
  const auto found = Find(key);
  if (found != entries_.end()) entries_.erase(found);
}

}  // namespace stockbook::testing
