// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "interaction/events.h"
#include "platform/grid.h"

namespace stockbook::interaction {

// Searches all rows of the grid for those that hold every word of the search text, each in at least one column that is
// not hidden; rows that are hidden or in collapsed periods count. Words stand between blanks, semicolons and commas,
// also full-width ones, and may hold wildcards (see Wildcard); case matters. Announces by FindMsg "#BEGIN#", then for
// each hit the text under the outline column and the row number, "#END#" at last, and the count by Notify. A text
// without words is ignored. Errors, those of listeners included, end the search and are told by Notify.
//
// Listeners may do anything to the grid meanwhile: the search goes on with the next row number on the grid as it is
// then. What is thrown that is no std::exception goes through, and the grid is not touched any more.
void Find(platform::Grid& grid, Events& events, std::string_view outline_key, std::string_view search);

}  // namespace stockbook::interaction
