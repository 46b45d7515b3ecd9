// SPDX-License-Identifier: MIT
#pragma once

#include "base/journal_type.h"
#include "journal/opening_balance.h"
#include "journal/running_balance.h"
#include "platform/grid.h"

namespace stockbook::journal {

// Inserts the opening row above all data rows and returns what the journal opens with: what was carried forward, in the
// supplier journal the receipts and in the customer journal the issues up to the period. Nothing carried forward shows
// as zeros; a balance that could not be read gives no row, rather than a zero that nobody counted. What is no number
// in the balance counts as 0; an amount outside the range of Money throws base::ArithmeticError.
Totals WriteOpeningRow(const OpeningBalance& balance, base::tqJournalTypeContants type, platform::Grid& grid);

}  // namespace stockbook::journal
