// SPDX-License-Identifier: MIT
#include "stockbook/plot/plot_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/date.h"

namespace stockbook::app {
namespace {

// In pixels of a plain display.
constexpr double kPlotTextHeight = 9;
constexpr double kPlotLeftMargin = 84;    // the numbers of the marks
constexpr double kPlotRightMargin = 44;   // half of the last day
constexpr double kPlotTopMargin = 34;     // the title and a caption
constexpr double kPlotBottomMargin = 26;  // the days
constexpr double kBetweenPanes = 30;
constexpr double kLeastPane = 40;
constexpr double kDayWidth = 90;  // of the text of a day, with room beside it

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
  // The topmost line does not run into the caption of the period.
  frame.high = std::ceil(numbers.most / frame.step + 0.3) * frame.step;
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

}  // namespace

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
  // The last pane has no gap below it; the days are there.
  const double down = page.height - (kPlotTopMargin + kPlotBottomMargin) * page.scale;
  const std::vector<PlotPane> panes = PanesFor(plot, down, page.scale);
  const auto count = static_cast<double>(panes.size());
  const double room = down - kBetweenPanes * (count - 1) * page.scale;
  const double height = room / count;
  if (width < kLeastPane * page.scale || height < kLeastPane * page.scale) return layout;
  layout.day_step = DayStep(plot.to - plot.from, width / page.scale);
  double top = kPlotTopMargin * page.scale;
  for (const PlotPane pane : panes) {
    PlotFrame frame;
    frame.pane = pane;
    frame.left = kPlotLeftMargin * page.scale;
    frame.right = frame.left + width;
    frame.top = top;
    frame.bottom = top + height;
    ScaleFrame(NumbersOf(plot, pane), page.scale, frame);
    layout.frames.push_back(frame);
    top = frame.bottom + kBetweenPanes * page.scale;
  }
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
