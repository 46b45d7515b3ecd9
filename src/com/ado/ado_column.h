// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/columns/column_builder.h"

namespace stockbook::com {

// A column under construction from automation values. Currency stays exact, dates are to the second, and decimals of at
// most four places are money; booleans are 0 or -1. Null, Empty, dates outside of the calendar and objects are nothing.
// A text is taken by its length and made well-formed UTF-8; one that was met a moment ago is not converted again.
class AdoColumn {
 public:
  void Append(const VARIANT& value);
  columns::Column Finish() { return builder_.Finish(); }

 private:
  static constexpr size_t kSlots = 64;
  static constexpr size_t kLongestKnown = 64;
  struct KnownText {
    std::wstring wide;
    uint32_t code = 0;  // 0 is free
  };

  void AppendWide(std::wstring_view wide);
  // The code of a text that is not, or no longer, among the known ones.
  uint32_t CodeOf(std::wstring_view wide);
  KnownText* SlotFor(std::wstring_view wide);
  void AppendDate(DATE date);
  void AppendDecimal(const DECIMAL& decimal);
  void AppendConverted(const VARIANT& value);
  void AppendRare(const VARIANT& value);

  columns::ColumnBuilder builder_;
  std::vector<KnownText> known_;
  size_t asked_ = 0;
  size_t found_ = 0;
  bool known_are_useless_ = false;
  std::string utf8_;
};

}  // namespace stockbook::com
