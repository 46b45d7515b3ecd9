// SPDX-License-Identifier: MIT
#include "platform/memory_bag.h"

#include <algorithm>
#include <limits>

#include "platform/error.h"

namespace stockbook::platform {
namespace {

bool IsPicture(const BagValue& value) { return std::holds_alternative<PictureRef>(value); }

int32_t NumberOf(const BagValue& value) {
  const auto* small = std::get_if<int16_t>(&value);
  return small != nullptr ? *small : std::get<int32_t>(value);
}

}  // namespace

std::vector<MemoryBag::Entry>::iterator MemoryBag::Find(std::string_view key) {
  return std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.first == key; });
}

BagValue MemoryBag::Read(std::string_view key, const BagValue& fallback) {
  const auto found = Find(key);
  if (found == entries_.end()) return fallback;
  const BagValue& value = found->second;
  if (value.index() == fallback.index()) return value;
  if (IsPicture(value) || IsPicture(fallback)) {
    throw Error("read " + std::string(key),
                "类型不匹配：属性包中的 " + std::string(key) + " 应为" + (IsPicture(fallback) ? "图片" : "数字") + "。",
                13);
  }
  const int32_t number = NumberOf(value);
  if (std::holds_alternative<int32_t>(fallback)) return number;
  if (number < std::numeric_limits<int16_t>::min() || number > std::numeric_limits<int16_t>::max()) {
    throw Error("read " + std::string(key),
                "溢出：属性包中的 " + std::string(key) + " 必须在 -32768 与 32767 之间，读到的是 " +
                    std::to_string(number) + "。",
                6);
  }
  return static_cast<int16_t>(number);
}

void MemoryBag::Write(std::string_view key, const BagValue& value) {
  const auto found = Find(key);
  if (found == entries_.end())
    entries_.emplace_back(key, value);
  else
    found->second = value;
}

void MemoryBag::Remove(std::string_view key) {
  const auto found = Find(key);
  if (found != entries_.end()) entries_.erase(found);
}

}  // namespace stockbook::platform
