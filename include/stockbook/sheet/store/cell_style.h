// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::sheet {

// The looks that were set on a cell. Anything absent comes from the column, the kind of row or the grid.
struct CellStyle {
  std::optional<platform::Colour> back;
  std::optional<platform::Colour> fore;
  std::optional<platform::Alignment> alignment;
  std::optional<platform::PictureRef> picture;
  platform::PictureAlignment picture_alignment = platform::PictureAlignment::kLeftTop;
  std::string font_name;  // empty: the grid's

  bool operator==(const CellStyle&) const = default;
};

// The distinct cell styles of a sheet, each with a code that stays valid. Code 0 is the empty style. Interning a style
// takes one hash lookup.
class STOCKBOOK_API CellStyles {
 public:
  CellStyles() : styles_(1) {}

  // Of a code that CodeOf gave; no other.
  const CellStyle& At(uint32_t code) const { return styles_[code]; }
  // The code of the style, a new one where it has none yet.
  uint32_t CodeOf(const CellStyle& style);
  // The code of the style `code` after `change(style)`.
  template <typename Change>
  uint32_t Changed(uint32_t code, Change change) {
    CellStyle style = styles_[code];
    change(style);
    return CodeOf(style);
  }
  // The empty style included; every code is below it.
  size_t Count() const { return styles_.size(); }

  // Code 0 is the empty style, and no two codes have the same style.
  bool CheckInvariants() const;
  // Approximate memory of the styles.
  size_t MemoryBytes() const;

 private:
  static size_t HashOf(const CellStyle& style);
  // 0 if the style has no code yet.
  uint32_t Find(const CellStyle& style, size_t hash) const;

  std::vector<CellStyle> styles_;
  std::unordered_multimap<size_t, uint32_t> codes_;
};

}  // namespace stockbook::sheet
