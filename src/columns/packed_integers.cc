// SPDX-License-Identifier: MIT
#include "columns/packed_integers.h"

#include <algorithm>

namespace stockbook::columns {
namespace {

uint8_t WidthOf(uint64_t range) {
  if (range == 0) return 0;
  if (range <= UINT8_MAX) return 1;
  if (range <= UINT16_MAX) return 2;
  return range <= UINT32_MAX ? 4 : 8;
}

template <typename Narrow>
void PackInto(unsigned char* bytes, std::span<const int64_t> numbers, int64_t base) {
  auto* out = reinterpret_cast<Narrow*>(bytes);
  for (size_t row = 0; row < numbers.size(); ++row) {
    out[row] = static_cast<Narrow>(static_cast<uint64_t>(numbers[row]) - static_cast<uint64_t>(base));
  }
}

template <typename Narrow, typename Out>
void UnpackFrom(const unsigned char* bytes, size_t first, std::span<Out> out, int64_t base) {
  const auto* in = reinterpret_cast<const Narrow*>(bytes) + first;
  for (size_t row = 0; row < out.size(); ++row) {
    out[row] = static_cast<Out>(static_cast<uint64_t>(base) + static_cast<uint64_t>(in[row]));
  }
}

template <typename Narrow>
void UnpackAt(const unsigned char* bytes, size_t first, std::span<const uint16_t> at, std::span<int64_t> out,
              int64_t base) {
  const auto* in = reinterpret_cast<const Narrow*>(bytes);
  for (size_t row = 0; row < at.size(); ++row) {
    out[row] = static_cast<int64_t>(static_cast<uint64_t>(base) + static_cast<uint64_t>(in[first + at[row]]));
  }
}

// Numbers that stay within 32 bits convert several at a time.
template <typename Narrow>
void DivideNarrow(const unsigned char* bytes, size_t first, int32_t base, double divisor, std::span<double> out) {
  const auto* in = reinterpret_cast<const Narrow*>(bytes) + first;
  double* to = out.data();
  const size_t count = out.size();
  if (divisor == 1) {
    for (size_t row = 0; row < count; ++row) to[row] = static_cast<double>(static_cast<int32_t>(in[row]) + base);
  } else {
    for (size_t row = 0; row < count; ++row)
      to[row] = static_cast<double>(static_cast<int32_t>(in[row]) + base) / divisor;
  }
}

}  // namespace

PackedIntegers::PackedIntegers(std::span<const int64_t> numbers) : count_(numbers.size()) {
  if (numbers.empty()) return;
  int64_t least = numbers.front();
  int64_t most = least;
  for (const int64_t number : numbers) {
    least = std::min(least, number);
    most = std::max(most, number);
  }
  base_ = least;
  width_ = WidthOf(static_cast<uint64_t>(most) - static_cast<uint64_t>(least));
  if (width_ == 0) return;
  mask_ = UINT64_MAX >> (64 - 8 * width_);
  bytes_ = std::make_unique_for_overwrite<unsigned char[]>(count_ * width_ + kSlack);
  std::memset(bytes_.get() + count_ * width_, 0, kSlack);
  switch (width_) {
    case 1:
      PackInto<uint8_t>(bytes_.get(), numbers, base_);
      break;
    case 2:
      PackInto<uint16_t>(bytes_.get(), numbers, base_);
      break;
    case 4:
      PackInto<uint32_t>(bytes_.get(), numbers, base_);
      break;
    default:
      PackInto<uint64_t>(bytes_.get(), numbers, base_);
  }
}

PackedIntegers PackedIntegers::Repeated(int64_t number, size_t count) {
  PackedIntegers repeated;
  repeated.base_ = number;
  repeated.count_ = count;
  return repeated;
}

void PackedIntegers::Read(size_t first, std::span<int64_t> out) const {
  switch (width_) {
    case 0:
      std::fill(out.begin(), out.end(), base_);
      break;
    case 1:
      UnpackFrom<uint8_t>(bytes_.get(), first, out, base_);
      break;
    case 2:
      UnpackFrom<uint16_t>(bytes_.get(), first, out, base_);
      break;
    case 4:
      UnpackFrom<uint32_t>(bytes_.get(), first, out, base_);
      break;
    default:
      UnpackFrom<uint64_t>(bytes_.get(), first, out, base_);
  }
}

void PackedIntegers::ReadCodes(size_t first, std::span<uint32_t> out) const {
  switch (width_) {
    case 0:
      return std::fill(out.begin(), out.end(), static_cast<uint32_t>(base_));
    case 1:
      return UnpackFrom<uint8_t>(bytes_.get(), first, out, base_);
    case 2:
      return UnpackFrom<uint16_t>(bytes_.get(), first, out, base_);
    case 4:
      return UnpackFrom<uint32_t>(bytes_.get(), first, out, base_);
    default:
      return UnpackFrom<uint64_t>(bytes_.get(), first, out, base_);
  }
}

void PackedIntegers::ReadAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const {
  switch (width_) {
    case 0:
      return std::fill(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(at.size()), base_);
    case 1:
      return UnpackAt<uint8_t>(bytes_.get(), first, at, out, base_);
    case 2:
      return UnpackAt<uint16_t>(bytes_.get(), first, at, out, base_);
    case 4:
      return UnpackAt<uint32_t>(bytes_.get(), first, at, out, base_);
    default:
      return UnpackAt<uint64_t>(bytes_.get(), first, at, out, base_);
  }
}

void PackedIntegers::ReadQuotients(size_t first, double divisor, std::span<double> out) const {
  constexpr int64_t kLeast = INT32_MIN;
  constexpr int64_t kMost = int64_t{INT32_MAX} - UINT16_MAX;
  if (width_ == 0) return std::fill(out.begin(), out.end(), static_cast<double>(base_) / divisor);
  const auto base = static_cast<int32_t>(base_);
  if (width_ == 1 && base_ >= kLeast && base_ <= kMost)
    return DivideNarrow<uint8_t>(bytes_.get(), first, base, divisor, out);
  if (width_ == 2 && base_ >= kLeast && base_ <= kMost)
    return DivideNarrow<uint16_t>(bytes_.get(), first, base, divisor, out);
  int64_t block[256];
  for (size_t done = 0; done < out.size();) {
    const size_t count = std::min(std::size(block), out.size() - done);
    Read(first + done, std::span(block, count));
    for (size_t row = 0; row < count; ++row) out[done + row] = static_cast<double>(block[row]) / divisor;
    done += count;
  }
}

}  // namespace stockbook::columns
