// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/geometry/row_axis.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::sheet {

// A view of the sheet on paper. It does not affect other views.
class PaperLayout {
 public:
  // `scale` is pixels of the paper for one of 96 to the inch.
  PaperLayout(Sheet& sheet, double scale);

  // From now on so many columns from the left are pinned, at least the fixed ones; before, the frozen ones are, too.
  void Pin(int columns) { view_.SetPinnedCols(columns); }
  // Shows exactly the given rows and columns, after the captions and the pinned columns.
  void Show(Span rows, Span columns);

  const View& view() const { return view_; }
  const Sheet& sheet() const { return view_.sheet(); }
  const RowAxis& rows() const { return view_.rows(); }
  int PinnedCols() const { return view_.PinnedCols(); }
  // In pixels: the sizes of the captions, the pinned columns, and given columns and rows.
  int CaptionHeight() const;
  int PinnedWidth() const;
  int64_t Width(Span columns) const;
  int64_t Height(Span of) const;

 private:
  View view_;
};

}  // namespace stockbook::sheet
