// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "sheet/geometry/geometry.h"
#include "sheet/print/paper_layout.h"

namespace stockbook::sheet {

// The room for cells on a page, in pixels of the sheet before it is made smaller.
struct PageRoom {
  double width = 0;
  double height = 0;
};

// Which rows and columns stand on which page. Captions and pinned columns stand on every page. Columns that are too
// wide together are made smaller, at most to six tenths; if that does not do, they go on on further pages, so that a
// page of rows is followed by the pages with the rest of its columns. Every shown row stands whole on one page of rows,
// and a node not at the foot of one; only a row higher than a page is cut. A plan holds until the next change of the
// sheet; it costs O(log runs) for each page and O(columns).
class PagePlan {
 public:
  struct Page {
    Span rows;
    Span columns;
  };

  // Of the sheet as it is laid out on the paper. Frozen columns that would take most of a page are pinned no more.
  PagePlan(PaperLayout& paper, PageRoom room);

  // At least one: of an empty sheet the captions are printed.
  int PageCount() const { return static_cast<int>(row_pages_.size() * column_bands_.size()); }
  Page At(int page) const;
  // What the cells are to be made smaller by, 0.6 to 1.
  double zoom() const { return zoom_; }

 private:
  void BreakColumns(const PaperLayout& paper, int64_t room);
  void BreakRows(const PaperLayout& paper, int64_t room);

  double zoom_ = 1;
  std::vector<Span> row_pages_;
  std::vector<Span> column_bands_;
};

}  // namespace stockbook::sheet
