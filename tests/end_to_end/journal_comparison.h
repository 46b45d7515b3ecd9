// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "end_to_end/base_tables.h"
#include "end_to_end/recomputed_journal.h"
#include "end_to_end/shown_journal.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::end_to_end {

// Whether the shown journal equals the one recomputed from the tables, text by text: columns, rows and their order,
// running values, totals, nodes, levels and heights. Lines that tie in the journal's order may be shown in any order.
// The failure names the first row and the cells that differ.
::testing::AssertionResult IsTheJournalOf(const BaseTables& tables, const app::JournalOptions& options,
                                          const ShownJournal& shown);
::testing::AssertionResult IsTheJournal(const RecomputedJournal& journal, const app::JournalOptions& options,
                                        const ShownJournal& shown);

// Checks the captions and messages of a whole load, and that its progress rises to 100 and then ends with -1. A balance
// that was refused is told after them.
enum class Balance { kRead, kRefused };
::testing::AssertionResult SaysWhatALoadSays(const ShownJournal& shown, const app::JournalOptions& options,
                                             size_t line_count, Balance balance);

std::string Describe(const app::JournalOptions& options);

}  // namespace stockbook::end_to_end
