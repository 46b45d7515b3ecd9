// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "databases/dialect/schema.h"
#include "databases/dialect/target.h"
#include "databases/execution/interruption.h"
#include "databases/execution/row_reader.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::databases {

// Runs one statement of the target's dialect on a server, whose tables `find_table` describes (each with its row_keys,
// and plain) and whose rows `reader` reads; the emitter is one for an engine of strict types. A union, and a SELECT
// with an ORDER BY, are read without any order and put in order here, in the same one as the embedded database's;
// anything else is left to the server. Call it while the statement runs and inside of one moment. Throws
// platform::Error.
platform::Recordset ExecuteTranslated(std::string_view statement, const Target& target, const TableFinder& find_table,
                                      RowReader& reader, const Interruption& interruption);

}  // namespace stockbook::databases
