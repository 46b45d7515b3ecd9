// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::databases {

// Tells SQLite not to count allocations, which costs a tenth of a load. It concerns the whole process, so a program may
// call it, once and before SQLite is first used; the library never does. Too late a call changes nothing.
void TurnOffMemoryStatistics();

}  // namespace stockbook::databases
