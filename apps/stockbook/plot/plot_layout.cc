// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "stockbook/base/date.h"

namespace stockbook::app {
namespace {

// In pixels of a plain display.
constexpr double kPlotTextHeight = 9;
constexpr double kPlotLeftMargin = 84;    // the numbers of the marks
constexpr double kPlotRightMargin = 44;   // half of the last day
constexpr double kPlotTopMargin = 18;     // a caption
constexpr double kPlotTitle = 16;         // the title above it
constexpr double kPlotBottomMargin = 26;  // the days
constexpr double kPlotPeriods = 16;       // the names of periods below them
constexpr double kBetweenPanes = 30;
constexpr double kLeastPane = 40;
constexpr double kLeastNamedPane = 34;  // where the names of periods take a little of it
constexpr double kDayWidth = 90;        // of the text of a day, with room beside it

constexpr double kMarkHeight = 12;
constexpr double kFewestMarks = 2;
constexpr double kMostMarks = 5;

struct PlotNumbers {
  double least = 0;
  double most = 0;
};

void IncludeNumber(double number, PlotNumbers& range) {
  if (!std::isfinite(number)) return;
  range.least = std::min(range.least, number);
  range.most = std::max(range.most, number);
}

// 1, 2 or 5 times a power of ten, at least `least`.
double RoundStep(double least) {
  if (!(least > 0) || !std::isfinite(least)) return 1;
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1 - 1e-9)) return factor * power;
  }
  return 10 * power;
}

PlotNumbers NumbersOf(const JournalPlot& plot, PlotPane pane) {
  PlotNumbers range;
  if (pane == PlotPane::kMovements) {
    for (const PlotBar& bar : plot.bars) {
      IncludeNumber(bar.in, range);
      IncludeNumber(-bar.out, range);
    }
  } else {
    // Zero belongs to quantities, which look as high as they are; prices differ by little.
    if (pane == PlotPane::kPrice) range = {plot.steps.back().price, plot.steps.back().price};
    for (const PlotStep& step : plot.steps)
      IncludeNumber(pane == PlotPane::kQuantity ? step.quantity : step.price, range);
  }
  return range;
}

void ScaleFrame(const PlotNumbers& numbers, double scale, PlotFrame& frame) {
  const double extent = numbers.most - numbers.least;
  const double marks = std::clamp((frame.bottom - frame.top) / (kMarkHeight * scale), kFewestMarks, kMostMarks);
  frame.step = RoundStep(extent / marks);
  if (!std::isfinite(extent)) return;
  if (extent <= 0) {
    frame.low = numbers.least - 1;
    frame.high = numbers.least + 1;
    return;
  }
  frame.low = std::floor(numbers.least / frame.step) * frame.step;
  // The topmost line does not run along the edge.
  frame.high = std::ceil(numbers.most / frame.step + 0.1) * frame.step;
}

// A whole number of days, so that days are written next to each other without touching.
double DayStep(double days, double width) {
  constexpr std::array kSteps{1.0, 2.0, 5.0, 7.0, 14.0, 30.0, 60.0, 90.0, 180.0, 365.0};
  const double least = days * kDayWidth / std::max(width, 1.0);
  for (const double step : kSteps) {
    if (step >= least) return step;
  }
  return std::ceil(least / kSteps.back()) * kSteps.back();
}

// From the first to the last; where there is little room some are left out, so that the others can be read.
std::vector<PlotPane> PanesFor(const JournalPlot& plot, double room, double scale) {
  std::vector<PlotPane> panes{PlotPane::kQuantity};
  const auto has_room = [&](double count) {
    return room >= (kLeastPane * count + kBetweenPanes * (count - 1)) * scale;
  };
  if (plot.has_price && has_room(3)) panes.push_back(PlotPane::kPrice);
  if (has_room(2)) panes.push_back(PlotPane::kMovements);
  return panes;
}

// About as wide as the text is drawn, with a little room, in text heights.
double WidthInTextHeights(const std::string& text) {
  constexpr double kEm = 1.45;  // of the height that the library counts in
  double ems = 0.5;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) ems += 0.62;
    if (byte >= 0xC0) ems += 1;
  }
  return ems * kEm;
}

