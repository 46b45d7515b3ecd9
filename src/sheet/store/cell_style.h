// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/grid_types.h"
#include "platform/picture.h"

namespace stockbook::sheet {

// What somebody set of a cell's looks; what is absent comes from the column, the kind of row or the grid.
struct CellStyle {
  std::optional<platform::Colour> back;
  std::optional<platform::Colour> fore;
  std::optional<platform::Alignment> alignment;
  std::optional<platform::PictureRef> picture;
  platform::PictureAlignment picture_alignment = platform::PictureAlignment::kLeftTop;
  std::string font_name;  // empty: the grid's

  bool operator==(const CellStyle&) const = default;
};

// The distinct cell styles of a sheet, each with a code; code 0 is the style with nothing set. Codes stay valid until
// Clear; interning is one hash look-up.
class CellStyles {
 public:
  CellStyles() : styles_(1) {}

  const CellStyle& At(uint32_t code) const { return styles_[code]; }
  uint32_t CodeOf(const CellStyle& style);
  // The code of the style `code` after `change(style)`.
  template <typename Change>
  uint32_t Changed(uint32_t code, Change change) {
    CellStyle style = styles_[code];
    change(style);
    return CodeOf(style);
  }
  size_t Count() const { return styles_.size(); }

  // Code 0 has nothing set, and every other style is found by one code alone.
  bool CheckInvariants() const;
  // About what the styles take.
  size_t MemoryBytes() const;

 private:
  static size_t HashOf(const CellStyle& style);
  // 0 where the style has no code yet.
  uint32_t Find(const CellStyle& style, size_t hash) const;

  std::vector<CellStyle> styles_;
  std::unordered_multimap<size_t, uint32_t> codes_;
};

}  // namespace stockbook::sheet
