// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/platform/text_metrics.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/store/appearance.h"

namespace stockbook::sheet {

class View;

struct SnapshotRow {
  int row = 0;
  int y = 0;
  int height = 0;
  int16_t level = 0;
  int16_t next_level = -1;  // of the next shown row; -1 after the last one
  bool node = false;
  bool collapsed = false;
  bool governs = false;  // a node with lines: it has a sign
};

struct SnapshotColumn {
  int column = 0;
  int x = 0;
  int width = 0;
};

struct SnapshotCell {
  uint32_t text_first = 0;
  uint32_t text_size = 0;
  platform::Colour back = 0;
  platform::Colour fore = 0;
  platform::Colour negative_fore = 0;  // of lines that are negative numbers
  uint16_t font = 0;
  platform::Alignment alignment = platform::Alignment::kLeftCenter;  // never kGeneral
  bool number = false;                                               // must not be cut off silently
  const platform::Picture* picture = nullptr;
  platform::PictureAlignment picture_alignment = platform::PictureAlignment::kLeftTop;
};

// One of the parts of the view that scroll independently, with its cells row by row.
struct SnapshotPane {
  Rect area;   // the visible part of the pane within the snapshot's area
  Rect whole;  // the visible part of the pane, whatever the snapshot's area
  Rect cells;  // of its rows and columns, including parts out of view
  bool fixed = false;
  platform::Colour back = 0;  // of most cells
  std::vector<SnapshotRow> rows;
  std::vector<SnapshotColumn> columns;
  std::vector<SnapshotCell> content;  // rows.size() x columns.size()

  const SnapshotCell& At(size_t row, size_t column) const { return content[row * columns.size() + column]; }
  Rect CellRect(size_t row, size_t column) const {
    return {columns[column].x, rows[row].y, columns[column].width, rows[row].height};
  }
};

// Everything that an area of a view shows: all that painting needs, copied at one moment and independent of the sheet
// afterwards. Costs O(visible cells), whatever the number of rows.
class STOCKBOOK_API Snapshot {
 public:
  // `area` is in device pixels of the view.
  static Snapshot Of(const View& view, const Rect& area);
  // With other looks than the sheet's.
  static Snapshot Of(const View& view, const Rect& area, const Appearance& looks);
  // Of the whole view.
  static Snapshot Of(const View& view);
  // With other looks and without selection, current cell and drop mark.
  static Snapshot OnPaper(const View& view, const Rect& area, const Appearance& looks);

  const Rect& area() const { return area_; }
  double scale() const { return scale_; }
  const Appearance& appearance() const { return appearance_; }
  const std::vector<SnapshotPane>& panes() const { return panes_; }
  // The part of the view that contains cells; the rest is background.
  const Rect& cells() const { return cells_; }
  // The current cell and its pane; empty if out of view.
  const Rect& current() const { return current_; }
  const Rect& current_pane() const { return current_pane_; }
  bool focused() const { return focused_; }
  // The right edge of the frozen columns, or -1.
  int frozen_edge() const { return frozen_edge_; }
  // The edge at which a column that is being moved would be dropped, or -1.
  int drop_edge() const { return drop_edge_; }
  // The column that contains the tree, or -1.
  int outline_column() const { return outline_column_; }
  const platform::Font& FontOf(const SnapshotCell& cell) const { return fonts_[cell.font]; }
  const std::vector<platform::Font>& fonts() const { return fonts_; }
  std::string_view TextOf(const SnapshotCell& cell) const {
    return std::string_view(texts_).substr(cell.text_first, cell.text_size);
  }

 private:
  friend class SnapshotBuilder;

  Rect area_;
  double scale_ = 1;
  Appearance appearance_;
  std::vector<SnapshotPane> panes_;
  Rect cells_;
  Rect current_;
  Rect current_pane_;
  bool focused_ = true;
  int frozen_edge_ = -1;
  int drop_edge_ = -1;
  int outline_column_ = -1;
  std::vector<platform::Font> fonts_;
  std::vector<platform::PictureRef> pictures_;  // keeps the cells' pictures alive
  std::string texts_;
};

}  // namespace stockbook::sheet
