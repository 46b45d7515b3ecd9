// SPDX-License-Identifier: MIT
#include "sheet/paint/cell_tip.h"

#include "sheet/paint/cell_layout.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

CellTip CellTip::At(const View& view, TextMeasure& measure, Point point) {
  const Geometry geometry = view.geometry();
  const CellPosition at = geometry.CellAt(point);
  if (at.row < 0 || at.column < 0) return {};
  const Snapshot snapshot = Snapshot::Of(view, {point.x, point.y, 1, 1});
  const CellLayout layout(snapshot, measure);
  for (const SnapshotPane& pane : snapshot.panes()) {
    if (pane.rows.size() != 1 || pane.columns.size() != 1 || !pane.area.Contains(point)) continue;
    if (!layout.IsCut(pane.At(0, 0), layout.ContentRect(pane, 0, 0), pane.whole)) return {};
    return {view.sheet().DisplayText(at.row, at.column), geometry.VisibleCellRect(at.row, at.column)};
  }
  return {};
}

}  // namespace stockbook::sheet
