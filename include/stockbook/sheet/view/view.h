// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "stockbook/base/api.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/grid_observer.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/contents/sheet_watcher.h"
#include "stockbook/sheet/geometry/geometry.h"
#include "stockbook/sheet/selection/selection.h"
#include "stockbook/sheet/view/viewer.h"

namespace stockbook::sheet {

class ColumnAxis;
class RowAxis;

// A place in a sheet: size and scale, scroll position, current cell and selection, mouse and focus. A sheet may have
// several views. Each keeps its place when rows and columns are inserted or removed, and tells its viewer what has to
// be repainted. Input changes the sheet through a view. It borrows the sheet; making one costs O(runs + columns). If
// the sheet goes first, the viewer is told, and all that is left to do with the view is to destroy it.
class STOCKBOOK_API View final : private SheetWatcher {
 public:
  // 960 by 600 pixels at scale 1, with nothing scrolled and selected; the sheet outlives it or tells it.
  explicit View(Sheet& sheet);
  // A view at the same place in the same sheet, with another size and scale, and without viewer and observer.
  View(const View& other, Size size_px, double scale);
  ~View() override;
  View& operator=(const View&) = delete;

  // Not to be asked for once the viewer has heard ViewGone.
  Sheet& sheet() { return sheet_; }
  const Sheet& sheet() const { return sheet_; }

  // In device pixels; the scale is device pixels per pixel of 1/96 inch, kept between 1/16 and 64. Sizes below 0 count
  // as 0, and a scale that is no positive number changes none.
  void SetSize(Size size_px, double scale);
  Size size() const { return size_; }
  // Device pixels per pixel of 1/96 inch; 1 unless set.
  double scale() const;
  // How many columns from the left do not scroll, at least the fixed ones; -1: the fixed and frozen ones of the sheet.
  void SetPinnedCols(int columns);
  int PinnedCols() const;
  // As Sheet::PartOf, with this view's own pinned columns.
  CellPart PartOf(int row, int column) const;
  // Valid until the next change of the sheet or the view.
  Geometry geometry() const;
  // For painting; what it is is for the engine alone.
  const RowAxis& rows() const { return rows_; }

  // Both scroll as far as the contents go, by device pixels, and tell the viewer if that changes anything.
  void ScrollTo(ScrollPosition position);
  void ScrollBy(int64_t dx_px, int64_t dy_px);

  // Within the sheet, or -1 where it has no cells.
  const Selection& selection() const { return selection_; }
  // Where it is, and back there, without asking or telling the observer. Nothing outside the sheet is selected.
  class Place;
  // Both are about where it is, and back there, without asking or telling the observer. Nothing outside the sheet is
  // selected.
  Place KeepPlace() const;
  void PutBack(const Place& place);

  // Moves the current cell and the other corner, if the observer allows it; false if it refused.
  bool ChangeSelection(const Selection& selection);
  // See platform::GridView.
  void CopySelection(platform::Clipboard& clipboard);
  // The cell under the mouse, -1 if there is none (any more).
  CellPosition mouse_cell() const;
  void SetMouseCell(CellPosition cell) { mouse_cell_ = cell; }
  // The drop mark: a column that is being moved would be put before this column; -1 for no mark.
  void SetDropColumn(int column);
  int drop_column() const { return drop_column_; }
  // Whether the view has the keyboard focus, true unless set; the frame of the current cell shows it.
  void SetFocused(bool focused);
  bool focused() const { return focused_; }
  // kDefault unless set; the viewer shows every other one as a sign that the program is busy.
  void SetPointer(platform::MousePointer pointer);
  platform::MousePointer pointer() const { return pointer_; }

  // A view has one viewer; another one takes it over, and the one before hears ViewGone. nullptr leaves it without one,
  // unheard.
  void SetViewer(SheetViewer* viewer);
  SheetViewer* viewer() const { return viewer_; }
  // Hears and decides what the user does here; nullptr for nobody. The caller keeps it alive.
  void SetObserver(platform::GridObserver* observer) { observer_ = observer; }
  // If none is set, one that allows everything.
  platform::GridObserver& observer() { return observer_ != nullptr ? *observer_ : nobody_; }
  // Whether there is an observer other than the one that allows everything.
  bool IsObserved() const { return observer_ != nullptr; }
  // The copy key copies to it unless the observer copies; without one it does nothing.
  void SetClipboard(platform::Clipboard* clipboard) { clipboard_ = clipboard; }
  platform::Clipboard* clipboard() const { return clipboard_; }

  // O(runs + columns).
  bool CheckInvariants() const;
  // Approximate memory of the axes.
  size_t MemoryBytes() const;

 private:
  struct Axes;
  // The scroll position of the rows: a row and an offset into it, which survive changes of heights and of hidden rows.
  struct RowAnchor {
    int row = 0;
    int64_t offset_px = 0;
  };

  // SheetWatcher
  void RowsInserted(std::span<const int64_t> rows, int count) override;
  void RowsRemoved(int row, int count) override;
  void RowsReplaced() override;
  void FixedRowsChanged(int before) override;
  void RowsChanged() override;
  void ColumnsChanged() override;
  void CellsChanged(const platform::CellRange& range) override;
  void LooksChanged() override;
  void EverythingChanged() override;
  void NodeChanged(int row) override;
  void SheetGone() override;

  // If nothing is scrolled out of view at the top, new rows there come into view.
  bool IsAtTop(int fixed_rows) const { return anchor_.row == fixed_rows && anchor_.offset_px == 0; }
  // Moves the selection back into the sheet, and puts the current cell into a sheet that had no cells for it.
  void KeepSelectionInside();
  const ColumnAxis& columns() const;
  bool Reports() const { return sheet_.Redraw() && viewer_ != nullptr; }
  void DamageAll();
  void ScrollChanged();

  // The viewer hears nothing afterwards.
  void Leave();

  Sheet& sheet_;
  bool sheet_gone_ = false;
  std::unique_ptr<Axes> axes_;
  RowAxis& rows_;
  ColumnAxis& columns_;
  mutable bool columns_valid_ = false;
  Size size_{960, 600};
  int pinned_cols_ = -1;  // as the sheet says
  RowAnchor anchor_;
  int64_t scroll_x_ = 0;
  Selection selection_;
  CellPosition mouse_cell_;
  int drop_column_ = -1;
  bool focused_ = true;
  platform::MousePointer pointer_ = platform::MousePointer::kDefault;
  SheetViewer* viewer_ = nullptr;
  platform::GridObserver nobody_;
  platform::GridObserver* observer_ = nullptr;
  platform::Clipboard* clipboard_ = nullptr;
};

// The scroll position and the selection of a view.
class View::Place {
 private:
  friend class View;
  RowAnchor anchor_;
  int64_t scroll_x_ = 0;
  Selection selection_;
};

}  // namespace stockbook::sheet