// Panes below each other, of the same height.
void StackFrames(const JournalPlot& plot, const std::vector<PlotPane>& panes, const PlotFrame& first, double scale,
                 PlotLayout& layout) {
  const double height = first.bottom - first.top;
  double top = first.top;
  for (const PlotPane pane : panes) {
    PlotFrame frame = first;
    frame.pane = pane;
    frame.top = top;
    frame.bottom = top + height;
    ScaleFrame(NumbersOf(plot, pane), scale, frame);
    layout.frames.push_back(frame);
    top = frame.bottom + kBetweenPanes * scale;
  }
}

}  // namespace

bool PlotLayout::HasRoomFor(const PlotBand& band) const {
  return !band.caption.empty() && XOf(band.to) - XOf(band.from) >= WidthInTextHeights(band.caption) * text_height;
}

double PlotLayout::XOf(double day) const {
  if (frames.empty()) return 0;
  const PlotFrame& frame = frames.front();
  return frame.left + (day - from) / (to - from) * (frame.right - frame.left);
}

const PlotFrame* PlotLayout::FrameAt(double x, double y) const {
  const auto found = std::find_if(frames.begin(), frames.end(), [&](const PlotFrame& frame) {
    return x >= frame.left && x < frame.right && y >= frame.top && y < frame.bottom;
  });
  return found == frames.end() ? nullptr : &*found;
}

std::optional<double> PlotLayout::DayAt(double x, double y) const {
  const PlotFrame* frame = FrameAt(x, y);
  if (frame == nullptr) return std::nullopt;
  return from + (x - frame->left) / (frame->right - frame->left) * (to - from);
}

PlotLayout LayOutPlot(const JournalPlot& plot, const PlotPage& page) {
  PlotLayout layout;
  layout.text_height = kPlotTextHeight * page.scale;
  if (plot.IsEmpty() || !(plot.to > plot.from)) return layout;
  layout.from = plot.from;
  layout.to = plot.to;
  const double width = page.width - (kPlotLeftMargin + kPlotRightMargin) * page.scale;
  const double above = (kPlotTopMargin + (page.is_titled ? kPlotTitle : 0)) * page.scale;
  // The last pane has no gap below it; the days are there.
  const double down = page.height - above - kPlotBottomMargin * page.scale;
  if (width < kLeastPane * page.scale || down < kLeastPane * page.scale) return layout;
  PlotFrame first;
  first.left = kPlotLeftMargin * page.scale;
  first.right = first.left + width;
  first.top = above;
  layout.frames = {first};  // for the width of the periods
  const std::vector<PlotPane> panes = PanesFor(plot, down, page.scale);
  const bool names =
      std::any_of(plot.bands.begin(), plot.bands.end(), [&](const PlotBand& band) { return layout.HasRoomFor(band); });
  layout.frames.clear();
  // A pane tells more than the names of the periods.
  const double below = kPlotPeriods * page.scale;
  const auto count = static_cast<double>(panes.size());
  const bool has_line = names && down - below >= (kLeastNamedPane * count + kBetweenPanes * (count - 1)) * page.scale;
  if (has_line) layout.period_line = page.height - below / 2;
  const double room = down - (has_line ? below : 0) - kBetweenPanes * (count - 1) * page.scale;
  first.bottom = first.top + room / count;
  layout.day_step = DayStep(plot.to - plot.from, width / page.scale);
  StackFrames(plot, panes, first, page.scale, layout);
  return layout;
}

std::string PlotNumberText(double number, double step) {
  constexpr int kMostDecimals = 9;
  const double power = step > 0 && std::isfinite(step) ? std::floor(std::log10(step) + 1e-9) : 0;
  const int decimals = std::clamp(static_cast<int>(-power), 0, kMostDecimals);
  std::array<char, 400> digits{};  // the largest number has 309 of them
  const double shown = std::abs(number) < step * 1e-6 ? 0 : number;
  std::snprintf(digits.data(), digits.size(), "%.*f", decimals, shown);
  std::string text(digits.data());
  const size_t end = std::min(text.find('.'), text.size());
  const size_t begin = text.starts_with('-') ? 1 : 0;
  for (size_t at = end; at > begin + 3; at -= 3) text.insert(at - 3, ",");
  return text;
}

std::string PlotDayText(double from, double distance) {
  return base::Date::FromSeconds(std::llround(from + distance) * base::Date::kSecondsPerDay).Text();
}

}  // namespace stockbook::app
