// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "sheet/print/carried_line.h"
#include "sheet/print/page_plan.h"
#include "sheet/print/page_target.h"
#include "sheet/print/paper_layout.h"
#include "stockbook/base/api.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::sheet {

// An entry of a document's table of contents.
struct PageBookmark {
  std::string title;
  int page = 0;
};

// Paints a sheet page by page: on each page the heading, the column captions, as many rows as fit (see PagePlan), what
// is carried to the next page, and the page's number. Folded periods and hidden columns are left out, and the selection
// is not shown. A dark sheet is painted in light colours. Views of the sheet are not affected. Valid until the sheet
// changes; a page costs what it shows.
class STOCKBOOK_API PagePainter {
 public:
  // `paper` is the room on a page within its margins, in pixels of 1/96 inch.
  PagePainter(Sheet& sheet, PageRoom paper, PageWords words, PageSetup setup = {});
  PagePainter(const PagePainter&) = delete;
  PagePainter& operator=(const PagePainter&) = delete;

  int PageCount() const { return plan_.PageCount(); }
  // The rows and columns on the page; pages count from 0.
  PagePlan::Page PageAt(int page) const { return plan_.At(page); }
  double zoom() const { return plan_.zoom(); }
  // Nothing for a page that there is not.
  void Paint(int page, PageTarget& target);
  // The groups of the outline that are shown, in their order. O(nodes).
  std::vector<PageBookmark> Bookmarks() const;

 private:
  double HeadHeight() const;
  PageRoom CellRoom() const;
  void PaintHead(PageTarget& target) const;
  void PaintFoot(int page, PageTarget& target) const;
  void PaintCells(int page, PageTarget& target);

  PageRoom paper_;
  PageWords words_;
  PageSetup setup_;
  PaperLayout layout_;
  Appearance looks_;
  PagePlan plan_;  // made with the layout
  CarriedLine carried_;
};

}  // namespace stockbook::sheet
