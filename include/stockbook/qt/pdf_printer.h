// SPDX-License-Identifier: MIT
#pragma once

#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QString>
#include <ostream>

#include "stockbook/base/api.h"
#include "stockbook/qt/grid_printer.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::qt {

// What a PDF of a sheet is to be.
struct PdfDocument {
  // Paper, orientation and margins: A4 upright with 15 mm at each side unless set.
  QPageLayout page{QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter};
  QString title;           // of the document
  sheet::PageWords words;  // heading, foot and so on; none unless set
  sheet::PageSetup setup;  // how the columns stand on pages
};

// Writes a sheet as a PDF, with an entry in the table of contents for each group that is shown. The pages are those of
// GridPrinter, numbered at their foot (第 1 页 共 13 页). It writes page by page and keeps none of them. Returns false
// when `progress` wants no more, or when `out` takes no more; what is written then is no PDF. Throws
// std::invalid_argument, and writes nothing, where the page is not valid (QPageLayout::isValid) or its margins leave no
// room.
STOCKBOOK_API bool WritePdf(sheet::Sheet& sheet, const PdfDocument& document, std::ostream& out,
                            const PageProgress& progress = {});

}  // namespace stockbook::qt
