// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::platform {

// The columns of a grid. Keys are found exactly, in O(1); several columns may carry the empty key.
class STOCKBOOK_API GridColumns {
 public:
  virtual ~GridColumns() = default;

  // Fixed ones included.
  virtual int Cols() const = 0;
  // Columns are added empty at the end or dropped from the end, with their contents. Throws Error below 0 and above
  // 10000.
  virtual void SetCols(int count) = 0;
  // How many columns from the left do not scroll and hold no data; 1 unless set. Setting it throws Error below 0 and
  // above Cols.
  virtual int FixedCols() const = 0;
  virtual void SetFixedCols(int count) = 0;
  // Columns that stay in view, the last frozen column's index (0: none). Setting it throws Error where there is no such
  // column.
  virtual int FrozenCols() const = 0;
  virtual void SetFrozenCols(int count) = 0;

  // The column of the tree, or -1 for none. Setting it throws Error for another column that is not there.
  virtual int OutlineCol() const = 0;
  virtual void SetOutlineCol(int column) = 0;

  // The first column with the key, or -1; -1 for the empty key, too.
  virtual int ColIndex(std::string_view key) const = 0;
  // "" unless set. Throws Error for a column that is not there, as all that follow.
  virtual std::string ColKey(int column) const = 0;
  virtual void SetColKey(int column, std::string_view key) = 0;
  // Moves a column, with everything of it, to another position from 0 on; the ones between move up.
  virtual void SetColPosition(int column, int position) = 0;

  // Another number whenever a column got another key, was hidden or shown.
  virtual int64_t ColRevision() const = 0;

  // False unless set. A hidden column keeps its width.
  virtual bool ColHidden(int column) const = 0;
  virtual void SetColHidden(int column, bool hidden) = 0;
  // The type that was set. Where none was, a format for numbers or dates makes it kDouble or kDate, and so do loaded
  // values that are all numbers; otherwise it is kString.
  virtual DataType ColDataType(int column) const = 0;
  virtual void SetColDataType(int column, DataType type) = 0;
  // A pattern as #,##0.00 or yyyy-MM-dd for what is shown; "" for none.
  virtual std::string ColFormat(int column) const = 0;
  virtual void SetColFormat(int column, std::string_view format) = 0;
  // In twips, 960 unless set. More than 144000 counts as that; below 0 throws Error.
  virtual int ColWidth(int column) const = 0;
  virtual void SetColWidth(int column, int twips) = 0;
  // Column -1 means all columns. kGeneral unless set; cells with an alignment of their own keep it.
  virtual void SetColAlignment(int column, Alignment alignment) = 0;
};

}  // namespace stockbook::platform
