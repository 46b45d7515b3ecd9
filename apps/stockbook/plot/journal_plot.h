// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace stockbook::app {

// What is in stock from a moment on; days count from the zero date of base::Date.
struct PlotStep {
  double day = 0;
  double quantity = 0;
  double price = 0;

  bool operator==(const PlotStep&) const = default;
};

// The days [from, to) of an accounting period.
struct PlotBand {
  double from = 0;
  double to = 0;
  std::string caption;

  bool operator==(const PlotBand&) const = default;
};

// What came in and went out in the days [from, to).
struct PlotBar {
  double from = 0;
  double to = 0;
  double in = 0;
  double out = 0;

  bool operator==(const PlotBar&) const = default;
};

// A journal over time, ready to be drawn: what is in stock as steps, the periods as bands, receipts and issues as bars.
// The steps are as many as can be told apart, however long the journal is. A plain value.
struct JournalPlot {
  double from = 0;  // the days [from, to) that the plot covers
  double to = 0;
  std::vector<PlotStep> steps;
  std::vector<PlotBand> bands;
  std::vector<PlotBar> bars;
  bool has_price = true;  // false where amounts are hidden
  std::string title;
  std::string quantity_caption;
  std::string price_caption;
  std::string movements_caption;

  bool IsEmpty() const { return steps.empty(); }
};

}  // namespace stockbook::app
