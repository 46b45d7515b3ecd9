// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "stockbook/platform/grid.h"
#include "stockbook/plot/journal_plot.h"
#include "stockbook/range/range_view.h"

namespace stockbook::app {

// What the view shows of a loaded journal, over time. Bars are of days, or of periods where the days are too many. Of a
// long journal the steps are thinned out so that every rise and fall that can be seen is kept. Empty where no shown
// line has a date. A few passes over the columns.
JournalPlot PlotOf(const platform::Grid& grid, const RangeView& view, const std::string& title);

// Where a line is in the plot.
PlotStep PlotStepOf(const platform::Grid& grid, size_t record);

// The shown line that a point of the plot belongs to: of the last day with lines up to `day` the one whose stock is
// nearest to `quantity`, its last one without it; the first line of all before that. Nothing if no line is shown.
std::optional<size_t> RecordAt(const platform::Grid& grid, const RangeView& view, double day,
                               std::optional<double> quantity);

}  // namespace stockbook::app
