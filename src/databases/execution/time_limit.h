// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "databases/connection_string.h"
#include "databases/execution/interruption.h"

namespace stockbook::databases {

// Timeout=SECONDS: the time that the statements of one moment may take together, 60 s unless it is given and without
// end (nothing) if it is 0. Throws platform::Error when it is no time.
std::optional<Interruption::Clock::duration> ReadTimeLimit(const ConnectionString& settings);

}  // namespace stockbook::databases
