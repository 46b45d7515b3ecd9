// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "databases/dialect/scalar_functions.h"

namespace stockbook::databases {

std::span<const ScalarFunction> DateFunctions();

// Day and second on the clock of this place.
base::Date LocalNow();

// A date out of a text as people write it: what base::Date reads, with blanks around the separators allowed, and
// yyyyMMdd.
std::optional<base::Date> ReadDateText(std::string_view text);

}  // namespace stockbook::databases
