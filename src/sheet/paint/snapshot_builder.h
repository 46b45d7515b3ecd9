// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "sheet/geometry/geometry.h"
#include "sheet/paint/snapshot.h"
#include "sheet/view/view.h"

namespace stockbook::sheet {

// Whether a snapshot shows the selection, the current cell and the drop mark.
enum class Highlights { kShown, kLeftOut };

// Fills a Snapshot from a view of a sheet.
class SnapshotBuilder {
 public:
  SnapshotBuilder(const View& view, const Appearance& looks, const Rect& area, Highlights highlights);
  Snapshot Build();

 private:
  // Longer texts are cut; no screen shows more of a cell.
  static constexpr size_t kMostTextBytes = 4096;

  void AddPane(Span rows, Span columns, const Rect& pane);
  std::vector<SnapshotRow> RowsOf(Span rows) const;
  std::vector<SnapshotColumn> ColumnsOf(Span columns) const;
  void FillRow(SnapshotPane& pane, const SnapshotRow& row);
  SnapshotCell CellOf(const SnapshotRow& row, const SheetColumn& column, RowId id);
  void AddText(const SnapshotRow& row, const SheetColumn& column, RowId id, SnapshotCell& cell);
  void AddColours(const SnapshotRow& row, int column, const CellStyle& style, SnapshotCell& cell) const;
  uint16_t FontIndex(std::string_view name);
  int DropEdge(int column) const;
  void AddCurrentCell();

  const View& view_;
  const Sheet& sheet_;
  Geometry geometry_;
  Highlights highlights_;
  Snapshot snapshot_;
};

}  // namespace stockbook::sheet
