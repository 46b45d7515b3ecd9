// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "databases/table_writer.h"

namespace stockbook::databases {

// Opens the database of a connection string for writing an inventory into it. Throws platform::Error for a provider
// that cannot be written, or that was not built.
std::unique_ptr<TableWriter> OpenTableWriter(std::string_view connection_string, Existing existing);

}  // namespace stockbook::databases
