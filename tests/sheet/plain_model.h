// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "sheet/store/sheet_column.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::sheet::test {

constexpr platform::Colour kNoColour = 0xFF000000;

struct ModelRow {
  int64_t record = -1;
  std::vector<std::string> texts;  // by column identity
  std::vector<platform::Colour> backs;
  int level = 0;
  bool node = false;
  bool collapsed = false;
  bool hidden = false;
  int height = -1;

  explicit ModelRow(size_t columns) : texts(columns), backs(columns, kNoColour) {}
};

struct ModelColumn {
  size_t identity = 0;
  bool hidden = false;
  int width = SheetColumn::kDefaultWidth;
};

// A sheet as lists of rows and columns that ignores cost: each answer is a loop that is obviously right. Every shown
// row and column takes at least a pixel.
struct PlainModel {
  std::vector<ModelRow> rows;
  std::vector<ModelColumn> columns;
  int fixed_rows = 1;
  int fixed_cols = 1;
  int frozen_cols = 0;
  int default_height = 300;
  float least_height = 0;
  float most_height = 0;
  Size view{960, 600};
  double scale = 1.0;

  int Rows() const { return static_cast<int>(rows.size()); }
  int Columns() const { return static_cast<int>(columns.size()); }
  const ModelRow& Row(int row) const { return rows[static_cast<size_t>(row)]; }
  ModelRow& Row(int row) { return rows[static_cast<size_t>(row)]; }
  const ModelColumn& Column(int column) const { return columns[static_cast<size_t>(column)]; }
  ModelColumn& Column(int column) { return columns[static_cast<size_t>(column)]; }
  std::string& Text(int row, int column) { return Row(row).texts[Column(column).identity]; }
  platform::Colour& Back(int row, int column) { return Row(row).backs[Column(column).identity]; }

  // A row is covered if a collapsed node precedes it and all rows in between are deeper than that node.
  bool Covered(int row) const {
    int deepest = Row(row).level;
    for (int at = row; at-- > 0;) {
      if (Row(at).node && Row(at).collapsed && Row(at).level < deepest) return true;
      deepest = std::min(deepest, Row(at).level);
    }
    return false;
  }
  bool Shown(int row) const { return !Row(row).hidden && !Covered(row); }

  int Height(int row) const {
    int height = Row(row).height < 0 ? default_height : Row(row).height;
    if (most_height > 0) height = std::min(height, static_cast<int>(most_height));
    return std::max(height, static_cast<int>(least_height));
  }
  int64_t Pixels(int twips) const { return twips == 0 ? 0 : std::max<int64_t>(1, std::llround(twips * scale / 15)); }
  int64_t HeightPx(int row) const { return Shown(row) ? Pixels(Height(row)) : 0; }
  int64_t WidthPx(int column) const { return Column(column).hidden ? 0 : Pixels(Column(column).width); }
  // The top of every row in the unscrolled contents, and the bottom of the last one.
  std::vector<int64_t> Tops() const {
    std::vector<int64_t> tops{0};
    for (int row = 0; row < Rows(); ++row) tops.push_back(tops.back() + HeightPx(row));
    return tops;
  }
  std::vector<int64_t> Lefts() const {
    std::vector<int64_t> lefts{0};
    for (int column = 0; column < Columns(); ++column) lefts.push_back(lefts.back() + WidthPx(column));
    return lefts;
  }
  int PinnedCols() const {
    return std::min(Columns(), frozen_cols > 0 && frozen_cols >= fixed_cols ? frozen_cols + 1 : fixed_cols);
  }

  // The first scrolling row that extends below the fixed rows at this scroll position.
  int TopRow(int64_t scroll) const {
    const std::vector<int64_t> tops = Tops();
    if (fixed_rows >= Rows()) return fixed_rows;
    for (int row = fixed_rows; row < Rows(); ++row) {
      if (tops[static_cast<size_t>(row) + 1] > tops[static_cast<size_t>(fixed_rows)] + scroll) return row;
    }
    return Rows() - 1;
  }
  // The last shown row that ends within the view, but none above the top row.
  int BottomRow(int64_t scroll) const {
    const std::vector<int64_t> tops = Tops();
    const int64_t end = scroll + std::max<int64_t>(view.height, tops[static_cast<size_t>(fixed_rows)]);
    int bottom = TopRow(scroll);
    for (int row = bottom; row < Rows(); ++row) {
      if (Shown(row) && tops[static_cast<size_t>(row) + 1] <= end) bottom = row;
    }
    return bottom;
  }
  int64_t MostScroll() const {
    const std::vector<int64_t> tops = Tops();
    return std::max<int64_t>(0, tops.back() - std::max<int64_t>(view.height, tops[static_cast<size_t>(fixed_rows)]));
  }

  void MoveColumn(int from, int to) {
    const ModelColumn moved = Column(from);
    columns.erase(columns.begin() + from);
    columns.insert(columns.begin() + to, moved);
  }
  // Rows that remain when the records are removed are ordinary ones.
  void ForgetRecords() {
    for (ModelRow& row : rows) row.record = -1;
  }
  void GroupBy(int column, int caption_column) {
    bool first = true;
    std::string last;
    for (int row = fixed_rows; row < Rows(); ++row) {
      if (Row(row).node) continue;
      Row(row).level = 1;
      const std::string text = Text(row, column);
      if (first || text != last) {
        rows.insert(rows.begin() + row, ModelRow(columns.size()));
        Row(row).node = true;
        Text(row, caption_column) = text;
        ++row;
      }
      first = false;
      last = text;
    }
  }
};

}  // namespace stockbook::sheet::test
