// SPDX-License-Identifier: MIT
#pragma once

#include "com/automation/variant.h"

#include <vector>

namespace stockbook::com {

// The elements of a one-dimensional array of variants from index 0 on; none where there is no array or no element 0.
// Throws AutomationError for an array of another kind and for an element 0 that is no value; others that are none, such
// as objects, become empty.
std::vector<base::Value> ValuesFromZero(SAFEARRAY* array);

}  // namespace stockbook::com
