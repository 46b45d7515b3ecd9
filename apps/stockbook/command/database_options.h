// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "stockbook/command/command_line.h"
#include "stockbook/command/command_line_dispatch.h"
#include "stockbook/inventory/database_source.h"

namespace stockbook::app {

// Where the password of a database may come from beside its connection string.
struct PasswordPlaces {
  std::string_view option = "password-file";  // names a file with the password
  const char* variable = "STOCKBOOK_PASSWORD";
};

inline constexpr Option kPasswordFileOption{"password-file", OptionKind::Value};

// The lines of a command's help that explain DB.
std::string_view DatabaseUsage();

// The database that an argument names, with the password of its place if it takes one. Says on `err` that a password in
// an argument can be seen by others. Throws UsageError for a password in two places, or for a database without any.
DatabaseSource ReadSource(const CommandLine& line, const std::string& argument, std::string_view command,
                          Terminal& terminal, const PasswordPlaces& places = {});

// The one line of a file that nobody but its owner may read. Throws platform::Error.
std::string ReadPasswordFile(const std::string& path);

// Asks on the terminal, without showing what is typed. Does nothing if standard input is none.
AskPassword AskOnTerminal();

}  // namespace stockbook::app
