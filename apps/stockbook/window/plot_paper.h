// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QString>

#include "stockbook/plot/journal_plot.h"

namespace stockbook::app {

// Prints the plot on one page. False if it cannot be drawn or the device does not take it.
bool PrintPlot(const JournalPlot& plot, QPagedPaintDevice& device);

// Writes the plot to a file whose ending says how: .png, .pdf or .svg; an existing file is replaced when all has gone
// well. Throws platform::Error, with a sentence for the user.
void SavePlot(const JournalPlot& plot, const QString& path);

}  // namespace stockbook::app
