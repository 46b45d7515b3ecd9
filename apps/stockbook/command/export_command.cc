// SPDX-License-Identifier: MIT
#include "stockbook/command/export_command.h"

#include <array>
#include <ostream>

#include "platform/error.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/command/plain_desk.h"
#include "stockbook/range/range_view.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage = R"(Writes the rows of a journal as the window shows them. It needs no display.

Usage: stockbook export DB JOURNAL [--format csv|tsv|ndjson] [--columns visible|all] [-o FILE]

  DB               the inventory
  --format NAME    csv (as usual) or tsv: captions, then shown texts; ndjson: one JSON object a line, the first one with
                   the caption, the columns and what the load said, then one a row with stored and shown texts
  --columns NAME   visible (as usual for csv and tsv) or all (as usual for ndjson)
  -o FILE          where to; - (as usual) for standard output; an existing file is replaced when all has gone well,
                   but never a database

In csv and tsv a text that a spreadsheet would take for a formula, because it begins with =, +, -, @, a tab or a carriage
return and is no number, has an apostrophe in front. The two sums of a total row are left as they are, unless both begin
with a sign: a spreadsheet would subtract the second one from the first.

)";

constexpr std::array<Option, 3> kOptions{{
    {"format", OptionKind::Value},
    {"columns", OptionKind::Value},
    {"output", OptionKind::Value, 'o'},
}};
constexpr std::array<std::string_view, 3> kFormats{"csv", "tsv", "ndjson"};
constexpr std::array<std::string_view, 2> kColumnChoices{"visible", "all"};

int RunExport(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "export", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const std::string format = line.Choice("format", kFormats).value_or("csv");
  const std::string usual_columns = format == "ndjson" ? "all" : "visible";
  const bool all = line.Choice("columns", kColumnChoices).value_or(usual_columns) == "all";
  const std::string target = line.Value("output").value_or("-");
  CheckOutput(target, source.file(), Replaces::kNoInventory);
  const auto columns = all ? ExportColumns::kAll : ExportColumns::kVisible;

  const auto load = [&](control::Stockbook& control) {
    LoadReport report = LoadJournal(control, OpenInventory(source, SqlDialect::kDesktop, AskOnTerminal()), options);
    if (!report.loaded) throw platform::Error("export", LoadError(report));
    Warn("export", LoadProblems(report), terminal);
    ShowRange(control, options.range);
    return report;
  };
  if (format == "ndjson") {
    // Heights of rows are those of the window.
    const GuiSession session(GuiNeed::kPicture);
    JournalDesk desk;
    const LoadReport report = load(desk.control());
    OutputFile output(target, terminal.out);
    WriteNdjson(desk.sheet(), columns, desk.control().Caption(), report, output.stream());
    output.Commit();
  } else {
    PlainDesk desk;
    load(desk.control());
    OutputFile output(target, terminal.out);
    WriteSeparated(desk.sheet(), columns, format == "tsv" ? '\t' : ',', output.stream());
    output.Commit();
  }
  return kExitDone;
}

}  // namespace

Command ExportCommand() {
  return {"export", "Write the rows of a journal as text", JournalCommandUsage(kUsage), RunExport};
}

}  // namespace stockbook::app
