// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"

namespace stockbook::base {

// A text to look for in many others, byte by byte (which finds whole characters in UTF-8). Looks at two of its least
// common bytes at many places at once and compares only where both match; time is linear in the length searched,
// whatever the texts. Immutable; copies are independent.
class STOCKBOOK_API Substring {
 public:
  // What FindIn gives where the text does not occur.
  static constexpr size_t kNone = std::string_view::npos;

  // Copies the text; O(its length).
  explicit Substring(std::string_view text);

  // As it was given.
  const std::string& text() const { return text_; }
  // True for the empty text, in any other.
  bool IsIn(std::string_view text) const { return FindIn(text, 0) != kNone; }
  // Where it first occurs in `text` from byte `from` on, or kNone. The empty text occurs everywhere.
  size_t FindIn(std::string_view text, size_t from) const;

 private:
  // For long texts, where comparing at each place would take too long: reads every byte once.
  size_t FindSteadily(std::string_view text, size_t from) const;

  std::string text_;
  size_t first_ = 0;  // the two bytes that are looked at
  size_t second_ = 0;
  std::vector<uint32_t> borders_;  // by length: the longest proper beginning that is also the end; long texts only
};

}  // namespace stockbook::base
