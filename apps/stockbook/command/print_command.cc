// SPDX-License-Identifier: MIT
#include "stockbook/command/print_command.h"

#include <QBuffer>
#include <QMarginsF>
#include <QPageLayout>
#include <QPdfWriter>
#include <array>
#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/error.h"
#include "sheet/grid_sheet.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/window/main_window.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(Writes a journal as PDF, page by page as it is printed. It needs no display.

Usage: stockbook print DB JOURNAL [--paper SIZE] [--portrait] [--collapse] -o PDF

  DB            the inventory
  --paper SIZE  a3, a4, a5 or letter (a4)
  --portrait    the page upright; otherwise it lies on its side
  --collapse    close all periods
  -o PDF        the file, - for standard output; an existing one is replaced when all has gone well, but
                never a database

)";

constexpr std::array<Option, 4> kOptions{{
    {"paper", OptionKind::Value},
    {"portrait", OptionKind::Flag},
    {"collapse", OptionKind::Flag},
    {"output", OptionKind::Value, 'o'},
}};

constexpr std::array<std::string_view, 4> kPapers{"a3", "a4", "a5", "letter"};
constexpr double kMarginMm = 12;

QPageSize::PageSizeId PaperOf(const CommandLine& line) {
  const std::string paper = line.Choice("paper", kPapers).value_or("a4");
  if (paper == "a3") return QPageSize::A3;
  if (paper == "a5") return QPageSize::A5;
  return paper == "letter" ? QPageSize::Letter : QPageSize::A4;
}

QByteArray PdfOf(qt::StockbookWidget& journal, const QPageLayout& page) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setPageLayout(page);
    writer.setTitle(QString::fromStdString(journal.control().Caption()));
    writer.setCreator(QStringLiteral("Stockbook"));
    if (!journal.Print(writer)) throw platform::Error("print", "The journal could not be made as PDF.");
  }
  return bytes;
}

int RunPrint(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "print", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const QPageLayout page(QPageSize(PaperOf(line)),
                         line.Has("portrait") ? QPageLayout::Portrait : QPageLayout::Landscape,
                         QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm), QPageLayout::Millimeter);
  const std::string target = line.Required("output", "-o PDF, the file to write");
  CheckOutput(target, source.file(), Replaces::kNoInventory);
  OutputFile output(target, terminal.out);

  const GuiSession session(GuiNeed::kPicture);
  MainWindow window;
  window.OpenDatabase(std::move(source), AskOnTerminal());
  const LoadReport report = window.LoadJournal(options);
  if (!report.loaded) throw platform::Error("print", LoadError(report));
  Warn("print", LoadProblems(report), terminal);
  if (line.Has("collapse")) window.stockbook().sheet().CollapseAll();
  const QByteArray pdf = PdfOf(window.stockbook(), page);
  output.stream().write(pdf.constData(), pdf.size());
  output.Commit();
  return kExitDone;
}

}  // namespace

Command PrintCommand() { return {"print", "Write a journal as PDF", JournalCommandUsage(kUsage), RunPrint}; }

}  // namespace stockbook::app
