// SPDX-License-Identifier: MIT
#pragma once

#include "base/journal_type.h"
#include "journal/opening_balance.h"
#include "journal/running_balance.h"
#include "platform/grid_table.h"

namespace stockbook::journal {

// Inserts the opening row above all data rows and returns what the journal opens with: what was carried forward, in the
// supplier journal the receipts and in the customer journal the issues up to the period. If nothing was carried
// forward, the row shows zeros; if the balance could not be read, there is no row rather than a zero that nobody
// counted. Balance values that are not numbers count as 0; an amount outside the range of Money throws
// base::ArithmeticError.
Totals WriteOpeningRow(const OpeningBalance& balance, base::tqJournalTypeContants type, platform::GridTable& grid);

}  // namespace stockbook::journal
