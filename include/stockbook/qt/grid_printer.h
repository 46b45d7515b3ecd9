// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <functional>
#include <memory>

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::sheet {
class Sheet;
}  // namespace stockbook::sheet

namespace stockbook::qt {

// Where a page is on a painter, in the painter's units, and how many units make an inch.
struct Paper {
  QRectF area;
  double dpi = 96;
};

// Prints a sheet page by page on any painter: of a printer, a PDF or an image, rotated or scaled. See
// sheet::PageSetup and sheet::PageWords for what is on a page. Each page is numbered at its foot (第 1 页
// 共 13 页). For a PDF of many pages WritePdf is faster. A GridPrinter is valid until the sheet changes.
class STOCKBOOK_API GridPrinter {
 public:
  // With a heading above the cells, as one line, and else as PageWords and PageSetup are by default.
  GridPrinter(sheet::Sheet& sheet, const Paper& paper, const QString& heading);
  // Borrows the sheet and lays out all pages at once.
  GridPrinter(sheet::Sheet& sheet, const Paper& paper, sheet::PageWords words, sheet::PageSetup setup);
  // Stays where it is: its pages refer to it.
  GridPrinter(const GridPrinter&) = delete;
  GridPrinter& operator=(const GridPrinter&) = delete;
  ~GridPrinter();

  // At least 1, also of a sheet without rows.
  int PageCount() const;
  // The rows and columns on the page; pages count from 0, and one that is not there gives the nearest.
  sheet::PageCells PageAt(int page) const;
  // The factor by which the cells are scaled down, from 0.1 to 1.
  double zoom() const;
  // Paints at the paper's place and restores the painter's state afterwards; a page that is not there paints nothing.
  void PaintPage(QPainter& painter, int page);

 private:
  struct Parts;

  Paper paper_;
  std::unique_ptr<Parts> parts_;
};

// Is told how many of all pages are done, and returns whether to go on.
using PageProgress = std::function<bool(int done, int all)>;

// Prints pages [first, last) to a printer or a PDF, starting on its current page; those after the last one are left
// out. Returns false as soon as the device accepts no more or `progress` wants no more; the pages before that stay
// printed.
STOCKBOOK_API bool PrintPages(GridPrinter& printer, QPainter& painter, QPagedPaintDevice& device, sheet::Span pages,
                              const PageProgress& progress = {});

// The paper of a device, within its margins, in its logical dots per inch.
STOCKBOOK_API Paper PaperOf(const QPagedPaintDevice& device);

// Prints all pages to a printer or a PDF, starting on its current page. Returns false as soon as the device accepts no
// more; the pages before that stay printed.
STOCKBOOK_API bool PrintSheet(sheet::Sheet& sheet, const QString& heading, QPagedPaintDevice& device);

}  // namespace stockbook::qt
