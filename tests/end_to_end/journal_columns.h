// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace stockbook::end_to_end {

inline constexpr size_t kColumnCount = 56;

// A column as a journal's first line describes it.
struct ColumnDescription {
  std::string key;
  std::string caption;
  bool hidden = false;
  int type = 0;
  std::string format;
  int width_twips = 0;

  bool operator==(const ColumnDescription&) const = default;
};

// The texts of a row, one for each column.
using Cells = std::array<std::string, kColumnCount>;

// The columns of a journal of the type (0 material, 1 supplier, 2 customer, 3 project), written down by hand.
std::array<ColumnDescription, kColumnCount> ColumnsOf(int journal_type, bool qty2, bool tax);

// The index of the column with the key; the test fails if there is none.
size_t PlaceOf(std::string_view key);

// Adds what the hidden columns say to the name of a line's product: "六角螺栓 M8×30[GB/T 5783](千克)".
void ComposeName(Cells& line);

}  // namespace stockbook::end_to_end
