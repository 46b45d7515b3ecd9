// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clipboard.h"
#include "platform/grid.h"
#include "sheet/geometry/column_axis.h"
#include "sheet/geometry/geometry.h"
#include "sheet/geometry/row_axis.h"
#include "sheet/input/viewer.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/selection/selection.h"
#include "sheet/store/appearance.h"
#include "sheet/store/store.h"

namespace stockbook::sheet {

// The grid engine: composes store, outline, selection and geometry, and answers as platform::Grid. It knows no toolkit:
// a widget tells it its size and scale, forwards input, and paints a Snapshot of it. While redraw is off nobody is told
// of changes. Cell and row operations are O(log runs); a load costs O(columns), not O(rows).
class Sheet final : public platform::Grid {
 public:
  // How the sheet is laid out and what it is scrolled to. The rows are scrolled to a row and so far into it, which
  // outlives changes of heights and of what is shown.
  struct Layout {
    Size view{960, 600};
    double scale = 1.0;
    int top_row = 0;
    int64_t top_offset_px = 0;
    int64_t scroll_x_px = 0;
  };

  Sheet();
  ~Sheet() override;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  // GridCells
  std::string TextMatrix(int row, int column) const override;
  void SetTextMatrix(int row, int column, std::string_view text) override;
  int64_t TextRevision() const override { return text_revision_ + loaded_revision_; }
  double ValueMatrix(int row, int column) const override;
  base::Value CellData(int row, int column) const override;
  void SetCellData(int row, int column, base::Value data) override;
  std::string DisplayText(int row, int column) const override;
  std::string FormatValue(int column, const base::Value& value) const override;
  platform::PictureRef CellPicture(int row, int column) const;
  platform::PictureAlignment CellPictureAlignment(int row, int column) const;
  void SetCellPicture(const platform::CellRange& range, const platform::PictureRef& picture,
                      platform::PictureAlignment alignment) override;
  void SetCellAlignment(const platform::CellRange& range, platform::Alignment alignment) override;
  std::string CellFontName(int row, int column) const;
  void SetCellFontName(const platform::CellRange& range, std::string_view name) override;
  platform::Colour CellBackColor(int row, int column) const override;
  platform::Colour CellForeColor(int row, int column) const override;
  void SetCellColors(const platform::CellRange& range, platform::Colour back, platform::Colour fore) override;

  // GridColumns
  int Cols() const override { return store_.columns().Count(); }
  void SetCols(int count) override;
  int FixedCols() const override { return fixed_cols_; }
  void SetFixedCols(int count) override;
  int FrozenCols() const override { return frozen_cols_; }
  void SetFrozenCols(int count) override;
  int ColIndex(std::string_view key) const override { return store_.columns().IndexOf(key); }
  std::string ColKey(int column) const override;
  void SetColKey(int column, std::string_view key) override;
  void SetColPosition(int column, int position) override;
  int64_t ColRevision() const override { return column_revision_; }
  bool ColHidden(int column) const override;
  void SetColHidden(int column, bool hidden) override;
  platform::DataType ColDataType(int column) const override;
  void SetColDataType(int column, platform::DataType type) override;
  std::string ColFormat(int column) const override;
  void SetColFormat(int column, std::string_view format) override;
  int ColWidth(int column) const override;
  void SetColWidth(int column, int twips) override;
  platform::Alignment ColAlignment(int column) const;
  void SetColAlignment(int column, platform::Alignment alignment) override;

  // GridRows
  int Rows() const override { return store_.Rows(); }
  void SetRows(int count) override;
  int FixedRows() const override { return fixed_rows_; }
  void SetFixedRows(int count) override;
  void AddItem(std::string_view tab_text, int position) override;
  void RemoveItem(int row);
  int64_t Revision() const override { return revision_; }
  bool RowHidden(int row) const override;
  void SetRowHidden(int row, bool hidden) override;
  int RowHeight(int row) const override;
  void SetRowHeight(int row, int twips) override;
  float RowHeightMin() const override { return states_.heights().min_twips; }
  void SetRowHeightMin(float twips) override;
  float RowHeightMax() const override { return states_.heights().max_twips; }
  void SetRowHeightMax(float twips) override;

