// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "stockbook/platform/grid_types.h"

namespace stockbook::sheet {

using platform::CellPosition;

// The current cell and the other corner of the selected range. A plain value; -1 means no cell.
struct Selection {
  CellPosition current;
  CellPosition end;

  // Current cell and other corner alike.
  static Selection Of(CellPosition cell) { return {cell, cell}; }
  // Whether it is more than the current cell.
  bool IsRange() const { return current != end; }
  // Its cells, whichever corner is the current one; an empty range where there is no current cell.
  platform::CellRange Range() const {
    if (current.row < 0 || current.column < 0) return {};
    return {std::min(current.row, end.row), std::min(current.column, end.column), std::max(current.row, end.row) + 1,
            std::max(current.column, end.column) + 1};
  }
  // False for all cells where there is no current one.
  bool Contains(int row, int column) const {
    const platform::CellRange range = Range();
    return row >= range.row1 && row < range.row2 && column >= range.column1 && column < range.column2;
  }

  // Both cells have a row or neither has; the same for columns.
  bool CheckInvariants() const {
    const auto both = [](int a, int b) { return a >= -1 && b >= -1 && (a < 0) == (b < 0); };
    return both(current.row, end.row) && both(current.column, end.column);
  }
  // Both cells lie within a grid of that size.
  bool IsWithin(int rows, int columns) const {
    return std::max(current.row, end.row) < rows && std::max(current.column, end.column) < columns;
  }

  bool operator==(const Selection&) const = default;
};

}  // namespace stockbook::sheet
