// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::databases {

// Remembers the codes of a few clean texts, so that one of a handful that take turns in a column costs a comparison. It
// gives up where texts hardly ever come again.
class KnownTexts {
 public:
  // Empty when the text is not known.
  std::span<const uint32_t> CodesOf(std::string_view text);
  // Whether it is worth while to Remember what is not known; not for long texts.
  bool IsUseful(std::string_view text) const { return !given_up_ && text.size() <= kLongest; }
  void Remember(std::string_view text, std::span<const uint32_t> codes);

 private:
  static constexpr size_t kSlots = 64;
  static constexpr size_t kLongest = 64;
  struct Known {
    std::string text;
    std::vector<uint32_t> codes;
  };
  static size_t SlotOf(std::string_view text);

  std::vector<Known> known_;
  size_t asked_ = 0;
  size_t found_ = 0;
  bool given_up_ = false;
};

}  // namespace stockbook::databases
