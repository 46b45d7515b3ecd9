// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "end_to_end/base_tables.h"
#include "end_to_end/recomputed_journal.h"
#include "end_to_end/shown_journal.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// Whether the shown journal is, text by text, the one that the tables give: columns, rows, their order, running values,
// totals, nodes, levels and heights. Among lines that the journal's order does not tell apart, the shown order counts,
// as long as the lines are the same. The failure names the first row and the cells that differ.
::testing::AssertionResult IsTheJournalOf(const BaseTables& tables, const app::JournalOptions& options,
                                          const ShownJournal& shown);

// Captions and messages of a whole load, and its progress: rising to 100, then -1.
::testing::AssertionResult SaysWhatALoadSays(const ShownJournal& shown, const app::JournalOptions& options,
                                             size_t line_count);

std::string Describe(const app::JournalOptions& options);

}  // namespace stockbook::end_to_end
