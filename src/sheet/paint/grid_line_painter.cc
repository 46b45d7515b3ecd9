// SPDX-License-Identifier: MIT
#include "sheet/paint/grid_line_painter.h"

namespace stockbook::sheet {
namespace {

using platform::Colour;
using platform::GridColour;
using platform::GridLineStyle;

bool HasRowLines(GridLineStyle style) { return style != GridLineStyle::kNone && style != GridLineStyle::kFlatVert; }

bool HasColumnLines(GridLineStyle style) {
  return style == GridLineStyle::kFlat || style == GridLineStyle::kInset || style == GridLineStyle::kRaised ||
         style == GridLineStyle::kFlatVert;
}

bool IsInset(GridLineStyle style) { return style == GridLineStyle::kInset || style == GridLineStyle::kInsetHorz; }
bool IsRaised(GridLineStyle style) { return style == GridLineStyle::kRaised || style == GridLineStyle::kRaisedHorz; }

// The line at the end of a cell, and the one at its beginning, if the style has one.
struct LineColours {
  Colour end = 0;
  Colour begin = 0;
  bool has_begin = false;
};

LineColours ColoursOf(GridLineStyle style, Colour line, Colour light) {
  if (IsInset(style)) return {light, line, true};
  if (IsRaised(style)) return {line, light, true};
  return {line, line, false};
}

}  // namespace

void AddGridLines(const Appearance& appearance, const PaintMetrics& metrics, const SnapshotPane& pane,
                  Batches& batches) {
  const GridLineStyle style = pane.fixed ? appearance.grid_lines_fixed : appearance.grid_lines;
  const Colour line = appearance.Of(pane.fixed ? GridColour::kGridColorFixed : GridColour::kGridColor);
  const LineColours colours = ColoursOf(style, line, appearance.light);
  const Rect seen = pane.cells.Intersected(pane.area);
  const auto add = [&](Colour colour, const Rect& rect) { batches.Fill(colour, rect.Intersected(seen)); };
  if (HasRowLines(style)) {
    for (const SnapshotRow& row : pane.rows) {
      add(colours.end, {pane.cells.x, row.y + row.height - metrics.line, pane.cells.width, metrics.line});
      if (colours.has_begin) add(colours.begin, {pane.cells.x, row.y, pane.cells.width, metrics.line});
    }
  }
  if (HasColumnLines(style)) {
    for (const SnapshotColumn& column : pane.columns) {
      add(colours.end, {column.x + column.width - metrics.line, pane.cells.y, metrics.line, pane.cells.height});
      if (colours.has_begin) add(colours.begin, {column.x, pane.cells.y, metrics.line, pane.cells.height});
    }
  }
}

}  // namespace stockbook::sheet
