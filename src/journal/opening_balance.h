// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::journal {

// An executed balance statement. Without rows nothing was carried forward; without a result it could not be read.
struct OpeningBalance {
  std::string first_period;  // the earliest accounting period
  std::optional<platform::Recordset> result;
};

// The statement of the balance that is carried into the period `first_period`. Fixed oddities: in the partner and
// project statements IssAcc sums issue quantities, LastPrice is a plain average, the project statement has no period
// limit.
std::string BuildBalanceStatement(const Inventory& inventory, base::tqJournalTypeContants type, const SubjectKeys& keys,
                                  const std::string& first_period);

// Reads the earliest period and runs the balance statement, with a cache of 1000 rows. After an error of a statement,
// which is told, there is no result.
OpeningBalance OpenOpeningBalance(const Inventory& inventory, base::tqJournalTypeContants type,
                                  const SubjectKeys& keys);

}  // namespace stockbook::journal
