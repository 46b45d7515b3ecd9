// SPDX-License-Identifier: MIT
#include "stockbook/command/command_line_dispatch.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <istream>
#include <new>
#include <ostream>

#include "base/text.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/program_version.h"
#include "stockbook/inventory/database_source.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kOpen = "open";

const Command* FindCommand(std::span<const Command> commands, std::string_view name) {
  const auto found =
      std::find_if(commands.begin(), commands.end(), [&](const Command& command) { return command.name == name; });
  return found == commands.end() ? nullptr : &*found;
}

bool IsVersion(std::string_view argument) { return argument == "--version" || argument == "-V"; }
bool IsHelp(std::string_view argument) { return argument == "--help" || argument == "-h"; }

// Whether the user asks for help by --help anywhere before a "--".
bool AsksForHelp(std::span<const std::string> arguments) {
  const auto end = std::find(arguments.begin(), arguments.end(), "--");
  return std::any_of(arguments.begin(), end, IsHelp);
}

bool MeansOpen(std::string_view argument) {
  if (argument.starts_with("-") || DatabaseSource::IsConnectionString(argument)) return true;
  for (const std::string_view ending : {".db", ".mdb", ".accdb"}) {
    if (argument.ends_with(ending)) return true;
  }
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::path(argument), ignored);
}

void PrintOverview(std::span<const Command> commands, std::ostream& out) {
  out << "Stockbook shows the stock journals of an inventory: every receipt and issue with the running stock.\n\n"
         "Usage: stockbook [COMMAND] [ARGUMENTS]\n\nCommands:\n";
  for (const Command& command : commands) {
    out << "  " << std::left << std::setw(8) << command.name << "  " << command.summary << "\n";
  }
  out << "\n'stockbook COMMAND --help' explains a command, 'stockbook --version' names the version. Without a command "
         "word it is 'open'.\n";
}

int RunCommand(const Command& command, const std::vector<std::string>& arguments, Terminal& terminal) {
  const std::string name = "stockbook " + std::string(command.name);
  if (AsksForHelp(arguments)) {
    terminal.out << command.usage;
    if (!command.usage.ends_with('\n')) terminal.out << '\n';
    return kExitDone;
  }
  try {
    return command.run(arguments, terminal);
  } catch (const UsageError& error) {
    terminal.err << name << ": " << OneLine(error.what()) << " See '" << name << " --help'.\n";
    return kExitUsage;
  } catch (const std::bad_alloc&) {
    terminal.err << name << ": There is not enough memory for this; close other programs or take less data.\n";
  } catch (const std::exception& error) {
    terminal.err << name << ": " << OneLine(error.what()) << "\n";
  }
  return kExitFailed;
}

}  // namespace

void Warn(std::string_view command, std::span<const std::string> messages, Terminal& terminal) {
  for (const std::string& message : messages)
    terminal.err << "stockbook " << command << ": " << OneLine(message) << "\n";
}

std::string OneLine(std::string_view text) {
  std::string line = base::CleanUtf8(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return line;
}

int RunProgram(std::span<const Command> commands, const std::vector<std::string>& arguments, Terminal& terminal) {
  if (!arguments.empty() && (IsHelp(arguments.front()) || arguments.front() == "help")) {
    PrintOverview(commands, terminal.out);
    return kExitDone;
  }
  if (!arguments.empty() && IsVersion(arguments.front())) {
    terminal.out << "stockbook " << ProgramVersion() << "\n";
    return kExitDone;
  }
  const Command* command = arguments.empty() ? nullptr : FindCommand(commands, arguments.front());
  if (command != nullptr) return RunCommand(*command, {arguments.begin() + 1, arguments.end()}, terminal);
  const Command* open = FindCommand(commands, kOpen);
  if (open != nullptr && (arguments.empty() || MeansOpen(arguments.front())))
    return RunCommand(*open, arguments, terminal);
  if (arguments.empty()) {
    PrintOverview(commands, terminal.err);
    return kExitUsage;
  }
  terminal.err << "stockbook: There is no command and no file '" << OneLine(arguments.front())
               << "'. 'stockbook --help' lists the commands.\n";
  return kExitUsage;
}

}  // namespace stockbook::app
