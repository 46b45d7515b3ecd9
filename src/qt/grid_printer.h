// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <string>

#include "qt/canvas.h"
#include "sheet/print/page_plan.h"
#include "sheet/print/paper_layout.h"

namespace stockbook::qt {

// Where a page is on a painter, in the painter's units, and how many units make an inch.
struct Paper {
  QRectF area;
  double dpi = 96;
};

// Prints a sheet page by page on any painter: of a printer, a PDF or an image, rotated or scaled. Each page has the
// heading, the column captions, as many rows as fit (see sheet::PagePlan) and its page number. Folded periods and
// hidden columns are left out, and the selection is not shown. A dark sheet is printed in light colours. Views of the
// sheet are not affected. A GridPrinter is valid until the sheet changes.
class GridPrinter {
 public:
  GridPrinter(sheet::Sheet& sheet, const Paper& paper, QString heading);

  int PageCount() const { return plan_.PageCount(); }
  // The rows and columns on the page; pages count from 0.
  sheet::PagePlan::Page PageAt(int page) const { return plan_.At(page); }
  // Restores the painter's state afterwards.
  void PaintPage(QPainter& painter, int page);

 private:
  sheet::Appearance Looks() const;
  sheet::PageRoom Room() const;
  double Unit() const { return paper_.dpi / kPixelsPerInch; }
  void PaintFrame(QPainter& painter, int page);
  void PaintCells(QPainter& painter, int page);

  static constexpr double kPixelsPerInch = 96;

  Paper paper_;
  std::string heading_;
  GlyphFonts fonts_;
  sheet::PaperLayout layout_;
  sheet::PagePlan plan_;  // made with the layout
};

// Prints all pages to a printer or a PDF, starting on its current page. Returns false as soon as the device accepts no
// more; the pages before that stay printed.
bool PrintSheet(sheet::Sheet& sheet, const QString& heading, QPagedPaintDevice& device);

}  // namespace stockbook::qt
