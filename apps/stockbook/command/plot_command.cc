// SPDX-License-Identifier: MIT
#include "stockbook/command/plot_command.h"

#include <array>
#include <charconv>
#include <optional>
#include <ostream>

#include "base/text.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/journal_check.h"
#include "stockbook/command/journal_options.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/command/plain_desk.h"
#include "stockbook/platform/error.h"
#include "stockbook/plot/plot_drawing.h"
#include "stockbook/plot/plot_series.h"
#include "stockbook/range/range_view.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(Draws a journal: quantity and average price over time, receipts and issues below. It needs no display.

Usage: stockbook plot DB JOURNAL [--size WxH] [--format png|pdf|svg] -o FILE

  DB             the inventory
  --size WxH     size in pixels of a plain display (1280x800)
  --format NAME  png, pdf or svg; as usual what the file's name ends in
  -o FILE        the picture, - for standard output; an existing file is replaced when all has gone well,
                 but never a database

)";

constexpr std::array<Option, 3> kOptions{{
    {"size", OptionKind::Value},
    {"format", OptionKind::Value},
    {"output", OptionKind::Value, 'o'},
}};
constexpr std::array<std::string_view, 3> kFormats{"png", "pdf", "svg"};

constexpr int kLeastWidth = 240;
constexpr int kLeastHeight = 240;
constexpr int kMostSide = 16384;

std::optional<int> SideOf(std::string_view text, int least) {
  int side = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
  if (error != std::errc() || end != text.data() + text.size() || side < least || side > kMostSide) return std::nullopt;
  return side;
}

PlotPage PageOf(const CommandLine& line) {
  const std::string text = line.Value("size").value_or("1280x800");
  const size_t cross = text.find('x');
  const auto width = SideOf(std::string_view(text).substr(0, cross), kLeastWidth);
  const auto height =
      cross == std::string::npos ? std::nullopt : SideOf(std::string_view(text).substr(cross + 1), kLeastHeight);
  if (!width || !height) {
    throw UsageError("The option --size needs width and height like 1280x800, each from 240 to 16384, not '" + text +
                     "'.");
  }
  return {*width, *height, 1};
}

PlotFormat FormatOf(const CommandLine& line, const std::string& target) {
  std::string name;
  if (const auto given = line.Choice("format", kFormats)) {
    name = *given;
  } else if (const size_t dot = target.rfind('.'); dot != std::string::npos) {
    name = base::AsciiLower(std::string_view(target).substr(dot + 1));
  }
  if (name == "png") return PlotFormat::kPng;
  if (name == "pdf") return PlotFormat::kPdf;
  if (name == "svg") return PlotFormat::kSvg;
  throw UsageError("The name '" + target +
                   "' does not say what picture is wanted; end it in .png, .pdf or .svg, or give --format.");
}

int RunPlot(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "plot", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const PlotPage page = PageOf(line);
  const std::string target = line.Required("output", "-o FILE, the picture to write");
  const PlotFormat format = FormatOf(line, target);
  CheckOutput(target, source.file(), Replaces::kNoInventory);
  if (!CanDrawPlots()) throw platform::Error("plot", WhyNoPlots());
  OutputFile output(target, terminal.out);

  PlainDesk desk;
  const LoadReport report =
      LoadJournal(desk.control(), OpenInventory(source, SqlDialect::kDesktop, AskOnTerminal()), options);
  if (!report.loaded) throw platform::Error("plot", LoadError(report));
  Warn("plot", LoadProblems(report), terminal);
  CheckSubject(desk.control(), options.key_id, source.name());
  RangeView view(desk.control());
  view.JournalLoaded();
  view.Show(options.range);
  const JournalPlot plot = PlotOf(desk.sheet(), view, desk.control().Caption());
  if (plot.IsEmpty()) throw platform::Error("plot", "没有可画的行：这个台账在所选区间内没有单据。");
  const QByteArray bytes = PlotFile(plot, page, format);
  output.stream().write(bytes.constData(), bytes.size());
  output.Commit();
  return kExitDone;
}

}  // namespace

Command PlotCommand() {
  return {"plot", "Draw a journal over time as PNG, PDF or SVG", JournalCommandUsage(kUsage), RunPlot};
}

}  // namespace stockbook::app
