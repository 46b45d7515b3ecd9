// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include "sheet/geometry/geometry.h"
#include "sheet/paint/snapshot.h"
#include "sheet/sheet.h"

namespace stockbook::sheet {

// Fills one Snapshot from a sheet; lives for that only.
class SnapshotBuilder {
 public:
  SnapshotBuilder(const Sheet& sheet, const Rect& area, Highlights highlights);
  Snapshot Build();

 private:
  // Longer texts are cut: nobody's screen shows more of a cell.
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

  const Sheet& sheet_;
  Geometry geometry_;
  Highlights highlights_;
  Snapshot snapshot_;
};

}  // namespace stockbook::sheet
