// SPDX-License-Identifier: MIT
#include "stockbook/command/print_command.h"

#include <QPageLayout>
#include <array>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/journal_check.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/paper/journal_paper.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/main_window.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(Writes a journal as PDF, page by page as it is printed. It needs no display.

Usage: stockbook print DB JOURNAL [--paper SIZE] [--portrait] [--pages-wide N] [--no-carry] [--collapse] -o PDF

  DB              the inventory
  --paper SIZE    a3, a4, a5 or letter (a4)
  --portrait      the page upright; otherwise it lies on its side
  --pages-wide N  spread the columns over up to N pages, 1 to 10, and repeat the bill on each; otherwise they are made
                  to fit the width of one
  --no-carry      without the lines 承前页 (brought forward) and 过次页 (carried forward)
  --collapse      close all periods
  -o PDF          the file, - for standard output; an existing one is replaced when all has gone well, but
                  never a database

)";

constexpr std::array<Option, 6> kOptions{{
    {"paper", OptionKind::Value},
    {"portrait", OptionKind::Flag},
    {"pages-wide", OptionKind::Value},
    {"no-carry", OptionKind::Flag},
    {"collapse", OptionKind::Flag},
    {"output", OptionKind::Value, 'o'},
}};

constexpr std::array<std::string_view, 4> kPapers{"a3", "a4", "a5", "letter"};

QPageSize::PageSizeId PaperOf(const CommandLine& line) {
  const std::string paper = line.Choice("paper", kPapers).value_or("a4");
  if (paper == "a3") return QPageSize::A3;
  if (paper == "a5") return QPageSize::A5;
  return paper == "letter" ? QPageSize::Letter : QPageSize::A4;
}

PaperChoice ChoiceOf(const CommandLine& line) {
  PaperChoice choice;
  choice.page.setPageSize(QPageSize(PaperOf(line)));
  choice.page.setOrientation(line.Has("portrait") ? QPageLayout::Portrait : QPageLayout::Landscape);
  choice.pages_wide = static_cast<int>(line.Integer("pages-wide", 1, PaperChoice::kMostPagesWide).value_or(1));
  if (line.Has("no-carry")) choice.carrying = Carrying::kNotTold;
  return choice;
}

void WriteJournal(qt::StockbookWidget& journal, const PaperChoice& choice, const std::string& source,
                  std::ostream& out) {
  control::Stockbook& control = journal.control();
  const auto aside = control.SetHotRowAside();
  const JournalHeading heading = HeadingOf(journal.sheet(), control.JournalType(), control.Caption(), source);
  // A stream that takes no more is told of when it is closed.
  qt::WritePdf(journal.sheet(), DocumentFor(journal.sheet(), choice, heading), out);
}

int RunPrint(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "print", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const PaperChoice choice = ChoiceOf(line);
  const std::string target = line.Required("output", "-o PDF, the file to write");
  CheckOutput(target, source.file(), Replaces::kNoInventory);
  OutputFile output(target, terminal.out);

  const GuiSession session(GuiNeed::kPicture);
  MainWindow window;
  const std::string name = source.name();
  window.OpenDatabase(std::move(source), AskOnTerminal());
  const LoadReport report = window.LoadJournal(options);
  if (!report.loaded) throw platform::Error("print", LoadError(report));
  Warn("print", LoadProblems(report), terminal);
  CheckSubject(window.stockbook().control(), options.key_id, name);
  if (line.Has("collapse")) window.stockbook().sheet().CollapseAll();
  WriteJournal(window.stockbook(), choice, name, output.stream());
  output.Commit();
  return kExitDone;
}

}  // namespace

Command PrintCommand() { return {"print", "Write a journal as PDF", JournalCommandUsage(kUsage), RunPrint}; }

}  // namespace stockbook::app
