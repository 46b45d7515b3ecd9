// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "platform/error.h"
#include "platform/grid.h"

namespace stockbook::testing {

// A grid before another one, which refuses the call that it is told to: its n-th from now on. Switching redraw and
// setting the tag always work.
class FaultyGrid : public platform::Grid {
 public:
  explicit FaultyGrid(platform::Grid& real) : real_(real) {}

  // 0 refuses nothing.
  void RefuseCall(int number) { left_ = number; }
  // Whether the call came and was refused.
  bool HasRefused() const { return refused_; }

  std::string TextMatrix(int row, int column) const override {
    Count();
    return real_.TextMatrix(row, column);
  }
  void SetTextMatrix(int row, int column, std::string_view text) override {
    Count();
    real_.SetTextMatrix(row, column, text);
  }
  int64_t TextRevision() const override {
    Count();
    return real_.TextRevision();
  }
  double ValueMatrix(int row, int column) const override {
    Count();
    return real_.ValueMatrix(row, column);
  }
  base::Value CellData(int row, int column) const override {
    Count();
    return real_.CellData(row, column);
  }
  void SetCellData(int row, int column, base::Value data) override {
    Count();
    real_.SetCellData(row, column, std::move(data));
  }
  std::string DisplayText(int row, int column) const override {
    Count();
    return real_.DisplayText(row, column);
  }
  std::string FormatValue(int column, const base::Value& value) const override {
    Count();
    return real_.FormatValue(column, value);
  }
  platform::PictureRef CellPicture(int row, int column) const override {
    Count();
    return real_.CellPicture(row, column);
  }
  platform::PictureAlignment CellPictureAlignment(int row, int column) const override {
    Count();
    return real_.CellPictureAlignment(row, column);
  }
  void SetCellPicture(const platform::CellRange& range, const platform::PictureRef& picture,
                      platform::PictureAlignment alignment) override {
    Count();
    real_.SetCellPicture(range, picture, alignment);
  }
  void SetCellAlignment(const platform::CellRange& range, platform::Alignment alignment) override {
    Count();
    real_.SetCellAlignment(range, alignment);
  }
  std::string CellFontName(int row, int column) const override {
    Count();
    return real_.CellFontName(row, column);
  }
  void SetCellFontName(const platform::CellRange& range, std::string_view name) override {
    Count();
    real_.SetCellFontName(range, name);
  }
  platform::Colour CellBackColor(int row, int column) const override {
    Count();
    return real_.CellBackColor(row, column);
  }
  platform::Colour CellForeColor(int row, int column) const override {
    Count();
    return real_.CellForeColor(row, column);
  }
  void SetCellColors(const platform::CellRange& range, platform::Colour back, platform::Colour fore) override {
    Count();
    real_.SetCellColors(range, back, fore);
  }
  int Cols() const override {
    Count();
    return real_.Cols();
  }
  void SetCols(int count) override {
    Count();
    real_.SetCols(count);
  }
  int FixedCols() const override {
    Count();
    return real_.FixedCols();
  }
  void SetFixedCols(int count) override {
    Count();
    real_.SetFixedCols(count);
  }
  int FrozenCols() const override {
    Count();
    return real_.FrozenCols();
  }
  void SetFrozenCols(int count) override {
    Count();
    real_.SetFrozenCols(count);
  }
  int ColIndex(std::string_view key) const override {
    Count();
    return real_.ColIndex(key);
  }
  std::string ColKey(int column) const override {
    Count();
    return real_.ColKey(column);
  }
  void SetColKey(int column, std::string_view key) override {
    Count();
    real_.SetColKey(column, key);
  }
  void SetColPosition(int column, int position) override {
    Count();
    real_.SetColPosition(column, position);
  }
  int64_t ColRevision() const override {
    Count();
    return real_.ColRevision();
  }
  bool ColHidden(int column) const override {
    Count();
    return real_.ColHidden(column);
  }
  void SetColHidden(int column, bool hidden) override {
    Count();
    real_.SetColHidden(column, hidden);
  }
  platform::DataType ColDataType(int column) const override {
    Count();
    return real_.ColDataType(column);
  }
  void SetColDataType(int column, platform::DataType type) override {
    Count();
    real_.SetColDataType(column, type);
  }
  std::string ColFormat(int column) const override {
    Count();
    return real_.ColFormat(column);
  }
  void SetColFormat(int column, std::string_view format) override {
    Count();
    real_.SetColFormat(column, format);
  }
  int ColWidth(int column) const override {
    Count();
    return real_.ColWidth(column);
  }
  void SetColWidth(int column, int twips) override {
    Count();
    real_.SetColWidth(column, twips);
  }
  platform::Alignment ColAlignment(int column) const override {
    Count();
    return real_.ColAlignment(column);
  }
  void SetColAlignment(int column, platform::Alignment alignment) override {
    Count();
    real_.SetColAlignment(column, alignment);
  }
  int Rows() const override {
    Count();
    return real_.Rows();
  }
  void SetRows(int count) override {
    Count();
    real_.SetRows(count);
  }
  int FixedRows() const override {
    Count();
    return real_.FixedRows();
  }
  void SetFixedRows(int count) override {
    Count();
    real_.SetFixedRows(count);
  }
  void AddItem(std::string_view tab_text, int position) override {
    Count();
    real_.AddItem(tab_text, position);
  }
  void RemoveItem(int row) override {
    Count();
    real_.RemoveItem(row);
  }
  bool RowHidden(int row) const override {
    Count();
    return real_.RowHidden(row);
  }
  void SetRowHidden(int row, bool hidden) override {
    Count();
    real_.SetRowHidden(row, hidden);
  }
  int RowHeight(int row) const override {
    Count();
    return real_.RowHeight(row);
  }
  void SetRowHeight(int row, int twips) override {
    Count();
    real_.SetRowHeight(row, twips);
  }
  float RowHeightMin() const override {
    Count();
    return real_.RowHeightMin();
  }
  void SetRowHeightMin(float twips) override {
    Count();
    real_.SetRowHeightMin(twips);
  }
  float RowHeightMax() const override {
    Count();
    return real_.RowHeightMax();
  }
  void SetRowHeightMax(float twips) override {
    Count();
    real_.SetRowHeightMax(twips);
  }
  void GroupBy(int column, int caption_column, std::string_view caption_format) override {
    Count();
    real_.GroupBy(column, caption_column, caption_format);
  }
  void SetIsSubtotal(int row, bool subtotal) override {
    Count();
    real_.SetIsSubtotal(row, subtotal);
  }
  bool IsSubtotal(int row) const override {
    Count();
    return real_.IsSubtotal(row);
  }
  int NextSubtotal(int row) const override {
    Count();
    return real_.NextSubtotal(row);
  }
  int RowOutlineLevel(int row) const override {
    Count();
    return real_.RowOutlineLevel(row);
  }
  void SetRowOutlineLevel(int row, int level) override {
    Count();
    real_.SetRowOutlineLevel(row, level);
  }
  bool IsCollapsed(int row) const override {
    Count();
    return real_.IsCollapsed(row);
  }
  void SetIsCollapsed(int row, bool collapsed) override {
    Count();
    real_.SetIsCollapsed(row, collapsed);
  }
  int OutlineCol() const override {
    Count();
    return real_.OutlineCol();
  }
  void SetOutlineCol(int column) override {
    Count();
    real_.SetOutlineCol(column);
  }
  platform::OutlineBarStyle OutlineBar() const override {
    Count();
    return real_.OutlineBar();
  }
  void SetOutlineBar(platform::OutlineBarStyle style) override {
    Count();
    real_.SetOutlineBar(style);
  }
  platform::PictureRef NodeOpenPicture() const override {
    Count();
    return real_.NodeOpenPicture();
  }
  void SetNodeOpenPicture(const platform::PictureRef& picture) override {
    Count();
    real_.SetNodeOpenPicture(picture);
  }
  platform::PictureRef NodeClosedPicture() const override {
    Count();
    return real_.NodeClosedPicture();
  }
  void SetNodeClosedPicture(const platform::PictureRef& picture) override {
    Count();
    real_.SetNodeClosedPicture(picture);
  }
  void LoadColumns(std::vector<columns::Column> columns, int first_column) override {
    Count();
    real_.LoadColumns(std::move(columns), first_column);
  }
  size_t RecordCount() const override {
    Count();
    return real_.RecordCount();
  }
  int RowOfRecord(size_t record) const override {
    Count();
    return real_.RowOfRecord(record);
  }
  int64_t RecordOfRow(int row) const override {
    Count();
    return real_.RecordOfRow(row);
  }
  int RecordsFrom(int row) const override {
    Count();
    return real_.RecordsFrom(row);
  }
  int64_t LoadedRevision() const override {
    Count();
    return real_.LoadedRevision();
  }
  const columns::Column* LoadedText(int column) const override {
    Count();
    return real_.LoadedText(column);
  }
  const columns::Column* LoadedData(int column) const override {
    Count();
    return real_.LoadedData(column);
  }
  bool HasEditedRecords(int column) const override {
    Count();
    return real_.HasEditedRecords(column);
  }
  void ReplaceLoaded(int column, columns::Column values) override {
    Count();
    real_.ReplaceLoaded(column, std::move(values));
  }
  void ReplaceLoadedText(int column, columns::Column texts) override {
    Count();
    real_.ReplaceLoadedText(column, std::move(texts));
  }
  void SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<platform::PictureRef> pictures,
                         platform::PictureAlignment alignment) override {
    Count();
    real_.SetLoadedPictures(column, std::move(codes), std::move(pictures), alignment);
  }
  int Row() const override {
    Count();
    return real_.Row();
  }
  int Col() const override {
    Count();
    return real_.Col();
  }
  void Select(int row, int column) override {
    Count();
    real_.Select(row, column);
  }
  int RowSel() const override {
    Count();
    return real_.RowSel();
  }
  int ColSel() const override {
    Count();
    return real_.ColSel();
  }
  void SelectRange(int row, int column, int row_sel, int col_sel) override {
    Count();
    real_.SelectRange(row, column, row_sel, col_sel);
  }
  int TopRow() const override {
    Count();
    return real_.TopRow();
  }
  void SetTopRow(int row) override {
    Count();
    real_.SetTopRow(row);
  }
  int BottomRow() const override {
    Count();
    return real_.BottomRow();
  }
  int LeftCol() const override {
    Count();
    return real_.LeftCol();
  }
  void SetLeftCol(int column) override {
    Count();
    real_.SetLeftCol(column);
  }
  bool RowIsVisible(int row) const override {
    Count();
    return real_.RowIsVisible(row);
  }
  int MouseRow() const override {
    Count();
    return real_.MouseRow();
  }
  int MouseCol() const override {
    Count();
    return real_.MouseCol();
  }
  bool Redraw() const override {
    Count();
    return real_.Redraw();
  }
  void SetRedraw(bool on) override { real_.SetRedraw(on); }
  std::string Tag() const override {
    Count();
    return real_.Tag();
  }
  void SetTag(std::string_view tag) override { real_.SetTag(tag); }
  platform::MousePointer Pointer() const override {
    Count();
    return real_.Pointer();
  }
  void SetPointer(platform::MousePointer pointer) override {
    Count();
    real_.SetPointer(pointer);
  }
  std::string SelectionText() const override {
    Count();
    return real_.SelectionText();
  }
  void SetGridObserver(platform::GridObserver* observer) override { real_.SetGridObserver(observer); }
  int64_t Revision() const override { return real_.Revision(); }
  void CollapseAll(bool collapsed) override {
    Count();
    real_.CollapseAll(collapsed);
  }
  platform::Colour ColourOf(platform::GridColour which) const override {
    Count();
    return real_.ColourOf(which);
  }
  void SetColour(platform::GridColour which, platform::Colour colour) override {
    Count();
    real_.SetColour(which, colour);
  }
  platform::GridLineStyle GridLines() const override {
    Count();
    return real_.GridLines();
  }
  void SetGridLines(platform::GridLineStyle style) override {
    Count();
    real_.SetGridLines(style);
  }
  platform::GridLineStyle GridLinesFixed() const override {
    Count();
    return real_.GridLinesFixed();
  }
  void SetGridLinesFixed(platform::GridLineStyle style) override {
    Count();
    real_.SetGridLinesFixed(style);
  }
  platform::ScrollBarsSetting ScrollBars() const override {
    Count();
    return real_.ScrollBars();
  }
  void SetScrollBars(platform::ScrollBarsSetting setting) override {
    Count();
    real_.SetScrollBars(setting);
  }
  platform::Font GridFont() const override {
    Count();
    return real_.GridFont();
  }
  void SetGridFont(const platform::Font& font) override {
    Count();
    real_.SetGridFont(font);
  }

 private:
  void Count() const {
    if (left_ == 0 || --left_ > 0) return;
    refused_ = true;
    throw platform::Error("grid", "the grid refuses");
  }

  platform::Grid& real_;
  mutable int left_ = 0;
  mutable bool refused_ = false;
};

}  // namespace stockbook::testing
