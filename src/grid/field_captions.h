// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "grid/layout_settings.h"

namespace stockbook::grid {

// Caption of the optional field 0..6: in the journals of receipts and issues both sides, "receipt|issue", where they
// differ; the receipt side in the supplier journal, the issue side in the customer journal, "" for any other type. An
// index outside of 0..6 throws std::out_of_range.
std::string FieldCaption(const LayoutSettings& settings, int index);

}  // namespace stockbook::grid
