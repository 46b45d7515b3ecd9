// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/databases/rows/row_source.h"

namespace stockbook::databases {

// The period that a bill is posted in; empty where it has neither period nor date.
std::string PeriodOf(const Bill& bill);

// The first of the accounting periods that the source gives; empty where it gives none.
std::string EarliestPeriod(RowSource& source);

}  // namespace stockbook::databases
