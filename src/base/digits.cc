// SPDX-License-Identifier: MIT
#include "base/digits.h"

namespace stockbook::base {

std::string ZeroPadded(int64_t number, size_t least) {
  std::string digits = std::to_string(number);
  if (digits.size() < least) digits.insert(0, least - digits.size(), '0');
  return digits;
}

}  // namespace stockbook::base
