// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "databases/execution/interruption.h"
#include "databases/execution/readable_tables.h"

namespace stockbook::databases {

// What the connection string of an embedded database says: Data Source=FILE; Timeout=SECONDS, the time that the
// statements of one moment may take together, 60 unless it is given and without end if it is 0; Tables=A,B, what may be
// read beside the tables of a journal.
struct EmbeddedSettings {
  std::string file;
  std::optional<Interruption::Clock::duration> time_limit;
  ReadableTables tables;
};

// Throws platform::Error when something is missing or means nothing.
EmbeddedSettings ReadEmbeddedSettings(std::string_view connection_string);

}  // namespace stockbook::databases
