// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::databases {

// Gives memory that was freed back to the system, where the C library would keep it. After a long result, whose
// columns were under construction in many pieces, that is as much as the result itself.
void ReturnFreeMemory();

}  // namespace stockbook::databases
