// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/plot/journal_plot.h"
#include "stockbook/plot/plot_drawing.h"

namespace stockbook::app {

// What the plotting library does, where the program is built with it.

// Whether the library finds its driver for cairo.
bool HasPlotDriver();

// 0xRRGGBB.
unsigned PlotPaperShade(PlotLook look);

// Draws one plot, all but its paper, into a context of cairo (cairo_t). Throws platform::Error if the library refuses.
void PenPlot(const JournalPlot& plot, const PlotPage& page, PlotLook look, void* context);

}  // namespace stockbook::app
