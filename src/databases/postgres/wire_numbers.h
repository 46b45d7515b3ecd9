// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace stockbook::databases {

// Numbers as the server's protocol writes them: the highest byte first.
template <typename Unsigned>
Unsigned WireUnsigned(const char* bytes) {
  static_assert(std::is_unsigned_v<Unsigned>);
  Unsigned number = 0;
  std::memcpy(&number, bytes, sizeof number);
  if constexpr (std::endian::native == std::endian::little) {
    if constexpr (sizeof(Unsigned) == 2) number = __builtin_bswap16(number);
    if constexpr (sizeof(Unsigned) == 4) number = __builtin_bswap32(number);
    if constexpr (sizeof(Unsigned) == 8) number = __builtin_bswap64(number);
  }
  return number;
}

template <typename Signed>
Signed WireSigned(const char* bytes) {
  return static_cast<Signed>(WireUnsigned<std::make_unsigned_t<Signed>>(bytes));
}

inline double WireDouble(const char* bytes) { return std::bit_cast<double>(WireUnsigned<uint64_t>(bytes)); }
inline float WireFloat(const char* bytes) { return std::bit_cast<float>(WireUnsigned<uint32_t>(bytes)); }

}  // namespace stockbook::databases
