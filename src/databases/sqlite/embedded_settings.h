// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "databases/connection_string.h"
#include "databases/dialect/target.h"
#include "databases/execution/interruption.h"
#include "databases/execution/readable_tables.h"

namespace stockbook::databases {

// What the connection string of an embedded database says: Data Source=FILE; Timeout=SECONDS, the time that the
// statements of one moment may take together, 60 unless it is given and without end if it is 0; Tables=A,B, what may be
// read beside the tables of a journal; Threads=N, on how many threads long results are read, from 1 to 16, as many as
// the machine has but at most 4 unless it is given; AmpersandJoins=1, whether `&` with a text joins texts in the server
// dialect, too, instead of being refused as by its server.
struct EmbeddedSettings {
  std::string file;
  std::optional<Interruption::Clock::duration> time_limit;
  ReadableTables tables;
  size_t threads = 1;
  Ampersand ampersand = Ampersand::kServerRefusesTexts;
};

// On how many threads the connection string wants long results to be read. Throws platform::Error when it is no such
// number.
size_t ReadThreads(const ConnectionString& settings);

// Throws platform::Error when something is missing or means nothing.
EmbeddedSettings ReadEmbeddedSettings(std::string_view connection_string);

}  // namespace stockbook::databases
