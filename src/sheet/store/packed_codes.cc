// SPDX-License-Identifier: MIT
#include "sheet/store/packed_codes.h"

#include <algorithm>
#include <bit>

namespace stockbook::sheet {

PackedCodes::PackedCodes(std::span<const uint8_t> codes) : size_(codes.size()) {
  if (codes.empty()) return;
  const auto [least, most] = std::minmax_element(codes.begin(), codes.end());
  same_ = *least;
  if (*least == *most) return;
  const auto bits = std::bit_ceil(static_cast<unsigned>(std::bit_width(*most)));
  shift_ = static_cast<uint8_t>(std::countr_zero(bits));
  mask_ = static_cast<uint8_t>((1U << bits) - 1);
  bytes_.resize(((codes.size() << shift_) + 7) / 8);
  const size_t in_a_byte = 8 / bits;
  for (size_t byte = 0; byte < bytes_.size(); ++byte) {
    const auto part = codes.subspan(byte * in_a_byte, std::min(in_a_byte, codes.size() - byte * in_a_byte));
    unsigned packed = 0;
    for (size_t at = 0; at < part.size(); ++at) packed |= static_cast<unsigned>(part[at]) << (at << shift_);
    bytes_[byte] = static_cast<uint8_t>(packed);
  }
}

}  // namespace stockbook::sheet
