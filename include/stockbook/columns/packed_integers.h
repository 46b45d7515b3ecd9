// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>

#include "stockbook/base/api.h"

namespace stockbook::columns {

// Whole numbers above a common base, each in nothing, half a byte or 1 to 8 bytes; the narrowest width that holds the
// range is chosen.
class STOCKBOOK_API PackedIntegers {
 public:
  PackedIntegers() = default;
  // Copies the numbers, in the narrowest width that holds their range.
  explicit PackedIntegers(std::span<const int64_t> numbers);
  // `count` times the same number, in no memory of its own.
  static PackedIntegers Repeated(int64_t number, size_t count);
  // Without a branch on the width, so that reading here and there is cheap, too.
  int64_t At(size_t row) const {
    uint64_t raw = 0;
    const size_t half = row * halves_;
    std::memcpy(&raw, (bytes_ ? bytes_.get() : kNothing) + half / 2, sizeof raw);
    return static_cast<int64_t>(static_cast<uint64_t>(base_) + (raw >> (half % 2 * 4) & mask_));
  }
  // The numbers of rows [first, first + out.size()), all of which there are.
  void Read(size_t first, std::span<int64_t> out) const;
  // The same for numbers that are known to fit.
  void ReadCodes(size_t first, std::span<uint32_t> out) const;
  // The numbers of the rows first + at[0], first + at[1], ...; `first` may be before the first row, modulo 2^64.
  void ReadAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const;
  // Both are limits: every number is `least()` or at most `range()` above it.
  int64_t least() const { return base_; }
  uint64_t range() const { return mask_; }
  // The same divided by `divisor`, 1 to 10^15; the numbers are below 2^53.
  void ReadQuotients(size_t first, double divisor, std::span<double> out) const;
  // Of the packed numbers alone.
  size_t MemoryBytes() const { return (count_ * halves_ + 1) / 2; }

 private:
  // At reads eight bytes, whatever the width.
  static constexpr size_t kSlack = 7;
  static constexpr unsigned char kNothing[8] = {};

  int64_t base_ = 0;
  uint64_t mask_ = 0;  // of the bits that a number has
  size_t count_ = 0;
  uint8_t halves_ = 0;  // half bytes that a number has
  std::unique_ptr<unsigned char[]> bytes_;
};

}  // namespace stockbook::columns
