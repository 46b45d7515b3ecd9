// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::app {

// The streams of a command. Owned by main or by a test.
struct Terminal {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

// One command of the program. `run` gets the arguments after the command word and returns the exit code. It throws
// UsageError for wrong arguments and any other exception for later errors.
struct Command {
  std::string_view name;
  std::string_view summary;
  std::string usage;
  int (*run)(const std::vector<std::string>& arguments, Terminal& terminal);
};

inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

// Runs the command named by the arguments and returns the exit code. The command is `open` if there are no arguments,
// or the first one is an option, an existing file, a connection string, or ends in ".db", ".mdb" or ".accdb". Every
// error is one line on `err`.
int RunProgram(std::span<const Command> commands, const std::vector<std::string>& arguments, Terminal& terminal);

// Tells what a command that goes on could not do, each in a line of its own.
void Warn(std::string_view command, std::span<const std::string> messages, Terminal& terminal);

// The text without line breaks and other control characters, so that a message stays on one line whatever it quotes.
std::string OneLine(std::string_view text);

}  // namespace stockbook::app
