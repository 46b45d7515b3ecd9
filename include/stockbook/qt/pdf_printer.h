// SPDX-License-Identifier: MIT
#pragma once

#include <QPageLayout>
#include <QString>
#include <ostream>

#include "stockbook/base/api.h"
#include "stockbook/qt/grid_printer.h"
#include "stockbook/sheet/print/page_setup.h"

namespace stockbook::qt {

// What a PDF of a sheet is to be.
struct PdfDocument {
  QPageLayout page;  // paper, orientation and margins
  QString title;     // of the document
  sheet::PageWords words;
  sheet::PageSetup setup;
};

// Writes a sheet as a PDF, with an entry in the table of contents for each group that is shown. The pages are those of
// GridPrinter. It writes page by page and keeps none of them. Returns false when `progress` wants no more, or when
// `out` takes no more; what is written then is no PDF.
STOCKBOOK_API bool WritePdf(sheet::Sheet& sheet, const PdfDocument& document, std::ostream& out,
                            const PageProgress& progress = {});

}  // namespace stockbook::qt
