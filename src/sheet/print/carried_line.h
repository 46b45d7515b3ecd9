// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sheet/paint/canvas.h"
#include "sheet/print/paper_layout.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::sheet {

// The line on top of a page, 承前页 (brought forward), and the one at its foot, 过次页 (carried forward). Both tell the
// values of the last line before the break, be it shown or not. It borrows the layout.
class CarriedLine {
 public:
  CarriedLine(const PaperLayout& paper, const PageSetup& setup) : paper_(paper), setup_(setup) {}

  // What the column has in the last line before the row: that of a line, never that of a node or a total. A value that
  // is left blank is 0. "" if there is no line.
  std::string TextBefore(int row, int column) const;
  // Paints the line from the canvas's origin on, over the columns that are pinned and those given.
  void Paint(Canvas& canvas, const Appearance& looks, std::string_view caption, int row_after, Span columns) const;
  int height() const { return paper_.rows().HeightOf(RowState()); }

 private:
  struct Place {
    int column = 0;
    int x = 0;
    int width = 0;
  };

  std::vector<Place> PlacesOf(Span columns) const;
  int CaptionColumn(const std::vector<Place>& places) const;
  bool IsCarried(int column) const;

  const PaperLayout& paper_;
  const PageSetup& setup_;
};

}  // namespace stockbook::sheet
