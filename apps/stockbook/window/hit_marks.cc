// SPDX-License-Identifier: MIT
#include "stockbook/window/hit_marks.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "sheet/outline/row_states.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/qt/colour.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

// What dark cells get on top of them, texts included; it leaves light texts light.
constexpr QColor kMarkFill(255, 196, 0, 84);
// What light cells are dyed with, which leaves dark texts as they are.
constexpr QColor kMarkDye(255, 234, 164);
constexpr QColor kMarkEdge(224, 140, 0, 200);

}  // namespace

HitMarks::HitMarks(qt::StockbookWidget& stockbook, const JournalFinder& finder)
    : stockbook_(stockbook), finder_(finder) {
  stockbook.viewport()->installEventFilter(this);
  connect(&finder, &JournalFinder::Changed, stockbook.viewport(), qOverload<>(&QWidget::update));
}

void HitMarks::SetShown(bool shown) {
  if (shown_ == shown) return;
  shown_ = shown;
  stockbook_.viewport()->update();
}

// While redraw is off, the last frame stays, marks included.
bool HitMarks::AreWanted() const { return shown_ && finder_.HasWords() && stockbook_.Grid().Redraw(); }

bool HitMarks::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Paint || painting_ || !AreWanted()) return QObject::eventFilter(watched, event);
  // The journal first, by all other filters of its view.
  painting_ = true;
  const base::ScopeExit painted([this] { painting_ = false; });
  QCoreApplication::sendEvent(watched, event);
  Paint(static_cast<QPaintEvent*>(event)->region().boundingRect());
  return true;
}

template <typename Visit>
void HitMarks::ForEachMark(const sheet::Rect& part, Visit visit) const {
  const sheet::GridSheet& sheet = stockbook_.sheet();
  const sheet::Geometry geometry = sheet.view().geometry();
  const sheet::Span rows = geometry.RowsWithin(part.y, part.bottom());
  for (int row = rows.first; row < rows.last; ++row) {
    row = static_cast<int>(sheet.states().ShownAtOrAfter(row));
    if (row >= rows.last) return;
    if (!std::binary_search(finder_.rows().begin(), finder_.rows().end(), row)) continue;
    for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
      const sheet::Rect cell = geometry.VisibleCellRect(row, column);
      if (cell.Intersects(part) && finder_.HasAnyWord(sheet.DisplayText(row, column))) visit(row, column, cell);
    }
  }
}

std::vector<sheet::CellPosition> HitMarks::Cells() const {
  std::vector<sheet::CellPosition> cells;
  if (!AreWanted()) return cells;
  const sheet::Size size = stockbook_.sheet().view().size();
  ForEachMark({0, 0, size.width, size.height}, [&](int row, int column, const sheet::Rect&) {
    cells.push_back({row, column});
  });
  return cells;
}

void HitMarks::Paint(const QRect& part) {
  const double scale = stockbook_.sheet().view().scale();
  const auto down = [scale](int logical) { return static_cast<int>(std::floor(logical * scale)); };
  const sheet::Rect pixels{down(part.left()), down(part.top()), down(part.width()) + 2, down(part.height()) + 2};
  QPainter painter(stockbook_.viewport());
  const bool on_dark = qt::IsDark(qt::ToQColor(stockbook_.sheet().ColourOf(platform::GridColour::kBackColor)));
  ForEachMark(pixels, [&](int, int, const sheet::Rect& cell) {
    // Without the grid lines at its right and lower edge.
    const QRectF area(cell.x / scale, cell.y / scale, (cell.width - 1) / scale, (cell.height - 1) / scale);
    painter.setCompositionMode(on_dark ? QPainter::CompositionMode_SourceOver : QPainter::CompositionMode_Multiply);
    painter.fillRect(area, on_dark ? kMarkFill : kMarkDye);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.fillRect(QRectF(area.left(), area.bottom() - 2, area.width(), 2), kMarkEdge);
  });
}

}  // namespace stockbook::app
