// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <string>

#include "qt/canvas.h"
#include "sheet/print/page_plan.h"
#include "sheet/sheet.h"

namespace stockbook::qt {

// Where a page stands on a painter, in the painter's units, and how many of those are an inch.
struct Paper {
  QRectF area;
  double dpi = 96;
};

// Prints a sheet page by page onto any painter: a printer's, a PDF's, a picture's, one that is turned or scaled. Every
// page has the heading, the captions, as many rows as it holds (see sheet::PagePlan) and its number. The rows are those
// that are shown, folded periods and hidden columns are not; what is selected is not told. A dark sheet is printed in
// light colours. A view of the sheet does not notice. A printer holds until the next change of the sheet.
class GridPrinter {
 public:
  GridPrinter(sheet::Sheet& sheet, const Paper& paper, QString heading);

  int PageCount() const { return plan_.PageCount(); }
  // The rows and columns that the page, from 0, shows.
  sheet::PagePlan::Page PageAt(int page) const { return plan_.At(page); }
  // The painter is left as it was found.
  void PaintPage(QPainter& painter, int page);

 private:
  sheet::Appearance Looks() const;
  sheet::PagePlan MakePlan() const;
  sheet::PageRoom Room() const;
  double Unit() const { return paper_.dpi / kPixelsPerInch; }
  void PaintFrame(QPainter& painter, int page);
  void PaintCells(QPainter& painter, int page);

  static constexpr double kPixelsPerInch = 96;

  sheet::Sheet& sheet_;
  Paper paper_;
  std::string heading_;
  GlyphFonts fonts_;
  sheet::PagePlan plan_;
};

// All pages onto a printer or a PDF, from its present page on. False, with what it has printed so far, where it does
// not take more.
bool PrintSheet(sheet::Sheet& sheet, const QString& heading, QPagedPaintDevice& device);

}  // namespace stockbook::qt
