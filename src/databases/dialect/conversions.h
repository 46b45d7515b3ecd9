// SPDX-License-Identifier: MIT
#pragma once

#include "databases/dialect/scalar_functions.h"

namespace stockbook::databases {

std::span<const ScalarFunction> ConversionFunctions();

}  // namespace stockbook::databases
