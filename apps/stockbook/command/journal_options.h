// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "stockbook/command/command_line.h"
#include "stockbook/range/journal_range.h"

namespace stockbook::app {

// The journal chosen on a command line, in terms of the control's interface.
struct JournalOptions {
  int journal_type = 0;  // JournalType: 0 material, 1 supplier, 2 customer, 3 project
  int32_t key_id = 0;    // KeyID: the product; 0 is every product, in the partner journals
  int32_t dp_id = 0;     // dpID: depot, supplier, customer or project; below 1 is all of them
  std::string dp_code;   // dpCode: class code of the second key
  bool allow_qty2 = false;
  bool allow_inv = false;  // shows the tax columns
  bool acc_restrict = false;
  JournalRange range{};  // what is shown of it
};

// The options of JOURNAL, which precede a command's own ones.
std::span<const Option> JournalOptionList();

// The help of a command with DB and JOURNAL: `own` and the lines that explain these.
std::string JournalCommandUsage(std::string_view own);
// The same for a command that takes no range.
std::string WholeJournalCommandUsage(std::string_view own);

// The parsed arguments of a command with `DB JOURNAL`, the options of both and `own` ones. Throws UsageError like
// CommandLine.
CommandLine ReadJournalCommand(std::span<const std::string> arguments, std::span<const Option> own);

// The journal, or nothing if no option of JOURNAL was given. Throws UsageError if it is incomplete: the material and
// project journals need a product.
std::optional<JournalOptions> ReadJournalOptions(const CommandLine& line);

// The same for commands that require a journal.
JournalOptions RequireJournalOptions(const CommandLine& line);

}  // namespace stockbook::app
