// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stockbook::app {

// What a command may put its output in the place of.
enum class Replaces { kAnyInventory, kNoInventory };

// Refuses an output that would destroy what nobody meant to replace, whatever the spelling, link or second name it is
// reached by: the command's own input or a file that belongs to it (`input` is empty if there is none); with
// kNoInventory any file that begins like a database; and the journal of any database. Throws UsageError. Nothing is
// opened for writing.
void CheckOutput(const std::string& target, const std::string& input, Replaces replaces);

}  // namespace stockbook::app
