// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "stockbook/databases/rows/row_source.h"

namespace stockbook::databases {

// The period that a bill is posted in; empty where it has neither period nor date.
std::string PeriodOf(const Bill& bill);

// The first of the accounting periods that the source gives; empty where it gives none. Calls `check` for every one
// that it is given; it may throw.
std::string EarliestPeriod(RowSource& source, const std::function<void()>& check);

}  // namespace stockbook::databases
