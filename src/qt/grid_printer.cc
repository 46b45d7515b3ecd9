// SPDX-License-Identifier: MIT
#include "qt/grid_printer.h"

#include <algorithm>
#include <cmath>

#include "qt/colour.h"
#include "qt/text.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"

namespace stockbook::qt {
namespace {

// Pixels of the sheet per pixel of 1/96 inch: fine enough for every printer, whatever the painter's units are.
constexpr double kScale = 8;
// The heights of the header and footer lines in pixels of 1/96 inch, and their text sizes.
constexpr double kHeadingHeight = 30;
constexpr double kFooterHeight = 24;
constexpr double kHeadingSize = 1.2;
constexpr double kFooterSize = 0.9;
constexpr platform::Colour kInk = 0x00000000;

int Fine(double pixels) { return static_cast<int>(std::lround(pixels * kScale)); }

enum class Weight { kNormal, kBold };

platform::Font Sized(platform::Font font, double factor, Weight weight) {
  font.size_pt *= factor;
  font.bold = weight == Weight::kBold;
  return font;
}

}  // namespace

GridPrinter::GridPrinter(sheet::Sheet& sheet, const Paper& paper, QString heading)
    : paper_(paper), heading_(FromQString(heading.simplified())), layout_(sheet, kScale), plan_(layout_, Room()) {}

sheet::Appearance GridPrinter::Looks() const {
  sheet::Appearance looks = layout_.sheet().appearance();
  if (IsDark(ToQColor(looks.Of(platform::GridColour::kBackColor)))) looks.palette() = sheet::Palette();
  return looks;
}

sheet::PageRoom GridPrinter::Room() const {
  const QSizeF pixels = paper_.area.size() / Unit();
  return {std::max(1.0, pixels.width() * kScale),
          std::max(1.0, (pixels.height() - kHeadingHeight - kFooterHeight) * kScale)};
}

void GridPrinter::PaintPage(QPainter& painter, int page) {
  if (page < 0 || page >= PageCount()) return;
  painter.save();
  painter.setClipRect(paper_.area, Qt::IntersectClip);
  painter.translate(paper_.area.topLeft());
  painter.scale(Unit(), Unit());
  PaintFrame(painter, page);
  painter.translate(0, kHeadingHeight);
  // A row higher than the page does not reach into the footer line.
  const sheet::PageRoom room = Room();
  painter.setClipRect(QRectF(0, 0, room.width / kScale, room.height / kScale), Qt::IntersectClip);
  painter.scale(plan_.zoom(), plan_.zoom());
  PaintCells(painter, page);
  painter.restore();
}

void GridPrinter::PaintFrame(QPainter& painter, int page) {
  const QSizeF pixels = paper_.area.size() / Unit();
  QtCanvas canvas(painter, fonts_, kScale);
  const platform::Font& font = layout_.sheet().appearance().font;
  const int width = Fine(pixels.width());
  const std::string number = FromQString(QStringLiteral("第 %1 页 共 %2 页").arg(page + 1).arg(PageCount()));
  const sheet::TextItem heading{heading_, {0, 0, width, Fine(kHeadingHeight)}, sheet::HorizontalAlign::kLeft};
  const sheet::TextItem footer{
      number, {0, Fine(pixels.height() - kFooterHeight), width, Fine(kFooterHeight)}, sheet::HorizontalAlign::kRight};
  canvas.DrawTexts(Sized(font, kHeadingSize, Weight::kBold), kInk, {&heading, 1});
  canvas.DrawTexts(Sized(font, kFooterSize, Weight::kNormal), kInk, {&footer, 1});
}

void GridPrinter::PaintCells(QPainter& painter, int page) {
  const sheet::PagePlan::Page shown = plan_.At(page);
  layout_.Show(shown.rows, shown.columns);
  QtCanvas canvas(painter, fonts_, kScale);
  sheet::Paint(sheet::Snapshot::OnPaper(layout_.view(), Looks()), canvas);
}

bool PrintSheet(sheet::Sheet& sheet, const QString& heading, QPagedPaintDevice& device) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const QRectF area(0, 0, device.width(), device.height());
  GridPrinter printer(sheet, {area, static_cast<double>(device.logicalDpiX())}, heading);
  for (int page = 0; page < printer.PageCount(); ++page) {
    if (page > 0 && !device.newPage()) return false;
    printer.PaintPage(painter, page);
  }
  return painter.end();
}

}  // namespace stockbook::qt