  // GridOutline
  void GroupBy(int column, int caption_column, std::string_view caption_format) override;
  void SetIsSubtotal(int row, bool subtotal) override;
  bool IsSubtotal(int row) const override;
  int NextSubtotal(int row) const override;
  int RowOutlineLevel(int row) const override;
  void SetRowOutlineLevel(int row, int level) override;
  bool IsCollapsed(int row) const override;
  void SetIsCollapsed(int row, bool collapsed) override;
  void CollapseAll(bool collapsed) override;
  int OutlineCol() const override { return outline_col_ < Cols() ? outline_col_ : -1; }
  void SetOutlineCol(int column) override;
  platform::OutlineBarStyle OutlineBar() const override { return appearance_.outline_bar; }
  void SetOutlineBar(platform::OutlineBarStyle style) override;
  platform::PictureRef NodeOpenPicture() const { return appearance_.node_open; }
  void SetNodeOpenPicture(const platform::PictureRef& picture) override;
  platform::PictureRef NodeClosedPicture() const { return appearance_.node_closed; }
  void SetNodeClosedPicture(const platform::PictureRef& picture) override;

  // GridBulk
  void LoadColumns(std::vector<columns::Column> columns, int first_column) override;
  size_t RecordCount() const override { return store_.RecordCount(); }
  int RowOfRecord(size_t record) const override;
  int64_t RecordOfRow(int row) const override;
  int RecordsFrom(int row) const override;
  int64_t LoadedRevision() const override { return loaded_revision_; }
  const columns::Column* LoadedText(int column) const override;
  const columns::Column* LoadedData(int column) const override;
  bool HasEditedRecords(int column) const override;
  void ReplaceLoaded(int column, columns::Column values) override;
  void ReplaceLoadedText(int column, columns::Column texts) override;
  void SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<platform::PictureRef> pictures,
                         platform::PictureAlignment alignment) override;

  // GridView
  int Row() const override { return selection_.current.row; }
  int Col() const override { return selection_.current.column; }
  void Select(int row, int column) override;
  int RowSel() const override { return selection_.end.row; }
  int ColSel() const override { return selection_.end.column; }
  void SelectRange(int row, int column, int row_sel, int col_sel);
  void CopySelection(platform::Clipboard& clipboard) override;
  int TopRow() const override { return geometry().TopRow(); }
  void SetTopRow(int row) override;
  int BottomRow() const override { return geometry().BottomRow(); }
  int LeftCol() const { return geometry().LeftCol(); }
  void SetLeftCol(int column);
  bool RowIsVisible(int row) const override { return geometry().RowIsVisible(row); }
  // The cell may have gone since the mouse moved.
  int MouseRow() const override { return HasRow(mouse_cell_.row) ? mouse_cell_.row : -1; }
  int MouseCol() const override { return HasColumn(mouse_cell_.column) ? mouse_cell_.column : -1; }
  bool Redraw() const override { return redraw_; }
  void SetRedraw(bool on) override;
  std::string Tag() const override { return tag_; }
  void SetTag(std::string_view tag) override { tag_ = tag; }
  platform::MousePointer Pointer() const override { return pointer_; }
  void SetPointer(platform::MousePointer pointer) override;
  void SetObserver(platform::GridObserver* observer) override { observer_ = observer; }

  // GridAppearance
  platform::Colour ColourOf(platform::GridColour which) const override { return appearance_.Of(which); }
  void SetColour(platform::GridColour which, platform::Colour colour) override;
  platform::GridLineStyle GridLines() const override { return appearance_.grid_lines; }
  void SetGridLines(platform::GridLineStyle style) override;
  platform::GridLineStyle GridLinesFixed() const override { return appearance_.grid_lines_fixed; }
  void SetGridLinesFixed(platform::GridLineStyle style) override;
  platform::ScrollBarsSetting ScrollBars() const override { return appearance_.scroll_bars; }
  void SetScrollBars(platform::ScrollBarsSetting setting) override;
  platform::Font GridFont() const override { return appearance_.font; }
  void SetGridFont(const platform::Font& font) override;

