// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/base/value.h"

namespace stockbook::databases {

// The desktop's Format(value, pattern): "00", "#,##0.00", "0%", "yyyy-MM-dd", "yyyy年MM月dd日", "Standard"…
std::string FormatValue(const base::Value& value, std::string_view pattern);

}  // namespace stockbook::databases
