// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QBasicTimer>
#include <QHelpEvent>
#include <QPointF>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/geometry/text_measure.h"
#include "stockbook/sheet/view/viewer.h"

namespace stockbook::sheet {
class GridSheet;
class Sheet;
class View;
}  // namespace stockbook::sheet

namespace stockbook::qt {

// Shows a sheet: repaints its damaged parts, moves pixels when it scrolls, maintains the scroll bars and forwards keys,
// mouse and wheel. While the sheet's redraw is off, the last frame stays. If the view or its sheet goes first, the
// widget shows a sheet of its own without rows and columns from then on; only inside of an event that the widget has
// passed on to them they must stay.
class STOCKBOOK_API SheetWidget : public QAbstractScrollArea, private sheet::SheetViewer, private sheet::TextMeasure {
  Q_OBJECT

 public:
  // Shows a grid of its own, in the font that the widget has when it is made and with the desktop's clipboard.
  explicit SheetWidget(QWidget* parent = nullptr);
  // Shows the view of a sheet that the host has. Events for screen readers go to the toolkit unless another receiver is
  // set.
  explicit SheetWidget(sheet::View& view, QWidget* parent = nullptr,
                       QAccessible::UpdateHandler tell = &QAccessible::updateAccessibility);
  ~SheetWidget() override;

  // The grid of its own; throws platform::Error where the widget was made for a view.
  sheet::GridSheet& grid() const;
  // The view that is shown; when the host's is gone, one of the widget's own.
  sheet::View& view() const { return *view_; }
  // The sheet of that view.
  sheet::Sheet& sheet() const;
  // Both convert between device pixels of the view and logical pixels of the screen; FromScreen gives nothing for
  // points outside the view.
  QRect ToScreen(const sheet::Rect& rect) const;
  std::optional<sheet::Point> FromScreen(QPoint point) const;
  // How large the sheet is shown, 1 being its own size, from 0.5 to 3; other values become the nearest of these, and
  // NaN changes nothing. Setting it ends a drag of the mouse.
  double zoom() const { return zoom_; }
  void SetZoom(double zoom);
  // Gives every shown column after the fixed ones the width that its texts need, captions and rows out of view
  // included, but at most the width of the view: call it when rows were loaded and the widget has its size. Of a long
  // sheet it asks rows spread over the whole of it, some ten thousand at most, whatever their number.
  void FitColumns();
  // Where on the screen a menu opens, in logical pixels: at the mouse, or below the cell if a key asked for it.
  QPoint MenuPlace() const;

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Parts;

  SheetWidget(std::unique_ptr<sheet::GridSheet> grid, QWidget* parent);
  // As the right button on the current cell, or with Ctrl on its caption; false if nobody listens.
  bool OpenMenu(Qt::KeyboardModifiers modifiers);
  // sheet::SheetViewer
  void Damaged(const sheet::Rect& area) override;
  void ScrollChanged() override;
  void CursorChanged(sheet::Cursor cursor) override;
  void SelectionChanged() override;
  void NodeChanged(int row) override;
  void ViewGone() override;
  sheet::TextMeasure* Measure() override { return this; }
  // sheet::TextMeasure
  int TextWidth(const platform::Font& font, std::string_view line) override;
  int LineHeight(const platform::Font& font) override;

  // Makes the view the one that is shown.
  void Show(sheet::View& view);
  double Scale() const { return viewport()->devicePixelRatioF(); }
  void PaintView(QPainter& painter, const QRegion& region, const sheet::View& view, double ratio);
  // The size of the viewport in pixels of the scale.
  sheet::Size SizeAt(double scale) const;
  // Gives the view the size of the viewport.
  void FitView();
  void UpdateBars();
  void ShowTip(const QHelpEvent& event);
  // Ends the current mouse drag.
  void LetGo();
  void KeepAutoScrolling();
  void MovePixels();
  void MovePart(const sheet::Rect& part, int64_t dx, int64_t dy);
  QRect ToLogical(const sheet::Rect& rect) const;

  std::unique_ptr<Parts> parts_;
  sheet::View* view_ = nullptr;
  QBasicTimer auto_scroll_;
  double zoom_ = 1.0;
  double ratio_ = 1.0;  // pixels of the view in a logical one
  QPointF wheel_rest_;  // fractions of a pixel left over from the wheel
  bool menu_by_key_ = false;
  bool updating_bars_ = false;
};

}  // namespace stockbook::qt