  // For the widget around it.
  void SetViewer(SheetViewer* viewer) { viewer_ = viewer; }
  // Device pixels of the view, and how many of them are one pixel of 96 to the inch.
  void SetView(Size view_px, double scale);
  // To lay the sheet out for something else than its view, and to come back to exactly where it was.
  Layout layout() const;
  void SetLayout(const Layout& layout);
  Size view() const { return view_; }
  double scale() const { return rows_.scale(); }
  // RowState::kDefaultHeight gives the row the height of all rows again.
  void SetOwnRowHeight(int row, int32_t height_twips);
  void ScrollTo(ScrollPosition position);
  void ScrollBy(int64_t dx_px, int64_t dy_px);
  void SetMouseCell(CellPosition cell) { mouse_cell_ = cell; }
  // Where a column that is being moved would go: before this column, -1 for no mark.
  void SetDropColumn(int column);
  int drop_column() const { return drop_column_; }
  // Where the copy key copies to when no observer does it; nowhere without one.
  void SetClipboard(platform::Clipboard* clipboard) { clipboard_ = clipboard; }
  platform::Clipboard* clipboard() const { return clipboard_; }
  // Whether keys come here: the frame of the current cell tells.
  void SetFocused(bool focused);
  bool focused() const { return focused_; }
  // Moves the current cell and the other corner and asks the observer; false when it refused.
  bool ChangeSelection(const Selection& selection);

  // For painting and input: the parts, read only. The geometry is good until the next change.
  Geometry geometry() const;
  const Store& store() const { return store_; }
  const RowStates& states() const { return states_; }
  const RowAxis& rows() const { return rows_; }
  const Outline& outline() const { return outline_; }
  const Selection& selection() const { return selection_; }
  const Appearance& appearance() const { return appearance_; }
  // Looks beyond the port: the tint of nodes, the colour of negative numbers, the accent.
  void SetAppearance(const Appearance& appearance);
  CellPart PartOf(int row, int column) const;
  int PinnedCols() const;
  // The first column behind the fixed ones that is not hidden; the first behind them where all are.
  int FirstShownColumn() const;
  // One that allows everything where nobody is set.
  platform::GridObserver& observer() { return observer_ != nullptr ? *observer_ : nobody_; }
  bool IsObserved() const { return observer_ != nullptr; }
  SheetViewer* viewer() const { return viewer_; }

  // Every part holds, and the parts agree: O(runs + cells set + columns).
  bool CheckInvariants() const;
  // About what the sheet takes beyond the loaded columns' own values: order, states, what was set on single cells,
  // picture codes, axes.
  size_t EngineBytes() const;

 private:
  static constexpr int kMostRows = Store::kMostRows;

  // Where the rows are scrolled to: a row and how far into it. It outlives changes of heights and of what is shown.
  struct RowAnchor {
    int row = 0;
    int64_t offset_px = 0;
  };

  bool HasRow(int row) const { return row >= 0 && row < Rows(); }
  bool HasColumn(int column) const { return column >= 0 && column < Cols(); }
  bool HasCell(int row, int column) const { return HasRow(row) && HasColumn(column); }
  void CheckRow(const char* operation, int row) const;
  void CheckColumn(const char* operation, int column) const;
  void CheckCell(const char* operation, int row, int column) const;
  void CheckRecords(const char* operation, int column, size_t count) const;
  // Throws for ranges outside of the grid; false for empty ones.
  bool CheckRange(const char* operation, const platform::CellRange& range) const;

  void InsertRows(int row, int count);
  void RemoveRows(int row, int count);
  void SetHeights(const RowHeights& heights);
  // Keeps the current cell and the selection within the grid; puts the current cell into a grid that had none.
  void KeepSelectionInside();
  const ColumnAxis& column_axis() const;
  void ColumnsChanged();
  void RowsChanged();
  void LooksChanged();
  void DamageCells(const platform::CellRange& range);
  void DamageAll();
  void ScrollChanged();

  platform::GridObserver nobody_;
  platform::GridObserver* observer_ = nullptr;
  Store store_;
  RowStates states_;
  Outline outline_{states_};
  RowAxis rows_{states_, 1.0};
  Selection selection_;
  Appearance appearance_;
  mutable ColumnAxis column_axis_;
  mutable bool column_axis_valid_ = false;
  Size view_{960, 600};
  RowAnchor anchor_;
  int64_t scroll_x_ = 0;
  int fixed_rows_ = 1;
  int fixed_cols_ = 1;
  int frozen_cols_ = 0;
  int outline_col_ = -1;
  CellPosition mouse_cell_;
  int drop_column_ = -1;
  int64_t revision_ = 0;
  int64_t loaded_revision_ = 0;
  int64_t text_revision_ = 0;
  int64_t column_revision_ = 0;
  bool redraw_ = true;
  bool focused_ = true;
  std::string tag_;
  platform::MousePointer pointer_ = platform::MousePointer::kDefault;
  SheetViewer* viewer_ = nullptr;
  platform::Clipboard* clipboard_ = nullptr;
};

}  // namespace stockbook::sheet
