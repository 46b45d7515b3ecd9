// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// The rows of a grid. A fixed row stays on top and is no data row.
class STOCKBOOK_API GridRows {
 public:
  virtual ~GridRows() = default;

  virtual int Rows() const = 0;
  // Rows are added empty at the end or dropped from the end.
  virtual void SetRows(int count) = 0;
  virtual int FixedRows() const = 0;
  virtual void SetFixedRows(int count) = 0;
  // Inserts a row before `position` (the row count: at the end) filled from a tab-separated text, at no cost to the
  // rows after it. The row is an ordinary one of outline level 0.
  virtual void AddItem(std::string_view tab_text, int position) = 0;
  // Another number whenever rows or columns came, went or moved, so that a row or a column may mean another one.
  virtual int64_t Revision() const = 0;

  // Whether the row is a node of the outline.
  virtual bool IsSubtotal(int row) const = 0;
  // The first node at or after `row`, or -1; O(log rows).
  virtual int NextSubtotal(int row) const = 0;

  virtual bool RowHidden(int row) const = 0;
  virtual void SetRowHidden(int row, bool hidden) = 0;
  // Hides or shows the rows [first, last) on their own account, at once; nodes stay as they are folded.
  virtual void SetRowsHidden(int first, int last, bool hidden) = 0;
  // Height in twips, whatever is hidden.
  virtual int RowHeight(int row) const = 0;
  // Row -1 means all rows, those to come included. Heights are kept between the limits.
  virtual void SetRowHeight(int row, int twips) = 0;
  // Limits in twips; 0 is none.
  virtual float RowHeightMin() const = 0;
  virtual void SetRowHeightMin(float twips) = 0;
  virtual float RowHeightMax() const = 0;
  virtual void SetRowHeightMax(float twips) = 0;
};

}  // namespace stockbook::platform
