// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/sheet/contents/sheet_watcher.h"
#include "stockbook/sheet/store/appearance.h"

namespace stockbook::sheet {

class Outline;
class RowStates;
class Store;
struct KeptSheet;
struct RowHeights;
struct SheetRevisions;

// The contents of a grid: cells, columns, rows, outline, formats and looks. It knows no size, scale, scroll position or
// selection: these belong to its views (see View), of which it may have any number. While redraw is off, the views
// report nothing. Cell and row operations are O(log runs); a load costs O(columns), not O(rows). Its functions are
// final so that the engine's own calls are direct.
class STOCKBOOK_API Sheet : public virtual platform::GridTable,
                            public virtual platform::GridOutline,
                            public virtual platform::GridAppearance {
 public:
  // One fixed row, one fixed column, and nothing else.
  Sheet();
  // Its views let go of it; see View.
  ~Sheet() override;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  // GridCells
  std::string TextMatrix(int row, int column) const final;
  void SetTextMatrix(int row, int column, std::string_view text) final;
  int64_t TextRevision() const final;
  double ValueMatrix(int row, int column) const final;
  base::Value CellData(int row, int column) const final;
  void SetCellData(int row, int column, base::Value data) final;
  std::string DisplayText(int row, int column) const final;
  std::string FormatValue(int column, const base::Value& value) const final;
  // Both are what the cell was given, or its record; nullptr and kLeftTop where there is none, and outside of the grid.
  platform::PictureRef CellPicture(int row, int column) const;
  platform::PictureAlignment CellPictureAlignment(int row, int column) const;
  void SetCellPicture(const platform::CellRange& range, const platform::PictureRef& picture,
                      platform::PictureAlignment alignment) final;
  void SetCellAlignment(const platform::CellRange& range, platform::Alignment alignment) final;
  // The grid's where the cell has none of its own, and outside of the grid.
  std::string CellFontName(int row, int column) const;
  void SetCellFontName(const platform::CellRange& range, std::string_view name) final;
  platform::Colour CellBackColor(int row, int column) const final;
  platform::Colour CellForeColor(int row, int column) const final;
  void SetCellColors(const platform::CellRange& range, platform::Colour back, platform::Colour fore) final;

  // GridColumns
  int Cols() const final;
  void SetCols(int count) final;
  int FixedCols() const final { return fixed_cols_; }
  void SetFixedCols(int count) final;
  int FrozenCols() const final { return frozen_cols_; }
  void SetFrozenCols(int count) final;
  int ColIndex(std::string_view key) const final;
  std::string ColKey(int column) const final;
  void SetColKey(int column, std::string_view key) final;
  void SetColPosition(int column, int position) final;
  int64_t ColRevision() const final;
  bool ColHidden(int column) const final;
  void SetColHidden(int column, bool hidden) final;
  platform::DataType ColDataType(int column) const final;
  void SetColDataType(int column, platform::DataType type) final;
  std::string ColFormat(int column) const final;
  void SetColFormat(int column, std::string_view format) final;
  int ColWidth(int column) const final;
  void SetColWidth(int column, int twips) final;
  // kGeneral unless set. Throws platform::Error for a column that is not there.
  platform::Alignment ColAlignment(int column) const;
  void SetColAlignment(int column, platform::Alignment alignment) final;

  // GridRows
  int Rows() const final;
  void SetRows(int count) final;
  int FixedRows() const final { return fixed_rows_; }
  void SetFixedRows(int count) final;
  void AddItem(std::string_view tab_text, int position) final;
  // Takes a data row out, at no cost to the rows after it. Throws platform::Error for a fixed row or one that is not
  // there.
  void RemoveItem(int row);
  int64_t Revision() const final;
  bool RowHidden(int row) const final;
  void SetRowHidden(int row, bool hidden) final;
  void SetRowsHidden(int first, int last, bool hidden) final;
  int RowHeight(int row) const final;
  void SetRowHeight(int row, int twips) final;
  float RowHeightMin() const final;
  void SetRowHeightMin(float twips) final;
  float RowHeightMax() const final;
  void SetRowHeightMax(float twips) final;

  // GridOutline
  void GroupBy(int column, int caption_column, std::string_view caption_format) final;
  void SetIsSubtotal(int row, bool subtotal) final;
  bool IsSubtotal(int row) const final;
  int NextSubtotal(int row) const final;
  int RowOutlineLevel(int row) const final;
  void SetRowOutlineLevel(int row, int level) final;
  bool IsCollapsed(int row) const final;
  void SetIsCollapsed(int row, bool collapsed) final;
  void CollapseAll() final;
  void ExpandAll() final;
  int OutlineCol() const final { return outline_col_ < Cols() ? outline_col_ : -1; }
  void SetOutlineCol(int column) final;
  platform::OutlineBarStyle OutlineBar() const final { return appearance_.outline_bar; }
  void SetOutlineBar(platform::OutlineBarStyle style) final;
  // nullptr unless set.
  platform::PictureRef NodeOpenPicture() const { return appearance_.node_open; }
  void SetNodeOpenPicture(const platform::PictureRef& picture) final;
  // nullptr unless set.
  platform::PictureRef NodeClosedPicture() const { return appearance_.node_closed; }
  void SetNodeClosedPicture(const platform::PictureRef& picture) final;

  // GridBulk
  void LoadColumns(std::vector<columns::Column> columns, int first_column) final;
  size_t RecordCount() const final;
  int RowOfRecord(size_t record) const final;
  int64_t RecordOfRow(int row) const final;
  int RecordsFrom(int row) const final;
  int64_t LoadedRevision() const final;
  const columns::Column* LoadedText(int column) const final;
  const columns::Column* LoadedData(int column) const final;
  bool HasEditedRecords(int column) const final;
  void ReplaceLoaded(int column, columns::Column values) final;
  void ReplaceLoadedText(int column, columns::Column texts) final;
  // See platform::GridBulk.
  void SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<platform::PictureRef> pictures,
                         platform::PictureAlignment alignment) final;

