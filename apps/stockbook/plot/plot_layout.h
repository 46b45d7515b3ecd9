// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "stockbook/plot/journal_plot.h"

namespace stockbook::app {

// The picture that a plot is drawn into: its size in pixels, how many of them make one of a plain display, and whether
// the title is drawn, for which a window has a place of its own.
struct PlotPage {
  int width = 0;
  int height = 0;
  double scale = 1;
  bool is_titled = true;
};

enum class PlotPane { kQuantity, kPrice, kMovements };

// One of the plots above each other: its frame in pixels from the top left corner, and the numbers at its lower and
// upper edge, with a round step between the marks.
struct PlotFrame {
  PlotPane pane = PlotPane::kQuantity;
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
  double low = 0;
  double high = 1;
  double step = 1;

  double YOf(double number) const { return bottom - (number - low) / (high - low) * (bottom - top); }
  double NumberAt(double y) const { return low + (bottom - y) / (bottom - top) * (high - low); }
};

// Where everything of a plot is on its page. No panes where there is nothing to draw, or no room for it.
struct PlotLayout {
  double from = 0;  // the days at the left and the right edge of all panes
  double to = 1;
  double day_step = 1;  // between the marks of days
  double text_height = 0;
  // The middle of the line of texts below the days, where periods are named; nothing where none has room for its name.
  std::optional<double> period_line;
  std::vector<PlotFrame> frames;

  double XOf(double day) const;
  // Whether the period's name fits between its days.
  bool HasRoomFor(const PlotBand& band) const;
  // The day at a point of the page, nothing outside all panes.
  std::optional<double> DayAt(double x, double y) const;
  // The pane that a point is in, or nullptr.
  const PlotFrame* FrameAt(double x, double y) const;
};

PlotLayout LayOutPlot(const JournalPlot& plot, const PlotPage& page);

// A number beside an axis as it is read in the journal, with the decimals that marks so far apart need: 1,200,000 or
// 0.25.
std::string PlotNumberText(double number, double step);
// The day at a distance from the day at the left edge: 2025-02-06.
std::string PlotDayText(double from, double distance);

}  // namespace stockbook::app
