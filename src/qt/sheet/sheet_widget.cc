// SPDX-License-Identifier: MIT
#include "stockbook/qt/sheet_widget.h"

#include <QCursor>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

#include "qt/sheet/accessible_grid.h"
#include "qt/sheet/scroll_bar.h"
#include "qt/sheet/sheet_widget_parts.h"
#include "qt/sheet/text.h"
#include "qt/sheet/tool_tip.h"
#include "sheet/input/fit.h"
#include "sheet/input/line_step.h"
#include "sheet/paint/cell_tip.h"
#include "sheet/paint/painter.h"
#include "sheet/paint/snapshot.h"
#include "stockbook/platform/error.h"
#include "stockbook/qt/fonts.h"

namespace stockbook::qt {
namespace {

// If there are more damaged pieces than this, their bounding rectangle is painted.
constexpr int kMostPieces = 8;
constexpr double kLeastZoom = 0.5;
constexpr double kMostZoom = 3.0;

Qt::ScrollBarPolicy PolicyOf(platform::ScrollBarsSetting setting, platform::ScrollBarsSetting which) {
  const bool shown = (static_cast<int>(setting) & static_cast<int>(which)) != 0;
  return shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

sheet::Rect ToDevice(const QRect& rect, double scale) {
  const int left = static_cast<int>(std::floor(rect.left() * scale));
  const int top = static_cast<int>(std::floor(rect.top() * scale));
  return {left, top, static_cast<int>(std::ceil((rect.right() + 1) * scale)) - left,
          static_cast<int>(std::ceil((rect.bottom() + 1) * scale)) - top};
}

}  // namespace

SheetWidget::SheetWidget(QWidget* parent) : SheetWidget(std::make_unique<sheet::GridSheet>(), parent) {
  parts_->grid->SetGridFont(GridFontFor(font()));
  parts_->grid->view().SetClipboard(&parts_->clipboard);
}

SheetWidget::SheetWidget(std::unique_ptr<sheet::GridSheet> grid, QWidget* parent) : SheetWidget(grid->view(), parent) {
  parts_->grid = std::move(grid);
}

SheetWidget::SheetWidget(sheet::View& view, QWidget* parent, QAccessible::UpdateHandler tell)
    : QAbstractScrollArea(parent), parts_(std::make_unique<Parts>(*this, tell)), view_(&view) {
  setHorizontalScrollBar(new QuietScrollBar(Qt::Horizontal));
  setVerticalScrollBar(new QuietScrollBar(Qt::Vertical));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setMouseTracking(true);
  // A right-to-left window has the vertical scroll bar on the left; the ledger in it is not mirrored.
  viewport()->setLayoutDirection(Qt::LeftToRight);
  horizontalScrollBar()->setLayoutDirection(Qt::LeftToRight);
  AccessibleGrid::Install();
  Show(view);
}

SheetWidget::~SheetWidget() { view_->SetViewer(nullptr); }

sheet::GridSheet& SheetWidget::grid() const {
  if (parts_->grid == nullptr) {
    throw platform::Error("grid", "grid: this widget shows the view that it was made for, and has no grid of its own.");
  }
  return *parts_->grid;
}

void SheetWidget::Show(sheet::View& view) {
  view_ = &view;
  parts_->mouse.emplace(view);
  parts_->keyboard.emplace(view);
  view.SetViewer(this);
  FitView();
}

void SheetWidget::ViewGone() {
  auto_scroll_.stop();
  wheel_rest_ = QPointF();
  parts_->nothing = std::make_unique<sheet::GridSheet>();
  parts_->nothing->SetRows(0);
  parts_->nothing->SetCols(0);
  Show(parts_->nothing->view());
  CursorChanged(sheet::Cursor::kDefault);
  if (QToolTip::isVisible()) QToolTip::hideText();
}

sheet::Sheet& SheetWidget::sheet() const { return view_->sheet(); }

void SheetWidget::SelectionChanged() { parts_->news.Tell(); }

void SheetWidget::NodeChanged(int row) { parts_->news.TellNode(row); }

void SheetWidget::Damaged(const sheet::Rect& area) {
  viewport()->update(ToLogical(area));
  parts_->news.Tell();
}

QRect SheetWidget::ToScreen(const sheet::Rect& rect) const {
  const QRect area = ToLogical(rect);
  return {viewport()->mapToGlobal(area.topLeft()), area.size()};
}

std::optional<sheet::Point> SheetWidget::FromScreen(QPoint point) const {
  const QPoint at = viewport()->mapFromGlobal(point);
  if (!viewport()->rect().contains(at)) return std::nullopt;
  const QPointF pixel = QPointF(at) * ratio_;
  return sheet::Point{static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y()))};
}

