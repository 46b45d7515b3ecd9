// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "grid/layout_settings.h"

namespace stockbook::grid {

// The caption of an optional field. Journals with both receipts and issues show both captions as "receipt|issue" where
// they differ; the supplier journal shows that of the receipts, the customer journal that of the issues, and any other
// type "". An index outside 0..6 throws std::out_of_range.
std::string FieldCaption(const LayoutSettings& settings, int index);

}  // namespace stockbook::grid
