// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace stockbook::columns {

// Whole numbers of 0, 1, 2, 4 or 8 bytes above a common base; the narrowest width that holds the range is chosen.
class PackedIntegers {
 public:
  PackedIntegers() = default;
  explicit PackedIntegers(std::span<const int64_t> numbers);
  int64_t At(size_t row) const;
  void Read(size_t first, std::span<int64_t> out) const;
  // The same for numbers that are known to fit.
  void ReadCodes(size_t first, std::span<uint32_t> out) const;
  // The numbers of the rows first + at[0], first + at[1], ...; `first` may be before the first row, modulo 2^64.
  void ReadAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const;
  // Every number is `least()` or at most `range()` above it.
  int64_t least() const { return base_; }
  uint64_t range() const { return width_ == 8 ? UINT64_MAX : (uint64_t{1} << (8 * width_)) - 1; }
  // The same divided by `divisor`, 1 to 10^15; the numbers are below 2^53.
  void ReadQuotients(size_t first, double divisor, std::span<double> out) const;
  size_t MemoryBytes() const { return static_cast<size_t>(width_) * count_; }

 private:
  int64_t base_ = 0;
  size_t count_ = 0;
  uint8_t width_ = 0;
  std::unique_ptr<unsigned char[]> bytes_;
};

}  // namespace stockbook::columns
