// SPDX-License-Identifier: MIT
#pragma once

#include "journal/opening_balance.h"
#include "journal/running_balance.h"
#include "journal/running_values.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::journal {

// Moves the rows of a journal statement into a cleared grid. Every field becomes a column whose key is the field's
// name; the rows are grouped by `Period` under nodes captioned with the period. Without rows the grid is not touched.
void LayRows(platform::Recordset rows, platform::GridTable& grid, platform::GridOutline& outline);

// Inserts the opening row above all data rows and returns what the journal opens with: what was carried forward, in the
// supplier journal the receipts and in the customer journal the issues up to the period. If nothing was carried
// forward, or the balance could not be read, the row shows zeros under the earliest period. Balance values that are not
// numbers count as 0; an amount outside the range of Money throws base::ArithmeticError.
Totals WriteOpeningRow(const OpeningBalance& balance, base::tqJournalTypeContants type, platform::GridTable& grid);

// Inserts the total row of a period after its last record: each of the nine movement columns shows the sum of the
// period and, on a second line, the cumulative sum, both in the column's format. Throws platform::Error when the record
// is no longer in the grid.
void InsertTotalRow(const PeriodTotals& period, int height_twips, platform::GridTable& grid,
                    platform::GridOutline& outline);

}  // namespace stockbook::journal
