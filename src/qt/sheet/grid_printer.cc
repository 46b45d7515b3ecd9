// SPDX-License-Identifier: MIT
#include "stockbook/qt/grid_printer.h"

#include <algorithm>
#include <utility>

#include "qt/sheet/canvas.h"
#include "qt/sheet/text.h"
#include "sheet/print/page_painter.h"

namespace stockbook::qt {
namespace {

constexpr double kPixelsPerInch = 96;

double UnitOf(const Paper& paper) { return paper.dpi / kPixelsPerInch; }

sheet::PageRoom RoomOn(const Paper& paper) {
  const QSizeF pixels = paper.area.size() / UnitOf(paper);
  return {pixels.width(), pixels.height()};
}

sheet::PageWords HeadedBy(const QString& heading) {
  sheet::PageWords words;
  words.heading = FromQString(heading.simplified());
  return words;
}

// A page on a painter whose origin and unit are the page's.
class PainterPage : public sheet::PageTarget {
 public:
  PainterPage(QPainter& painter, GlyphFonts& fonts) : painter_(painter), fonts_(fonts) {}

  void Paint(const sheet::PagePlace& place, const sheet::PageRoom& room,
             const std::function<void(sheet::Canvas&)>& paint) override {
    painter_.save();
    painter_.translate(place.x, place.y);
    painter_.scale(place.zoom, place.zoom);
    painter_.setClipRect(QRectF(0, 0, room.width, room.height), Qt::IntersectClip);
    {
      QtCanvas canvas(painter_, fonts_, kScale);
      paint(canvas);
    }
    painter_.restore();
  }

 private:
  QPainter& painter_;
  GlyphFonts& fonts_;
};

}  // namespace

struct GridPrinter::Parts {
  GlyphFonts fonts;
  sheet::PagePainter pages;
};

GridPrinter::GridPrinter(sheet::Sheet& sheet, const Paper& paper, const QString& heading)
    : GridPrinter(sheet, paper, HeadedBy(heading), {}) {}

GridPrinter::GridPrinter(sheet::Sheet& sheet, const Paper& paper, sheet::PageWords words, sheet::PageSetup setup)
    : paper_(paper), parts_(new Parts{{}, {sheet, RoomOn(paper), std::move(words), std::move(setup)}}) {}

GridPrinter::~GridPrinter() = default;

int GridPrinter::PageCount() const { return parts_->pages.PageCount(); }

sheet::PageCells GridPrinter::PageAt(int page) const { return parts_->pages.PageAt(page); }

double GridPrinter::zoom() const { return parts_->pages.zoom(); }

void GridPrinter::PaintPage(QPainter& painter, int page) {
  if (page < 0 || page >= PageCount()) return;
  painter.save();
  painter.setClipRect(paper_.area, Qt::IntersectClip);
  painter.translate(paper_.area.topLeft());
  painter.scale(UnitOf(paper_), UnitOf(paper_));
  PainterPage target(painter, parts_->fonts);
  parts_->pages.Paint(page, target);
  painter.restore();
}

bool PrintPages(GridPrinter& printer, QPainter& painter, QPagedPaintDevice& device, sheet::Span pages,
                const PageProgress& progress) {
  const int last = std::min(pages.last, printer.PageCount());
  for (int page = pages.first; page < last; ++page) {
    if (page > pages.first && !device.newPage()) return false;
    printer.PaintPage(painter, page);
    if (progress && !progress(page - pages.first + 1, last - pages.first)) return false;
  }
  return true;
}

Paper PaperOf(const QPagedPaintDevice& device) {
  return {QRectF(0, 0, device.width(), device.height()), static_cast<double>(device.logicalDpiX())};
}

bool PrintSheet(sheet::Sheet& sheet, const QString& heading, QPagedPaintDevice& device) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  GridPrinter printer(sheet, PaperOf(device), heading);
  return PrintPages(printer, painter, device, {0, printer.PageCount()}) && painter.end();
}

}  // namespace stockbook::qt
