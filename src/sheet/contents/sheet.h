// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/grid_appearance.h"
#include "platform/grid_outline.h"
#include "platform/grid_table.h"
#include "sheet/contents/sheet_watcher.h"
#include "sheet/outline/outline.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/appearance.h"
#include "sheet/store/store.h"

namespace stockbook::sheet {

// The contents of a grid: cells, columns, rows, outline, formats and looks. It knows no size, scale, scroll position or
// selection: these belong to its views (see View), of which it may have any number. While redraw is off, the views
// report nothing. Cell and row operations are O(log runs); a load costs O(columns), not O(rows).
class Sheet : public virtual platform::GridTable,
              public virtual platform::GridOutline,
              public virtual platform::GridAppearance {
 public:
  Sheet();
  ~Sheet() override = default;
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

  // Off while many changes are made at once.
  bool Redraw() const { return redraw_; }
  void SetRedraw(bool on);
  // RowState::kDefaultHeight restores the default height.
  void SetOwnRowHeight(int row, int32_t height_twips);
  // Includes what the port lacks: the colours of nodes and of negative numbers, the accent.
  void SetAppearance(const Appearance& appearance);

  // Read only, for views and painting.
  const Store& store() const { return store_; }
  const RowStates& states() const { return states_; }
  const Outline& outline() const { return outline_; }
  const Appearance& appearance() const { return appearance_; }
  bool HasRow(int row) const { return row >= 0 && row < Rows(); }
  bool HasColumn(int column) const { return column >= 0 && column < Cols(); }
  CellPart PartOf(int row, int column) const;
  // Fixed and frozen columns together.
  int PinnedCols() const;
  // The first column after the fixed ones that is not hidden, or simply the first after them if all are hidden.
  int FirstShownColumn() const;

  // A watcher must be removed before the sheet is destroyed.
  void AddWatcher(SheetWatcher* watcher) { watchers_.push_back(watcher); }
  void RemoveWatcher(SheetWatcher* watcher) { std::erase(watchers_, watcher); }

  // The parts are valid and agree with each other. O(runs + cells set + columns).
  bool CheckInvariants() const;
  // Approximate memory beyond the values of the loaded columns: order, states, what was set on single cells, picture
  // codes.
  size_t EngineBytes() const { return store_.MemoryBytes() + states_.MemoryBytes() + sizeof(Sheet); }

 protected:
  // Throw platform::Error with the operation's name.
  void CheckRow(const char* operation, int row) const;
  void CheckColumn(const char* operation, int column) const;
  void CheckCell(const char* operation, int row, int column) const;

 private:
  static constexpr int kMostRows = Store::kMostRows;

  bool HasCell(int row, int column) const { return HasRow(row) && HasColumn(column); }
  void CheckRecords(const char* operation, int column, size_t count) const;
  // Throws if the range is outside the grid. False if it is empty.
  bool CheckRange(const char* operation, const platform::CellRange& range) const;

  void InsertRows(int row, int count);
  void RemoveRows(int row, int count);
  void SetHeights(const RowHeights& heights);
  // Watchers may be added or removed during the calls.
  template <typename Call>
  void Tell(Call call) {
    for (size_t at = 0; at < watchers_.size(); ++at) call(*watchers_[at]);
  }
  void ColumnsChanged();
  void RowsChanged();
  void LooksChanged();
  void CellsChanged(const platform::CellRange& range);
  void EverythingChanged();

  Store store_;
  RowStates states_;
  Outline outline_{states_};
  Appearance appearance_;
  int fixed_rows_ = 1;
  int fixed_cols_ = 1;
  int frozen_cols_ = 0;
  int outline_col_ = -1;
  int64_t revision_ = 0;
  int64_t loaded_revision_ = 0;
  int64_t text_revision_ = 0;
  int64_t column_revision_ = 0;
  bool redraw_ = true;
  std::vector<SheetWatcher*> watchers_;
};

}  // namespace stockbook::sheet
