// SPDX-License-Identifier: MIT
#include "stockbook/command/sql_command.h"

#include <array>
#include <ostream>

#include "journal/opening_balance.h"
#include "journal/periods.h"
#include "journal/query_builder.h"
#include "journal/subjects.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/inventory/database_source.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(Prints the statement of a journal, a line "--", and the statement of its opening balance, as they are sent.

Usage: stockbook sql DB JOURNAL [--dialect desktop|server]

  DB               the inventory
  --dialect NAME   the language of the statements: desktop (as usual) or server; a connection string says it itself

)";

constexpr std::array<Option, 1> kOptions{{{"dialect", OptionKind::Value}}};
constexpr std::array<std::string_view, 2> kDialects{"desktop", "server"};

// Completes the keys as a load does: a missing class code is that of the second key.
journal::SubjectKeys KeysOf(const JournalOptions& options, platform::Connection& connection,
                            base::tqJournalTypeContants type) {
  journal::SubjectKeys keys{options.key_id, static_cast<int16_t>(options.dp_id), options.dp_code};
  journal::Subjects(&connection, type).CompleteClassCode(keys);
  return keys;
}

int RunSql(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  const std::string argument = line.Positional(0, "DB, the inventory");
  DatabaseSource source = ReadSource(line, argument, "sql", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  if (!options.range.IsAll())
    throw UsageError(
        "The command sql takes no --from and no --to, since its statements are those of the whole journal; leave them "
        "out.");
  const bool server = line.Choice("dialect", kDialects).value_or("desktop") == "server";
  if (line.Has("dialect") && DatabaseSource::IsConnectionString(argument))
    throw UsageError(
        "The option --dialect is for files: a connection string with SQL in it, as in 'Dialect=SQL', means the "
        "server dialect, any other the desktop one; leave the option out.");
  const auto connection = OpenInventory(source, server ? SqlDialect::kServer : SqlDialect::kDesktop, AskOnTerminal());
  const auto type = static_cast<base::tqJournalTypeContants>(options.journal_type);
  const journal::SubjectKeys keys = KeysOf(options, *connection, type);
  // Both or none: without periods there is no balance statement.
  const std::string statement = journal::QueryBuilder(connection.get(), type, keys).Build();
  const std::string balance =
      journal::BuildBalanceStatement(connection.get(), type, keys, journal::EarliestAccPeriod(connection.get()));
  terminal.out << statement << "\n--\n" << balance << "\n";
  return kExitDone;
}

}  // namespace

Command SqlCommand() {
  return {"sql", "Print the statements of a journal as they are sent", WholeJournalCommandUsage(kUsage), RunSql};
}

}  // namespace stockbook::app