QRect SheetWidget::ToLogical(const sheet::Rect& rect) const {
  const double scale = ratio_;
  const int left = static_cast<int>(std::floor(rect.x / scale));
  const int top = static_cast<int>(std::floor(rect.y / scale));
  return {left, top, static_cast<int>(std::ceil(rect.right() / scale)) - left,
          static_cast<int>(std::ceil(rect.bottom() / scale)) - top};
}

sheet::Size SheetWidget::SizeAt(double scale) const {
  const QSizeF size = QSizeF(viewport()->size()) * scale;
  return {std::max(1, static_cast<int>(std::ceil(size.width()))),
          std::max(1, static_cast<int>(std::ceil(size.height())))};
}

void SheetWidget::FitView() {
  ratio_ = Scale();
  const sheet::Size size = SizeAt(ratio_);
  const double scale = ratio_ * zoom_;
  if (size != view_->size() || scale != view_->scale()) view_->SetSize(size, scale);
}

void SheetWidget::SetZoom(double zoom) {
  if (std::isnan(zoom)) return;
  zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  if (zoom == zoom_) return;
  LetGo();
  zoom_ = zoom;
  FitView();
  viewport()->update();
}

void SheetWidget::FitColumns() { sheet::FitColumns(*view_); }

bool SheetWidget::viewportEvent(QEvent* event) {
  // The window may have moved to another screen.
  if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show) FitView();
  if (event->type() == QEvent::ToolTip) {
    ShowTip(*static_cast<QHelpEvent*>(event));
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void SheetWidget::ShowTip(const QHelpEvent& event) {
  const QPointF at = QPointF(event.pos()) * ratio_;
  const sheet::CellTip tip = sheet::CellTip::At(*view_, *this, {static_cast<int>(at.x()), static_cast<int>(at.y())});
  // An empty text hides the last tooltip.
  QToolTip::showText(event.globalPos(), PlainToolTip(ToQString(tip.text)), viewport(), ToLogical(tip.cell));
}

int SheetWidget::TextWidth(const platform::Font& font, std::string_view line) {
  return parts_->fonts.Find(font, view_->scale()).Width(line);
}

int SheetWidget::LineHeight(const platform::Font& font) {
  return parts_->fonts.Find(font, view_->scale()).line_height();
}

void SheetWidget::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  FitView();
}

void SheetWidget::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange &&
      event->type() != QEvent::EnabledChange)
    return;
  parts_->fonts.Clear();
  if (event->type() == QEvent::EnabledChange) LetGo();
  viewport()->update();
}

void SheetWidget::LetGo() {
  parts_->mouse->Cancel();
  auto_scroll_.stop();
  wheel_rest_ = QPointF();
}

void SheetWidget::paintEvent(QPaintEvent* event) {
  // While redraw is off, the opaque window keeps the last frame.
  if (!sheet().Redraw()) return;
  QPainter painter(viewport());
  const double scale = PaintingScale(painter);
  if (scale == ratio_) {
    PaintView(painter, event->region(), *view_, scale);
    return;
  }
  // Onto something other than the window, a picture of another resolution: a view of its own shows the sheet there.
  PaintView(painter, event->region(), sheet::View(*view_, SizeAt(scale), scale * zoom_), scale);
  // This is the window after all: its screen's scale has changed.
  if (scale == Scale())
    QMetaObject::invokeMethod(
        this, [this] { FitView(); }, Qt::QueuedConnection);
}

