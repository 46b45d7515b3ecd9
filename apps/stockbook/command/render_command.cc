// SPDX-License-Identifier: MIT
#include "stockbook/command/render_command.h"

#include <QBuffer>
#include <QImage>
#include <QLayout>
#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <new>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

#include "base/number.h"
#include "stockbook/command/database_options.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/journal_check.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/main_window.h"
#include "stockbook/window/window_colours.h"

namespace stockbook::app {
namespace {

constexpr std::string_view kUsage =
    R"(Writes the picture of the window with a journal in it, as PNG. It needs no display.

Usage: stockbook render DB JOURNAL [--size WxH] [--scale S] [--top-row N] [--collapse] [--dark] -o PNG

  DB            the inventory
  --size WxH    size of the window in pixels of a plain display (1280x800)
  --scale S     pixels of the picture for each of those, 1 to 4 (1)
  --top-row N   the grid row to stand on top of the scrolling part
  --collapse    close all periods
  --dark        as on a dark desktop
  -o PNG        the picture, - for standard output; an existing file is replaced when all has gone well,
                but never a database

)";

constexpr std::array<Option, 6> kOptions{{
    {"size", OptionKind::Value},
    {"scale", OptionKind::Value},
    {"top-row", OptionKind::Value},
    {"collapse", OptionKind::Flag},
    {"dark", OptionKind::Flag},
    {"output", OptionKind::Value, 'o'},
}};

constexpr int kMostSide = 16384;  // of the picture, in device pixels
constexpr int kLeastSide = 64;    // of the window, in logical pixels
constexpr QSize kUsualSize(1280, 800);

std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

double ScaleOf(const CommandLine& line) {
  const auto text = line.Value("scale");
  if (!text) return 1.0;
  const auto scale = base::ParseNumber(*text);
  if (!scale || *scale < 1 || *scale > 4) {
    throw UsageError("The option --scale needs a number from 1 to 4, not '" + *text + "'.");
  }
  return *scale;
}

QSize SizeOf(const CommandLine& line, double scale) {
  const std::string text = line.Value("size").value_or("");
  if (text.empty() && !line.Has("size")) return kUsualSize;
  const size_t cross = text.find('x');
  const auto width = WholeNumber(std::string_view(text).substr(0, cross));
  const auto height = cross == std::string::npos ? std::nullopt : WholeNumber(std::string_view(text).substr(cross + 1));
  const auto fits = [&](int side) { return side >= kLeastSide && side * scale <= kMostSide; };
  if (!width || !height || !fits(*width) || !fits(*height)) {
    throw UsageError("The option --size needs WIDTHxHEIGHT, each from " + std::to_string(kLeastSide) + " to " +
                     std::to_string(static_cast<int>(kMostSide / scale)) + ", not '" + text + "'.");
  }
  return {*width, *height};
}

QImage PictureOf(MainWindow& window, double scale) {
  QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
  if (image.isNull()) throw std::bad_alloc();
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  window.render(&image);
  return image;
}

void WritePng(const QImage& image, std::ostream& out) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) throw platform::Error("render", "The picture could not be made as PNG.");
  out.write(bytes.constData(), bytes.size());
}

int RunRender(const std::vector<std::string>& arguments, Terminal& terminal) {
  const CommandLine line = ReadJournalCommand(arguments, kOptions);
  DatabaseSource source = ReadSource(line, line.Positional(0, "DB, the inventory"), "render", terminal);
  const JournalOptions options = RequireJournalOptions(line);
  const double scale = ScaleOf(line);
  const QSize size = SizeOf(line, scale);
  const auto top_row = line.Integer("top-row", 0, std::numeric_limits<int>::max());
  const std::string target = line.Required("output", "-o PNG, the picture to write");
  CheckOutput(target, source.file(), Replaces::kNoInventory);
  OutputFile output(target, terminal.out);

  const GuiSession session(GuiNeed::kPicture, scale);
  if (line.Has("dark")) QApplication::setPalette(DarkPalette());
  MainWindow window;
  const std::string name = source.name();
  window.OpenDatabase(std::move(source), AskOnTerminal());
  // The requested size, even if it is too narrow for the bar.
  window.layout()->setSizeConstraint(QLayout::SetNoConstraint);
  window.setMinimumSize(1, 1);
  window.resize(size);
  window.show();
  const LoadReport report = window.LoadJournal(options);
  if (!report.loaded) throw platform::Error("render", LoadError(report));
  Warn("render", LoadProblems(report), terminal);
  CheckSubject(window.stockbook().control(), options.key_id, name);
  sheet::GridSheet& sheet = window.stockbook().sheet();
  if (line.Has("collapse")) sheet.CollapseAll();
  if (top_row) sheet.SetTopRow(std::min(static_cast<int>(*top_row), sheet.Rows() - 1));
  // Let the window settle: scroll bars appear and disappear.
  QApplication::processEvents();
  WritePng(PictureOf(window, scale), output.stream());
  output.Commit();
  return kExitDone;
}

}  // namespace

Command RenderCommand() {
  return {"render", "Write the window's picture, without a display", JournalCommandUsage(kUsage), RunRender};
}

}  // namespace stockbook::app
