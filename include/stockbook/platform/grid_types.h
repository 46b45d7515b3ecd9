// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace stockbook::platform {

// 0x00BBGGRR.
using Colour = uint32_t;

// A cell of a grid; -1 where there is none.
struct CellPosition {
  int row = -1;
  int column = -1;

  bool operator==(const CellPosition&) const = default;
};

// Cells of the rows [row1, row2) and columns [column1, column2).
struct CellRange {
  int row1 = 0;
  int column1 = 0;
  int row2 = 0;
  int column2 = 0;

  bool operator==(const CellRange&) const = default;
};

// The codes of column and cell alignments.
enum class Alignment : int16_t {
  kLeftTop = 0,
  kLeftCenter = 1,
  kLeftBottom = 2,
  kCenterTop = 3,
  kCenterCenter = 4,
  kCenterBottom = 5,
  kRightTop = 6,
  kRightCenter = 7,
  kRightBottom = 8,
  kGeneral = 9,  // numbers and dates right, texts left
};

// The place of a cell's picture. The first nine are the codes of Alignment; kStretch and kTile fill the cell.
enum class PictureAlignment : int16_t {
  kLeftTop = 0,
  kLeftCenter = 1,
  kLeftBottom = 2,
  kCenterTop = 3,
  kCenterCenter = 4,
  kCenterBottom = 5,
  kRightTop = 6,
  kRightCenter = 7,
  kRightBottom = 8,
  kStretch = 9,
  kTile = 10,
};

// The codes of column data types.
enum class DataType : int16_t { kLong = 3, kDouble = 5, kCurrency = 6, kDate = 7, kString = 8 };

// What the mouse looks like over a grid: that the program is busy, or busy beside the window.
enum class MousePointer : int16_t { kDefault = 0, kHourglass = 11, kArrowHourglass = 13 };

}  // namespace stockbook::platform
