// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <span>

#include "base/value.h"

namespace stockbook::databases {

using Arguments = std::span<const base::Value>;

// One operator or function of the dialects over plain values. `name` is what translated statements call it. A null
// argument gives null unless the function says otherwise; a value that cannot be read as required gives null; leaving
// the range of money or of whole numbers throws base::ArithmeticError. The translator checks the argument count.
struct ScalarFunction {
  const char* name;
  base::Value (*apply)(Arguments);
};

inline bool AnyNull(Arguments values) {
  return std::any_of(values.begin(), values.end(), [](const base::Value& value) { return value.IsNull(); });
}

}  // namespace stockbook::databases
