// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "stockbook/import/import_mapping.h"

namespace stockbook::app {

// The delimiter that splits the first lines of a text into most fields, as many in each: a comma, semicolon, tab or
// bar. A comma if none does.
char GuessDelimiter(std::string_view front);

// What the columns of a header line are most likely, by their Chinese or English names. No column is two things. A
// column of names is that of the products where nothing else is.
ImportMapping::Positions GuessMapping(const std::vector<std::string_view>& header);

}  // namespace stockbook::app
