// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "stockbook/platform/property_bag.h"

namespace stockbook::com {

// A bag in memory, in the order in which the keys were first written.
class MemoryBag final : public platform::PropertyBag {
 public:
  using Entry = std::pair<std::string, platform::BagValue>;

  platform::BagValue Read(std::string_view key, const platform::BagValue& fallback) override;
  void Write(std::string_view key, const platform::BagValue& value) override;

  const std::vector<Entry>& entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

}  // namespace stockbook::com
