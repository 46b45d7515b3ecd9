// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "stockbook/inventory/inventory_quantity.h"

namespace stockbook::app {

// The decimal number a text spells, exactly: a sign, digits, a point, an exponent, blanks around it; no grouping signs,
// since a comma may also be meant as the point. Nothing when it is no number, or has more than 15 significant digits or
// more than 15 decimals, which a database's numbers do not keep.
std::optional<ScaledDecimal> ParseDecimal(std::string_view text);

// The decimal as a quantity; nothing when it has more than 6 decimals or lies beyond +-999,999,999.
std::optional<Quantity> QuantityOf(ScaledDecimal decimal);

}  // namespace stockbook::app
