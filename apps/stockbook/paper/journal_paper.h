// SPDX-License-Identifier: MIT
#pragma once

#include <QPageLayout>
#include <QString>

#include "stockbook/heading/journal_heading.h"
#include "stockbook/qt/pdf_printer.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::app {

// Whether pages tell what they carry over from the one before and to the next one.
enum class Carrying { kTold, kNotTold };

// How a journal is to stand on paper. A plain value.
struct PaperChoice {
  static constexpr double kMarginMm = 12;
  static constexpr int kMostPagesWide = 10;

  QPageLayout page{QPageSize(QPageSize::A4), QPageLayout::Landscape,
                   QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm), QPageLayout::Millimeter};
  int pages_wide = 1;  // the columns are scaled down to fit on so many pages beside each other
  Carrying carrying = Carrying::kTold;
};

// The words of a page: the journal and its subject on top, the range and the time of printing below, the source at the
// foot.
sheet::PageWords WordsFor(const JournalHeading& heading);
// The running quantities and amounts are carried, those that are shown, and the bill is repeated.
sheet::PageSetup SetupFor(const sheet::Sheet& sheet, const PaperChoice& choice);
qt::PdfDocument DocumentFor(const sheet::Sheet& sheet, const PaperChoice& choice, const JournalHeading& heading);

// The heading of what a sheet shows now, made now.
JournalHeading HeadingOf(const sheet::Sheet& sheet, int journal_type, const std::string& caption,
                         const std::string& source);

}  // namespace stockbook::app
