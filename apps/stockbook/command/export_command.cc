// SPDX-License-Identifier: MIT
#include "stockbook/command/export_command.h"

#include <array>
#include <ostream>

#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/journal_check.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/command/plain_desk.h"
#include "stockbook/export/xlsx_writer.h"
#include "stockbook/platform/error.h"
#include "stockbook/range/range_view.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage = R"(Writes the rows of a journal as the window shows them. It needs no display.

Usage: stockbook export DB JOURNAL [--format csv|tsv|ndjson|xlsx] [--columns visible|all] [--bom] [--split-bill]
                        [-o FILE]

  DB               the inventory
  --format NAME    csv (as usual) or tsv: captions, then shown texts; ndjson: one JSON object a line, the first one with
                   the caption, the columns and what the load said, then one a row with stored and shown texts; xlsx: a
                   workbook with numbers, dates and the outline of the periods, the bill in parts, each total in two
                   rows, 本期 and 累计
  --columns NAME   visible (as usual) or all (as usual for ndjson)
  --bom            begin csv or tsv with a byte-order mark, which spreadsheet programs want for Chinese
  --split-bill     in csv and tsv, period, day, kind and number of the bill in columns of their own
  -o FILE          where to; - (as usual) for standard output; an existing file is replaced when all has gone well,
                   but never a database

In csv and tsv a text that a spreadsheet would take for a formula, because it begins with =, +, -, @, a tab or a carriage
return and is no number, has an apostrophe in front. The two sums of a total row are left as they are, unless both begin
with a sign: a spreadsheet would subtract the second one from the first.

)";

constexpr std::array<Option, 5> kOptions{{
    {"format", OptionKind::Value},
    {"bom", OptionKind::Flag},
    {"split-bill", OptionKind::Flag},
    {"columns", OptionKind::Value},
    {"output", OptionKind::Value, 'o'},
}};
constexpr std::array<std::string_view, 4> kFormats{"csv", "tsv", "ndjson", "xlsx"};
constexpr std::array<std::string_view, 2> kColumnChoices{"visible", "all"};

struct ExportPlan {
  std::string format;
  std::string target;
  ExportColumns columns = ExportColumns::kVisible;
  SeparatedOptions separated;  // csv and tsv
};

void RefuseFor(const CommandLine& line, std::string_view option, const std::string& format) {
  if (line.Has(option))
    throw UsageError("The option --" + std::string(option) + " is for csv and tsv, not for " + format + ".");
}

ExportPlan PlanOf(const CommandLine& line) {
  ExportPlan plan;
  plan.format = line.Choice("format", kFormats).value_or("csv");
  plan.target = line.Value("output").value_or("-");
  const std::string usual_columns = plan.format == "ndjson" ? "all" : "visible";
  const bool all = line.Choice("columns", kColumnChoices).value_or(usual_columns) == "all";
  plan.columns = all ? ExportColumns::kAll : ExportColumns::kVisible;
  const bool separated = plan.format == "csv" || plan.format == "tsv";
  if (!separated) RefuseFor(line, "bom", plan.format);
  if (!separated) RefuseFor(line, "split-bill", plan.format);
  if (plan.format == "xlsx" && !CanWriteXlsx())
    throw UsageError("This build cannot write workbooks, as libxlsxwriter was missing; give --format csv.");
  plan.separated.columns = plan.columns;
  plan.separated.separator = plan.format == "tsv" ? '\t' : ',';
  if (line.Has("bom")) plan.separated.mark = ByteOrderMark::kWritten;
  if (line.Has("split-bill")) plan.separated.bill = BillColumns::kApart;
  return plan;
}

// The same for the control of either desk. Says what a journal that cannot be loaded, or is empty, lacks.
LoadReport LoadForExport(control::Stockbook& control, DatabaseSource& source, const JournalOptions& options,
                         Terminal& terminal) {
  const auto connection = OpenInventory(source, SqlDialect::kDesktop, AskOnTerminal());
  LoadReport report = LoadJournal(control, connection, options);
  if (!report.loaded) {
    CheckTables(*connection, source.name());
    throw platform::Error("export", LoadError(report));
  }
  CheckSubject(control, options.key_id, source.name());
  Warn("export", LoadProblems(report), terminal);
  ShowRange(control, options.range);
  return report;
}

int RunExport(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "export", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const ExportPlan plan = PlanOf(line);
  CheckOutput(plan.target, source.file(), Replaces::kNoInventory);
  if (plan.format == "ndjson") {
    // Heights of rows are those of the window.
    const GuiSession session(GuiNeed::kPicture);
    JournalDesk desk;
    const LoadReport report = LoadForExport(desk.control(), source, options, terminal);
    OutputFile output(plan.target, terminal.out);
    WriteNdjson(desk.sheet(), plan.columns, desk.control().Caption(), report, output.stream());
    output.Commit();
    return kExitDone;
  }
  PlainDesk desk;
  LoadForExport(desk.control(), source, options, terminal);
  OutputFile output(plan.target, terminal.out);
  if (plan.format == "xlsx") {
    XlsxOptions workbook;
    workbook.title = desk.control().Caption();
    workbook.columns = plan.columns == ExportColumns::kAll ? ShownColumns::kAll : ShownColumns::kVisible;
    WriteXlsx(desk.sheet(), workbook, output.stream());
  } else {
    WriteSeparated(desk.sheet(), plan.separated, output.stream());
  }
  output.Commit();
  return kExitDone;
}

}  // namespace

Command ExportCommand() {
  return {"export", "Write the rows of a journal as text or workbook", JournalCommandUsage(kUsage), RunExport};
}

}  // namespace stockbook::app
