// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/base/value.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {

// The cells of a grid: stored text, its numeric reading, a hidden data value beside it, and what is painted in it.
class STOCKBOOK_API GridCells {
 public:
  virtual ~GridCells() = default;

  // The stored text, before any format; "" outside of the grid.
  virtual std::string TextMatrix(int row, int column) const = 0;
  // Leaves the hidden data as it is. Throws Error outside of the grid.
  virtual void SetTextMatrix(int row, int column, std::string_view text) = 0;
  // Another number whenever the text of a cell was set or the records of a column were replaced.
  virtual int64_t TextRevision() const = 0;
  // The text read as a number; 0 for other texts and outside of the grid.
  virtual double ValueMatrix(int row, int column) const = 0;
  // The hidden data value; of loaded rows the loaded value until another is set. Null where there is none, and outside
  // of the grid.
  virtual base::Value CellData(int row, int column) const = 0;
  // Shows nothing by itself. Throws Error outside of the grid.
  virtual void SetCellData(int row, int column, base::Value data) = 0;
  // The text as shown in the column's format; of a fixed row as it is stored, and "" outside of the grid.
  virtual std::string DisplayText(int row, int column) const = 0;
  // A value as the column's format shows it; its default text where the column has none.
  virtual std::string FormatValue(int column, const base::Value& value) const = 0;

  // These change every cell of the range. An empty range changes nothing; one that reaches beyond the grid throws
  // Error. No picture is nullptr; an empty name means the grid's font.
  virtual void SetCellPicture(const CellRange& range, const PictureRef& picture, PictureAlignment alignment) = 0;
  virtual void SetCellAlignment(const CellRange& range, Alignment alignment) = 0;
  virtual void SetCellFontName(const CellRange& range, std::string_view name) = 0;
  // Both as the cell is painted when it is not selected: its own colour, or that of its part of the grid. Outside of
  // the grid they are those of the body.
  virtual Colour CellBackColor(int row, int column) const = 0;
  virtual Colour CellForeColor(int row, int column) const = 0;
  // As SetCellPicture does. Cells of a single row that get the colours that they have by default follow the grid's
  // again.
  virtual void SetCellColors(const CellRange& range, Colour back, Colour fore) = 0;
};

}  // namespace stockbook::platform
