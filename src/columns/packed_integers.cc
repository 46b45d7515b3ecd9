// SPDX-License-Identifier: MIT
#include "stockbook/columns/packed_integers.h"

#include <algorithm>
#include <bit>

namespace stockbook::columns {
namespace {

uint8_t HalvesFor(uint64_t range) {
  const auto bits = static_cast<int>(std::bit_width(range));
  return static_cast<uint8_t>(bits <= 4 ? (bits + 3) / 4 : (bits + 7) / 8 * 2);
}

void PackHalves(unsigned char* bytes, std::span<const int64_t> numbers, int64_t base) {
  const auto above = [&](size_t row) {
    return static_cast<unsigned>(static_cast<uint64_t>(numbers[row]) - static_cast<uint64_t>(base));
  };
  size_t row = 0;
  for (; row + 1 < numbers.size(); row += 2) *bytes++ = static_cast<unsigned char>(above(row) | above(row + 1) << 4);
  if (row < numbers.size()) *bytes = static_cast<unsigned char>(above(row));
}

template <typename Out>
void UnpackHalves(const unsigned char* bytes, size_t first, std::span<Out> out, int64_t base) {
  const auto low = [&](unsigned char byte) { return static_cast<Out>(static_cast<uint64_t>(base) + (byte & 15U)); };
  const auto high = [&](unsigned char byte) { return static_cast<Out>(static_cast<uint64_t>(base) + (byte >> 4U)); };
  const unsigned char* in = bytes + first / 2;
  if (first % 2 != 0 && !out.empty()) {
    out.front() = high(*in++);
    out = out.subspan(1);
  }
  const size_t pairs = out.size() / 2;
  for (size_t pair = 0; pair < pairs; ++pair) {
    out[2 * pair] = low(in[pair]);
    out[2 * pair + 1] = high(in[pair]);
  }
  if (out.size() % 2 != 0) out.back() = low(in[pairs]);
}

// A number of `width` bytes is read with those after it, and written over the first of the next one.
uint64_t WideAt(const unsigned char* bytes, size_t row, size_t width, uint64_t mask) {
  uint64_t raw = 0;
  std::memcpy(&raw, bytes + row * width, sizeof raw);
  return raw & mask;
}

void PackWide(unsigned char* bytes, std::span<const int64_t> numbers, int64_t base, size_t width) {
  for (const int64_t number : numbers) {
    const uint64_t raw = static_cast<uint64_t>(number) - static_cast<uint64_t>(base);
    std::memcpy(bytes, &raw, sizeof raw);
    bytes += width;
  }
}

template <typename Out>
void UnpackWide(const unsigned char* bytes, size_t width, uint64_t mask, std::span<Out> out, int64_t base) {
  for (size_t row = 0; row < out.size(); ++row)
    out[row] = static_cast<Out>(static_cast<uint64_t>(base) + WideAt(bytes, row, width, mask));
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
  halves_ = HalvesFor(static_cast<uint64_t>(most) - static_cast<uint64_t>(least));
  if (halves_ == 0) return;
  mask_ = UINT64_MAX >> (64 - 4 * halves_);
  bytes_ = std::make_unique_for_overwrite<unsigned char[]>(MemoryBytes() + kSlack);
  std::memset(bytes_.get() + MemoryBytes(), 0, kSlack);
  switch (halves_) {
    case 1:
      PackHalves(bytes_.get(), numbers, base_);
      break;
    case 2:
      PackInto<uint8_t>(bytes_.get(), numbers, base_);
      break;
    case 4:
      PackInto<uint16_t>(bytes_.get(), numbers, base_);
      break;
    case 8:
      PackInto<uint32_t>(bytes_.get(), numbers, base_);
      break;
    case 16:
      PackInto<uint64_t>(bytes_.get(), numbers, base_);
      break;
    default:
      PackWide(bytes_.get(), numbers, base_, halves_ / 2U);
  }
}

PackedIntegers PackedIntegers::Repeated(int64_t number, size_t count) {
  PackedIntegers repeated;
  repeated.base_ = number;
  repeated.count_ = count;
  return repeated;
}

void PackedIntegers::Read(size_t first, std::span<int64_t> out) const {
  switch (halves_) {
    case 0:
      std::fill(out.begin(), out.end(), base_);
      break;
    case 1:
      UnpackHalves(bytes_.get(), first, out, base_);
      break;
    case 2:
      UnpackFrom<uint8_t>(bytes_.get(), first, out, base_);
      break;
    case 4:
      UnpackFrom<uint16_t>(bytes_.get(), first, out, base_);
      break;
    case 8:
      UnpackFrom<uint32_t>(bytes_.get(), first, out, base_);
      break;
    case 16:
      UnpackFrom<uint64_t>(bytes_.get(), first, out, base_);
      break;
    default:
      UnpackWide(bytes_.get() + first * (halves_ / 2U), halves_ / 2U, mask_, out, base_);
  }
}

void PackedIntegers::ReadCodes(size_t first, std::span<uint32_t> out) const {
  switch (halves_) {
    case 0:
      return std::fill(out.begin(), out.end(), static_cast<uint32_t>(base_));
    case 1:
      return UnpackHalves(bytes_.get(), first, out, base_);
    case 2:
      return UnpackFrom<uint8_t>(bytes_.get(), first, out, base_);
    case 4:
      return UnpackFrom<uint16_t>(bytes_.get(), first, out, base_);
    case 8:
      return UnpackFrom<uint32_t>(bytes_.get(), first, out, base_);
    case 16:
      return UnpackFrom<uint64_t>(bytes_.get(), first, out, base_);
    default:
      return UnpackWide(bytes_.get() + first * (halves_ / 2U), halves_ / 2U, mask_, out, base_);
  }
}

void PackedIntegers::ReadAt(size_t first, std::span<const uint16_t> at, std::span<int64_t> out) const {
  switch (halves_) {
    case 0:
      return std::fill(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(at.size()), base_);
    case 2:
      return UnpackAt<uint8_t>(bytes_.get(), first, at, out, base_);
    case 4:
      return UnpackAt<uint16_t>(bytes_.get(), first, at, out, base_);
    case 8:
      return UnpackAt<uint32_t>(bytes_.get(), first, at, out, base_);
    case 16:
      return UnpackAt<uint64_t>(bytes_.get(), first, at, out, base_);
    default:
      for (size_t row = 0; row < at.size(); ++row) out[row] = At(first + at[row]);
  }
}

void PackedIntegers::ReadQuotients(size_t first, double divisor, std::span<double> out) const {
  constexpr int64_t kLeast = INT32_MIN;
  constexpr int64_t kMost = int64_t{INT32_MAX} - UINT16_MAX;
  if (halves_ == 0) return std::fill(out.begin(), out.end(), static_cast<double>(base_) / divisor);
  const auto base = static_cast<int32_t>(base_);
  if (halves_ == 2 && base_ >= kLeast && base_ <= kMost)
    return DivideNarrow<uint8_t>(bytes_.get(), first, base, divisor, out);
  if (halves_ == 4 && base_ >= kLeast && base_ <= kMost)
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
