// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/desktop/table_sink.h"

namespace stockbook::databases {

// Reads all tables of a desktop file but the system's own, typed and with their texts in UTF-8. `text_encoding` is that
// of a Jet 3 file and empty for later ones. Throws ReadFailure.
void ReadTables(const std::string& path, const std::string& text_encoding, TableSink& sink);

}  // namespace stockbook::databases
