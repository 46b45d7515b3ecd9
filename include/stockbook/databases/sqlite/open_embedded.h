// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/connection.h"

namespace stockbook::databases {

// Opens an inventory in one file of the embedded database, read only: Provider=Stockbook.Embedded;Data Source=FILE. It
// understands the desktop dialect, or the server dialect where the string contains "SQL". Timeout=SECONDS is what the
// statements of one moment may take together (60; 0 is without end), Tables=A,B what may be read beside the tables of a
// journal, Threads=N on how many threads long results are read (1 to 16). Throws platform::Error when the text is no
// connection string of an embedded database or the file cannot be opened.
STOCKBOOK_API std::unique_ptr<platform::Connection> OpenEmbedded(std::string_view connection_string);

}  // namespace stockbook::databases
