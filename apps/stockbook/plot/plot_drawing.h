// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>

#include "stockbook/plot/journal_plot.h"
#include "stockbook/plot/plot_layout.h"

namespace stockbook::app {

enum class PlotFormat { kPng, kPdf, kSvg };

// For a light or a dark desktop; paper is always light.
enum class PlotLook { kLight, kDark };

// Whether this program was built with the library that draws plots, and the library has what it needs to draw.
bool CanDrawPlots();

// Why it cannot: one sentence for the user, empty if it can.
const char* WhyNoPlots();

// The plot as a picture of the page's size. Null where plots cannot be drawn or there is no memory for the picture.
QImage PlotPicture(const JournalPlot& plot, const PlotPage& page, PlotLook look);

// A whole file with the plot. Lines and texts of a PDF or an SVG stay lines and texts. Throws platform::Error where it
// cannot be made.
QByteArray PlotFile(const JournalPlot& plot, const PlotPage& page, PlotFormat format);

}  // namespace stockbook::app
