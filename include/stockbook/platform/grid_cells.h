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

  virtual std::string TextMatrix(int row, int column) const = 0;
  virtual void SetTextMatrix(int row, int column, std::string_view text) = 0;
  // Another number whenever the text of a cell was set or the records of a column were replaced.
  virtual int64_t TextRevision() const = 0;
  // The text read as a number, or 0.
  virtual double ValueMatrix(int row, int column) const = 0;
  // The hidden data value; of loaded rows the loaded value until another is set.
  virtual base::Value CellData(int row, int column) const = 0;
  virtual void SetCellData(int row, int column, base::Value data) = 0;
  // The text as shown in the column's format.
  virtual std::string DisplayText(int row, int column) const = 0;
  // A value as the column's format shows it; its default text where the column has none.
  virtual std::string FormatValue(int column, const base::Value& value) const = 0;

  virtual void SetCellPicture(const CellRange& range, const PictureRef& picture, PictureAlignment alignment) = 0;
  virtual void SetCellAlignment(const CellRange& range, Alignment alignment) = 0;
  virtual void SetCellFontName(const CellRange& range, std::string_view name) = 0;
  virtual Colour CellBackColor(int row, int column) const = 0;
  virtual Colour CellForeColor(int row, int column) const = 0;
  virtual void SetCellColors(const CellRange& range, Colour back, Colour fore) = 0;
};

}  // namespace stockbook::platform
