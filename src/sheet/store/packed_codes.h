// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace stockbook::sheet {

// Small numbers, one a row, in the fewest bits that hold them all: 8, 4, 2, 1, or none where they are all the same.
class PackedCodes {
 public:
  PackedCodes() = default;
  explicit PackedCodes(std::span<const uint8_t> codes);

  size_t size() const { return size_; }
  uint8_t At(size_t row) const {
    if (bytes_.empty()) return same_;
    const size_t bit = row << shift_;
    return static_cast<uint8_t>(bytes_[bit / 8] >> (bit % 8) & mask_);
  }
  size_t MemoryBytes() const { return bytes_.capacity(); }

 private:
  size_t size_ = 0;
  uint8_t same_ = 0;
  uint8_t shift_ = 0;
  uint8_t mask_ = 0;
  std::vector<uint8_t> bytes_;
};

}  // namespace stockbook::sheet
