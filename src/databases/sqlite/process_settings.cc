// SPDX-License-Identifier: MIT
#include "databases/sqlite/process_settings.h"

#include <sqlite3.h>

namespace stockbook::databases {

void TurnOffMemoryStatistics() { sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); }

}  // namespace stockbook::databases
