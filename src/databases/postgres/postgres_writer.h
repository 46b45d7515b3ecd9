// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "databases/table_writer.h"

namespace stockbook::databases {

// Writes an inventory into a PostgreSQL database: everything in one transaction, rows by COPY, so that others see all
// of it or nothing. Whole numbers become bigint, numbers double precision, amounts numeric(19,4), dates timestamp,
// texts text. Tables that are there already are refused or, within the transaction, dropped; what else depends on them
// makes that fail. Throws platform::Error when it cannot connect.
std::unique_ptr<TableWriter> OpenPostgresWriter(std::string_view connection_string, Existing existing);

}  // namespace stockbook::databases
