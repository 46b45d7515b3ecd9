// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "sheet/print/paper_layout.h"
#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::sheet {

// Distributes rows and columns over pages. Captions and pinned columns are repeated on every page. Columns that are too
// wide are scaled down as far as the setup allows; if they still do not fit, they continue on further pages, and each
// page of rows is followed by the pages with the rest of its columns. No shown row is split between pages unless it is
// higher than a page, and no page ends with an open node. A plan is valid until the next change of the sheet. It costs
// O(log runs) for each page and O(columns).
class STOCKBOOK_API PagePlan {
 public:
  using Page = PageCells;

  // The room is in pixels of the layout before scaling down. Pins the columns that are to be repeated, unless they
  // would take most of a page.
  PagePlan(PaperLayout& paper, PageRoom room, const PageSetup& setup = {});

  // At least one, with the captions, even for an empty sheet.
  int PageCount() const { return static_cast<int>(row_pages_.size() * column_bands_.size()); }
  Page At(int page) const;
  // The first of the pages with the row, or with those after it if it is not shown.
  int PageOfRow(int row) const;
  // Whether rows come before or after those of the page, on other pages.
  bool GoesOnBefore(int page) const { return RowPage(page) > 0; }
  bool GoesOnAfter(int page) const { return RowPage(page) + 1 < row_pages_.size(); }
  // The factor by which the cells are scaled down, at most 1.
  double zoom() const { return zoom_; }
  // Of the line on top of a page, and at its foot, that tells what is carried; 0 without such lines.
  int carried_height() const { return carried_height_; }

 private:
  size_t RowPage(int page) const;
  void Zoom(PaperLayout& paper, double width, const PageSetup& setup);
  std::vector<Span> BandsOf(const PaperLayout& paper, double width) const;
  void BreakRows(const PaperLayout& paper, int64_t room);

  double zoom_ = 1;
  int carried_height_ = 0;
  std::vector<Span> row_pages_;
  std::vector<Span> column_bands_;
};

}  // namespace stockbook::sheet
