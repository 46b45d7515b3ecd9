// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "stockbook/inventory/inventory_quantity.h"

namespace stockbook::app {

// The exact decimal number of a text: a sign, digits, a point, an exponent, and blanks around it; no grouping
// separators, because a comma may also be a decimal point. Nothing if it is not a number, or has more than 15
// significant digits or decimals, which a database's numbers do not preserve.
std::optional<ScaledDecimal> ParseDecimal(std::string_view text);

// The decimal as a quantity; nothing if it has more than 6 decimals or is beyond +-999,999,999.
std::optional<Quantity> QuantityOf(ScaledDecimal decimal);

}  // namespace stockbook::app
