// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/control/stockbook.h"

namespace stockbook::app {

// What this host changes of the control's column layout, each time that the control has laid the columns out: wider
// columns for long texts, and as many decimals for the second unit as for the first.
void RefineLayout(control::Stockbook& control);

// After a load: gives the captions of the periods, which have one line, the height of one; the totals keep their two.
// O(periods).
void LowerCaptions(control::Stockbook& control);

}  // namespace stockbook::app