  // GridAppearance
  platform::Colour ColourOf(platform::GridColour which) const final { return appearance_.Of(which); }
  void SetColour(platform::GridColour which, platform::Colour colour) final;
  platform::GridLineStyle GridLines() const final { return appearance_.grid_lines; }
  void SetGridLines(platform::GridLineStyle style) final;
  platform::GridLineStyle GridLinesFixed() const final { return appearance_.grid_lines_fixed; }
  void SetGridLinesFixed(platform::GridLineStyle style) final;
  platform::ScrollBarsSetting ScrollBars() const final { return appearance_.scroll_bars; }
  void SetScrollBars(platform::ScrollBarsSetting setting) final;
  platform::Font GridFont() const final { return appearance_.font; }
  void SetGridFont(const platform::Font& font) final;

  // Off while many changes are made at once; on again, it tells the views once that anything may have changed.
  bool Redraw() const { return redraw_; }
  void SetRedraw(bool on);
  // As SetRowHeight for one row, but RowState::kDefaultHeight (-1) restores the default height, and the height is taken
  // as it is. Throws platform::Error for a row that is not there.
  void SetOwnRowHeight(int row, int32_t height_twips);
  // Both are about all that it holds but its looks: kept, and put back with its revisions; views are where they are
  // when rows are loaded.
  KeptSheet KeepContents() const;
  void PutBackContents(KeptSheet kept);
  // Includes what the port lacks: the colours of nodes and of negative numbers, the accent.
  void SetAppearance(const Appearance& appearance);

  // These are read only, for views and painting; what they are is for the engine alone.
  const Store& store() const { return store_; }
  const RowStates& states() const { return states_; }
  const Outline& outline() const { return outline_; }
  // All of the looks by their values; SetAppearance takes it back.
  const Appearance& appearance() const { return appearance_; }
  // Fixed and hidden ones included.
  bool HasRow(int row) const { return row >= 0 && row < Rows(); }
  // Fixed and hidden ones included.
  bool HasColumn(int column) const { return column >= 0 && column < Cols(); }
  // By its place alone, whether there is such a cell or not.
  CellPart PartOf(int row, int column) const;
  // Fixed and frozen columns together.
  int PinnedCols() const;
  // The first column after the fixed ones that is not hidden, or simply the first after them if all are hidden.
  int FirstShownColumn() const;

  // The caller keeps it alive until it is removed or hears SheetGone; one that is added twice hears all twice.
  void AddWatcher(SheetWatcher* watcher) { watchers_.push_back(watcher); }
  // Nothing for one that was not added.
  void RemoveWatcher(SheetWatcher* watcher) { std::erase(watchers_, watcher); }

  // The parts are valid and agree with each other. O(runs + cells set + columns).
  bool CheckInvariants() const;
  // Approximate memory beyond the values of the loaded columns: order, states, what was set on single cells, picture
  // codes.
  size_t EngineBytes() const;

 protected:
  // These throw platform::Error with the operation's name for what is not there.
  void CheckRow(const char* operation, int row) const;
  void CheckColumn(const char* operation, int column) const;
  void CheckCell(const char* operation, int row, int column) const;

 private:
  struct Parts;

  bool HasCell(int row, int column) const { return HasRow(row) && HasColumn(column); }
  void CheckRecords(const char* operation, int column, size_t count) const;
  // Throws if the range is outside the grid. False if it is empty.
  bool CheckRange(const char* operation, const platform::CellRange& range) const;

  // If there is no memory for one of these, the rows are as they were.
  void InsertRows(int row, int count);
  void RemoveRows(int row, int count);
  // The same without telling anybody. What the cells of the rows held may be gone even if there is no memory.
  void DropRows(int row, int count);
  void ReplaceRows(std::vector<columns::Column> columns, int first_column);
  // Tells of changes that `work` makes, even if it makes some of them and fails.
  template <typename Work, typename Told>
  void Telling(Work work, Told told) {
    try {
      work();
    } catch (...) {
      told();
      throw;
    }
    told();
  }
  void SetHeights(const RowHeights& heights);
  // Watchers may be added or removed during the calls.
  template <typename Call>
  void Tell(Call call) {
    for (size_t at = 0; at < watchers_.size(); ++at) call(*watchers_[at]);
  }
  // A number that no state has had: those of a state that is put back come back, and what was between stays gone.
  void Renew(int64_t& revision) { revision = ++last_revision_; }
  void ColumnsChanged();
  void RowsChanged();
  void LooksChanged();
  void CellsChanged(const platform::CellRange& range);
  void EverythingChanged();

  std::unique_ptr<Parts> parts_;
  Store& store_;
  RowStates& states_;
  Outline& outline_;
  SheetRevisions& revisions_;
  Appearance appearance_;
  int fixed_rows_ = 1;
  int fixed_cols_ = 1;
  int frozen_cols_ = 0;
  int outline_col_ = -1;
  int64_t last_revision_ = 0;
  bool redraw_ = true;
  std::vector<SheetWatcher*> watchers_;
};

}  // namespace stockbook::sheet
