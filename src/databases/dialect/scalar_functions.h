// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "stockbook/base/value.h"

namespace stockbook::databases {

using Arguments = std::span<const base::Value>;

// One operator or function of the dialects over plain values. `name` is what translated statements call it. A null
// argument gives null unless the function says otherwise; a value that cannot be read as required gives null; leaving
// the range of money or of whole numbers, or making too long a text, throws base::ArithmeticError. Whoever calls it
// sees to the argument count.
struct ScalarFunction {
  const char* name;
  base::Value (*apply)(Arguments);
  size_t least = 1;
  size_t most = least;
};

// Texts that functions make may have this many bytes. One that is only passed on or cut may have more.
inline constexpr size_t kMostTextBytes = size_t{4} << 20;

inline bool AnyNull(Arguments values) {
  return std::any_of(values.begin(), values.end(), [](const base::Value& value) { return value.IsNull(); });
}

}  // namespace stockbook::databases
