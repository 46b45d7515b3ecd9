// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

#include "platform/clipboard.h"
#include "platform/grid_observer.h"
#include "sheet/contents/sheet.h"
#include "sheet/contents/sheet_watcher.h"
#include "sheet/geometry/column_axis.h"
#include "sheet/geometry/geometry.h"
#include "sheet/geometry/row_axis.h"
#include "sheet/selection/selection.h"
#include "sheet/view/viewer.h"

namespace stockbook::sheet {

// Where somebody is in a sheet: size and scale, scroll position, current cell and selection, mouse and focus. A sheet
// may have several views; each keeps its place when rows and columns come and go, and tells its viewer what has to be
// painted again. Input changes the sheet through its view. It borrows the sheet; making one costs O(runs + columns).
class View final : private SheetWatcher {
 public:
  // The columns that are not scrolled: the fixed and the frozen ones, or the fixed ones alone.
  enum class Pins { kFrozen, kFixed };

  explicit View(Sheet& sheet);
  // At the same place in the same sheet, of another size and scale. Nobody hears of it.
  View(const View& other, Size size_px, double scale);
  ~View() override;
  View& operator=(const View&) = delete;

  Sheet& sheet() { return sheet_; }
  const Sheet& sheet() const { return sheet_; }

  // Device pixels, and how many of them are one pixel of 96 to the inch.
  void SetSize(Size size_px, double scale);
  Size size() const { return size_; }
  double scale() const { return rows_.scale(); }
  void SetPins(Pins pins);
  int PinnedCols() const;
  CellPart PartOf(int row, int column) const;
  // Good until the next change of the sheet or the view.
  Geometry geometry() const;
  const RowAxis& rows() const { return rows_; }

  void ScrollTo(ScrollPosition position);
  void ScrollBy(int64_t dx_px, int64_t dy_px);

  const Selection& selection() const { return selection_; }
  // Moves the current cell and the other corner and asks the observer; false when it refused.
  bool ChangeSelection(const Selection& selection);
  // See platform::GridView.
  void CopySelection(platform::Clipboard& clipboard);
  // The cell under the mouse; -1 where there is none, as it may have gone since the mouse moved.
  CellPosition mouse_cell() const;
  void SetMouseCell(CellPosition cell) { mouse_cell_ = cell; }
  // Where a column that is being moved would go: before this column, -1 for no mark.
  void SetDropColumn(int column);
  int drop_column() const { return drop_column_; }
  // Whether keys come here: the frame of the current cell shows it.
  void SetFocused(bool focused);
  bool focused() const { return focused_; }
  void SetPointer(platform::MousePointer pointer);
  platform::MousePointer pointer() const { return pointer_; }

  void SetViewer(SheetViewer* viewer) { viewer_ = viewer; }
  SheetViewer* viewer() const { return viewer_; }
  void SetObserver(platform::GridObserver* observer) { observer_ = observer; }
  // One that allows everything where nobody is set.
  platform::GridObserver& observer() { return observer_ != nullptr ? *observer_ : nobody_; }
  bool IsObserved() const { return observer_ != nullptr; }
  // Where the copy key copies to when no observer does it; nowhere without one.
  void SetClipboard(platform::Clipboard* clipboard) { clipboard_ = clipboard; }
  platform::Clipboard* clipboard() const { return clipboard_; }

  // O(runs + columns).
  bool CheckInvariants() const;
  // What the axes take.
  size_t MemoryBytes() const { return rows_.MemoryBytes() + columns_.MemoryBytes(); }

 private:
  // Where the rows are scrolled to: a row and how far into it. It outlives changes of heights and of what is shown.
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

  // Whether nothing is scrolled away, so that new rows at the top come into view.
  bool IsAtTop(int fixed_rows) const { return anchor_.row == fixed_rows && anchor_.offset_px == 0; }
  // Keeps the current cell and the selection within the grid; puts the current cell into a grid that had none.
  void KeepSelectionInside();
  const ColumnAxis& columns() const;
  bool Reports() const { return sheet_.Redraw() && viewer_ != nullptr; }
  void DamageAll();
  void ScrollChanged();

  Sheet& sheet_;
  RowAxis rows_;
  mutable ColumnAxis columns_;
  mutable bool columns_valid_ = false;
  Size size_{960, 600};
  Pins pins_ = Pins::kFrozen;
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

}  // namespace stockbook::sheet
