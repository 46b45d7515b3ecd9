// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "sheet/geometry/geometry.h"
#include "sheet/print/paper_layout.h"

namespace stockbook::sheet {

// The room for cells on a page, in pixels of the sheet before scaling down.
struct PageRoom {
  double width = 0;
  double height = 0;
};

// Distributes rows and columns over pages. Captions and pinned columns are repeated on every page. If the columns are
// too wide they are scaled down, at most to 0.6; if they still do not fit, they continue on further pages, and each
// page of rows is followed by the pages with the rest of its columns. No shown row is split between pages unless it is
// higher than a page, and no page ends with an open node. A plan is valid until the next change of the sheet. It costs
// O(log runs) for each page and O(columns).
class PagePlan {
 public:
  struct Page {
    Span rows;
    Span columns;
  };

  // Unpins the frozen columns of the layout if they would take most of a page.
  PagePlan(PaperLayout& paper, PageRoom room);

  // At least one, with the captions, even for an empty sheet.
  int PageCount() const { return static_cast<int>(row_pages_.size() * column_bands_.size()); }
  Page At(int page) const;
  // The factor by which the cells are scaled down, 0.6 to 1.
  double zoom() const { return zoom_; }

 private:
  void BreakColumns(const PaperLayout& paper, int64_t room);
  void BreakRows(const PaperLayout& paper, int64_t room);

  double zoom_ = 1;
  std::vector<Span> row_pages_;
  std::vector<Span> column_bands_;
};

}  // namespace stockbook::sheet
