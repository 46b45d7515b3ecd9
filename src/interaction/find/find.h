// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "interaction/events.h"
#include "stockbook/platform/grid_busy.h"
#include "stockbook/platform/grid_table.h"

namespace stockbook::interaction {

// Searches all rows of the grid for those that hold every word of the search text, each in at least one column that is
// not hidden; rows that are hidden or in collapsed periods count. Words are separated by blanks, semicolons and commas,
// full-width ones included, and may contain wildcards (see Wildcard); case matters. Raises FindMsg with "#BEGIN#", then
// for each hit with its text in the outline column and its row number, and finally with "#END#", and reports the count
// through Notify. A text without words is ignored. Errors, including those of listeners, end the search and are
// reported through Notify.
//
// Listeners may change the grid in any way during the search, which continues with the next row number on the grid as
// it is then. An exception that is not a std::exception passes through, and the grid is not touched any more.
void Find(const platform::GridTable& grid, platform::GridBusy& busy, Events& events, std::string_view outline_key,
          std::string_view search);

}  // namespace stockbook::interaction
