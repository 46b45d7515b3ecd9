// SPDX-License-Identifier: MIT
#include "stockbook/sheet/store/cell_style.h"

#include <functional>

namespace stockbook::sheet {

size_t CellStyles::HashOf(const CellStyle& style) {
  size_t hash = std::hash<std::string>{}(style.font_name);
  const auto mix = [&hash](size_t part) { hash = static_cast<size_t>((hash ^ part) * 1099511628211U + (hash >> 29)); };
  mix(style.back ? *style.back + 1U : 0U);
  mix(style.fore ? *style.fore + 1U : 0U);
  mix(style.alignment ? static_cast<size_t>(*style.alignment) + 1U : 0U);
  mix(style.picture ? std::hash<const platform::Picture*>{}(style.picture->get()) + 1U : 0U);
  mix(static_cast<size_t>(style.picture_alignment));
  return hash;
}

uint32_t CellStyles::CodeOf(const CellStyle& style) {
  if (style == styles_.front()) return 0;
  const size_t hash = HashOf(style);
  if (const uint32_t known = Find(style, hash); known != 0) return known;
  const auto code = static_cast<uint32_t>(styles_.size());
  styles_.push_back(style);
  try {
    codes_.emplace(hash, code);
  } catch (...) {
    styles_.pop_back();
    throw;
  }
  return code;
}

uint32_t CellStyles::Find(const CellStyle& style, size_t hash) const {
  const auto [first, last] = codes_.equal_range(hash);
  for (auto at = first; at != last; ++at) {
    if (styles_[at->second] == style) return at->second;
  }
  return 0;
}

bool CellStyles::CheckInvariants() const {
  if (styles_.front() != CellStyle() || codes_.size() != styles_.size() - 1) return false;
  for (uint32_t code = 1; code < styles_.size(); ++code) {
    if (Find(styles_[code], HashOf(styles_[code])) != code) return false;
  }
  return true;
}

size_t CellStyles::MemoryBytes() const {
  constexpr size_t kHashNode = sizeof(std::pair<const size_t, uint32_t>) + 2 * sizeof(void*);
  return styles_.capacity() * sizeof(CellStyle) + codes_.size() * kHashNode;
}

}  // namespace stockbook::sheet