void SheetWidget::PaintView(QPainter& painter, const QRegion& region, const sheet::View& view, double ratio) {
  QtCanvas canvas(painter, parts_->fonts, ratio, zoom_);
  if (!isEnabled()) canvas.DimToward(sheet().ColourOf(platform::GridColour::kBackColor));
  const auto paint = [&](const QRect& piece) {
    sheet::Paint(sheet::Snapshot::Of(view, ToDevice(piece, ratio)), canvas);
  };
  if (region.rectCount() > kMostPieces) {
    paint(region.boundingRect());
  } else {
    std::for_each(region.begin(), region.end(), paint);
  }
}

// While redraw is off, columns change one by one: the bars follow with what is shown when it is on again.
void SheetWidget::ScrollChanged() {
  if (!sheet().Redraw()) return;
  if (QToolTip::isVisible()) QToolTip::hideText();  // its cell is no longer under the mouse
  MovePixels();
  UpdateBars();
}

void SheetWidget::UpdateBars() {
  const sheet::Geometry geometry = view_->geometry();
  const sheet::ScrollPosition most = geometry.max_scroll();
  const sheet::ScrollPosition at = geometry.scroll();
  const sheet::Rect body = geometry.BodyRect();
  parts_->x_scale = sheet::BarScale(most.x);
  parts_->y_scale = sheet::BarScale(most.y);
  const bool nested = std::exchange(updating_bars_, true);
  setHorizontalScrollBarPolicy(PolicyOf(sheet().ScrollBars(), platform::ScrollBarsSetting::kHorizontal));
  setVerticalScrollBarPolicy(PolicyOf(sheet().ScrollBars(), platform::ScrollBarsSetting::kVertical));
  const auto update = [](QScrollBar& bar, const sheet::BarScale& scale, int64_t position, int page, int step) {
    bar.setPageStep(scale.Length(page));
    bar.setSingleStep(scale.Length(step));
    bar.setRange(0, scale.MostOnBar());
    bar.setValue(scale.ToBar(position));
  };
  update(*horizontalScrollBar(), parts_->x_scale, at.x, body.width, sheet::LineStep(*view_));
  update(*verticalScrollBar(), parts_->y_scale, at.y, body.height, sheet::LineStep(*view_));
  updating_bars_ = nested;
}

void SheetWidget::scrollContentsBy(int /*dx*/, int /*dy*/) {
  if (updating_bars_) return;
  view_->ScrollTo(
      {parts_->x_scale.FromBar(horizontalScrollBar()->value()), parts_->y_scale.FromBar(verticalScrollBar()->value())});
}

// Moves the pixels that remain visible and damages what comes into view.
void SheetWidget::MovePixels() {
  for (const sheet::PixelMove& move : parts_->pixel_moves.Follow(*view_)) {
    if (move.IsDamage()) {
      Damaged(move.area);
    } else {
      MovePart(move.area, move.dx, move.dy);
    }
  }
}

void SheetWidget::MovePart(const sheet::Rect& part, int64_t dx, int64_t dy) {
  if (part.IsEmpty()) return;
  const double scale = ratio_;
  const auto whole = [&](int64_t pixels) { return std::fmod(static_cast<double>(pixels), scale) == 0.0; };
  const bool far = std::abs(dx) >= part.width || std::abs(dy) >= part.height;
  const bool fits = scale == std::floor(scale) && whole(dx) && whole(dy) && whole(part.x) && whole(part.y);
  if (far || !fits) {
    viewport()->update(ToLogical(part));
    return;
  }
  viewport()->scroll(static_cast<int>(dx / static_cast<int>(scale)), static_cast<int>(dy / static_cast<int>(scale)),
                     ToLogical(part));
}

void SheetWidget::CursorChanged(sheet::Cursor cursor) {
  switch (cursor) {
    case sheet::Cursor::kDefault:
      viewport()->unsetCursor();
      break;
    case sheet::Cursor::kColumnResize:
      viewport()->setCursor(Qt::SplitHCursor);
      break;
    case sheet::Cursor::kRowResize:
      viewport()->setCursor(Qt::SplitVCursor);
      break;
    case sheet::Cursor::kBusy:
      viewport()->setCursor(Qt::BusyCursor);
      break;
  }
}

}  // namespace stockbook::qt
