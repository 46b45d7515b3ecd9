// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "stockbook/base/journal_type.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::journal {

// Which numbers a journal shows beside those that every journal has.
struct ShownNumbers {
  bool second_unit = false;
  bool taxes = false;
};

// Looks whether the result of a journal statement has the fields that the journal needs; a result without rows needs
// none. Throws platform::Error that names the missing ones if a number, a sum, the period, the bill or the direction of
// a line would be shown wrong without them. If other fields are missing it returns a sentence that names them, and ""
// if none is. Names are compared with their case, as columns are found by it. The optional texts of a line may be
// missing, the second unit and the taxes where they are not shown, and what the load computes itself.
std::string CheckNeededFields(const platform::Recordset& rows, base::tqJournalTypeContants type,
                              const ShownNumbers& shown);

}  // namespace stockbook::journal
