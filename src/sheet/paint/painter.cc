// SPDX-License-Identifier: MIT
#include "sheet/paint/painter.h"

#include "sheet/paint/batches.h"
#include "sheet/paint/cell_layout.h"
#include "sheet/paint/tree_painter.h"

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

// Adds the grid lines of the pane: one rectangle a row and one a column. Inset and raised lines have a light line
// beside the dark one.
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

// Pops its clip when destroyed.
class Clip {
 public:
  Clip(Canvas& canvas, const Rect& rect) : canvas_(canvas) { canvas_.PushClip(rect); }
  ~Clip() { canvas_.PopClip(); }
  Clip(const Clip&) = delete;
  Clip& operator=(const Clip&) = delete;

 private:
  Canvas& canvas_;
};

class Painter {
 public:
  Painter(const Snapshot& snapshot, Canvas& canvas) : snapshot_(snapshot), canvas_(canvas), layout_(snapshot, canvas) {}

  void Paint() {
    if (snapshot_.area().IsEmpty()) return;
    const Clip clip(canvas_, snapshot_.area());
    PaintBackground();
    for (const SnapshotPane& pane : snapshot_.panes()) PaintPane(pane);
    PaintEdges();
    PaintCurrentCell();
  }

 private:
  // The areas to the right of and below the cells.
  void PaintBackground() {
    const Rect& area = snapshot_.area();
    const Rect cells = snapshot_.cells().Intersected(area);
    const Colour back = snapshot_.appearance().Of(GridColour::kBackColorBkg);
    if (cells.IsEmpty()) {
      batches_.Fill(back, area);
    } else {
      batches_.Fill(back, {cells.right(), area.y, area.right() - cells.right(), area.height});
      batches_.Fill(back, {area.x, cells.bottom(), cells.right() - area.x, area.bottom() - cells.bottom()});
    }
    batches_.DrawFills(canvas_);
  }

  void PaintPane(const SnapshotPane& pane) {
    const Clip clip(canvas_, pane.area);
    FillCells(pane);
    for (size_t row = 0; row < pane.rows.size(); ++row) {
      for (size_t column = 0; column < pane.columns.size(); ++column) PlaceContents(pane, row, column);
    }
    batches_.Draw(canvas_, snapshot_.fonts());
    AddGridLines(snapshot_.appearance(), layout_.metrics(), pane, batches_);
    for (size_t column = 0; column < pane.columns.size(); ++column) {
      if (layout_.HasTree(pane, column)) AddTree(snapshot_.appearance(), layout_.metrics(), pane, column, batches_);
    }
    batches_.Draw(canvas_, snapshot_.fonts());
  }

  // One rectangle for all cells, then one for each stretch of cells in another colour.
  void FillCells(const SnapshotPane& pane) {
    batches_.Fill(pane.back, pane.cells.Intersected(pane.area));
    batches_.DrawFills(canvas_);
    for (size_t row = 0; row < pane.rows.size(); ++row) {
      for (size_t first = 0; first < pane.columns.size();) {
        const Colour back = pane.At(row, first).back;
        size_t last = first + 1;
        while (last < pane.columns.size() && pane.At(row, last).back == back) ++last;
        const Rect from = pane.CellRect(row, first);
        const Rect to = pane.CellRect(row, last - 1);
        if (back != pane.back)
          batches_.Fill(back, Rect{from.x, from.y, to.right() - from.x, from.height}.Intersected(pane.area));
        first = last;
      }
    }
    batches_.DrawFills(canvas_);
  }

  void PlaceContents(const SnapshotPane& pane, size_t row, size_t column) {
    const SnapshotCell& cell = pane.At(row, column);
    if (cell.text_size == 0 && cell.picture == nullptr) return;
    Rect content = layout_.ContentRect(pane, row, column);
    if (cell.picture != nullptr) batches_.pictures().push_back(layout_.PlacePicture(cell, content));
    if (cell.text_size != 0) layout_.PlaceText(cell, content, pane.whole, batches_);
  }

  void PaintEdges() {
    const Appearance& looks = snapshot_.appearance();
    const Rect& cells = snapshot_.cells();
    const int line = layout_.metrics().line;
    const Colour border = looks.Of(GridColour::kSheetBorder);
    if (!cells.IsEmpty()) {
      batches_.Fill(border, Rect{cells.right() - line, cells.y, line, cells.height}.Intersected(snapshot_.area()));
      batches_.Fill(border, Rect{cells.x, cells.bottom() - line, cells.width, line}.Intersected(snapshot_.area()));
    }
    if (snapshot_.frozen_edge() >= 0) {
      batches_.Fill(looks.accent,
                    Rect{snapshot_.frozen_edge() - line, 0, line, cells.height}.Intersected(snapshot_.area()));
    }
    if (snapshot_.drop_edge() >= 0) {
      batches_.Fill(looks.accent,
                    Rect{snapshot_.drop_edge() - line, 0, 3 * line, cells.height}.Intersected(snapshot_.area()));
    }
    batches_.DrawFills(canvas_);
  }

  void PaintCurrentCell() {
    const Rect& cell = snapshot_.current();
    if (cell.IsEmpty()) return;
    const Clip clip(canvas_, snapshot_.current_pane());
    const int side = 2 * layout_.metrics().line;
    const Appearance& looks = snapshot_.appearance();
    const Colour accent = snapshot_.focused() ? looks.accent : looks.Of(GridColour::kForeColorFixed);
    const int right = cell.right() - layout_.metrics().line;
    const int bottom = cell.bottom() - layout_.metrics().line;
    // If a cell is lower than its frame is thick, part of the frame is cut off at the edges of the cell.
    const Rect seen = snapshot_.current_pane().Intersected(snapshot_.area()).Intersected(cell);
    batches_.Fill(accent, Rect{cell.x, cell.y, right - cell.x, side}.Intersected(seen));
    batches_.Fill(accent, Rect{cell.x, bottom - side, right - cell.x, side}.Intersected(seen));
    batches_.Fill(accent, Rect{cell.x, cell.y, side, bottom - cell.y}.Intersected(seen));
    batches_.Fill(accent, Rect{right - side, cell.y, side, bottom - cell.y}.Intersected(seen));
    batches_.DrawFills(canvas_);
  }

  const Snapshot& snapshot_;
  Canvas& canvas_;
  CellLayout layout_;
  Batches batches_;
};

}  // namespace

void Paint(const Snapshot& snapshot, Canvas& canvas) { Painter(snapshot, canvas).Paint(); }

}  // namespace stockbook::sheet
