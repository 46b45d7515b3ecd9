// SPDX-License-Identifier: MIT
#include "stockbook/paper/paper_memory.h"

#include <algorithm>
#include <iterator>

namespace stockbook::app {
namespace {

constexpr double kMostMarginMm = 50;

// One place for the names of the values.
struct PaperKeys {
  static QString Size() { return QStringLiteral("paper/size"); }
  static QString Upright() { return QStringLiteral("paper/upright"); }
  static QString Margin(int side) { return QStringLiteral("paper/margin%1").arg(side); }
  static QString PagesWide() { return QStringLiteral("paper/pagesWide"); }
  static QString Carrying() { return QStringLiteral("paper/carrying"); }
};

double MarginOf(const QSettings& settings, int side, double usual) {
  bool is_number = false;
  const double margin = settings.value(PaperKeys::Margin(side), usual).toDouble(&is_number);
  return is_number && margin >= 0 && margin <= kMostMarginMm ? margin : usual;
}

}  // namespace

PaperChoice RememberedPaper(QSettings* settings) {
  PaperChoice choice;
  if (settings == nullptr) return choice;
  const QString size = settings->value(PaperKeys::Size()).toString();
  const auto* known = std::find_if(std::begin(kPaperSizes), std::end(kPaperSizes),
                                   [&](QPageSize::PageSizeId id) { return QPageSize::key(id) == size; });
  if (known != std::end(kPaperSizes)) choice.page.setPageSize(QPageSize(*known));
  if (settings->value(PaperKeys::Upright()).toBool()) choice.page.setOrientation(QPageLayout::Portrait);
  const QMarginsF usual = choice.page.margins();
  choice.page.setMargins({MarginOf(*settings, 0, usual.left()), MarginOf(*settings, 1, usual.top()),
                          MarginOf(*settings, 2, usual.right()), MarginOf(*settings, 3, usual.bottom())});
  const int wide = settings->value(PaperKeys::PagesWide(), 1).toInt();
  choice.pages_wide = std::clamp(wide, 1, PaperChoice::kMostPagesWide);
  if (!settings->value(PaperKeys::Carrying(), true).toBool()) choice.carrying = Carrying::kNotTold;
  return choice;
}

void RememberPaper(QSettings* settings, const PaperChoice& choice) {
  if (settings == nullptr) return;
  settings->setValue(PaperKeys::Size(), QPageSize::key(choice.page.pageSize().id()));
  settings->setValue(PaperKeys::Upright(), choice.page.orientation() == QPageLayout::Portrait);
  const QMarginsF margins = choice.page.margins(QPageLayout::Millimeter);
  int side = 0;
  for (const double margin : {margins.left(), margins.top(), margins.right(), margins.bottom()})
    settings->setValue(PaperKeys::Margin(side++), margin);
  settings->setValue(PaperKeys::PagesWide(), choice.pages_wide);
  settings->setValue(PaperKeys::Carrying(), choice.carrying == Carrying::kTold);
}

}  // namespace stockbook::app
