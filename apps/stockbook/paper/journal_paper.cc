// SPDX-License-Identifier: MIT
#include "stockbook/paper/journal_paper.h"

#include <QDateTime>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

// Small print of seven points becomes one of two and a half; below that nobody reads it.
constexpr double kLeastZoom = 0.35;

}  // namespace

sheet::PageWords WordsFor(const JournalHeading& heading) {
  return {heading.Page(), heading.Range(), heading.Made(), heading.Source()};
}

sheet::PageSetup SetupFor(const sheet::Sheet& sheet, const PaperChoice& choice) {
  sheet::PageSetup setup;
  setup.pages_wide = choice.pages_wide;
  setup.least_zoom = kLeastZoom;
  setup.repeated_column = sheet.ColIndex(keys::kBillNo);
  if (choice.carrying == Carrying::kNotTold) return setup;
  for (const char* key : {keys::kStoQty, keys::kStoQty2, keys::kStoAcc}) {
    const int column = sheet.ColIndex(key);
    if (column >= 0 && !sheet.ColHidden(column)) setup.carried_columns.push_back(column);
  }
  return setup;
}

qt::PdfDocument DocumentFor(const sheet::Sheet& sheet, const PaperChoice& choice, const JournalHeading& heading) {
  return {choice.page, qt::ToQString(heading.Page()), WordsFor(heading), SetupFor(sheet, choice)};
}

JournalHeading HeadingOf(const sheet::Sheet& sheet, int journal_type, const std::string& caption,
                         const std::string& source) {
  ShownRange range = RangeShownIn(sheet);
  const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
  return JournalHeading(
      {journal_type, caption, std::move(range.first), std::move(range.last), source, qt::FromQString(now)});
}

}  // namespace stockbook::app
