// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "stockbook/platform/grid.h"
#include "support/faults.h"

namespace stockbook::testing {

// Stands before another grid and refuses its n-th call from when it is told to, or that of all ports with which it
// shares its faults. What ends an operation (redraw, tag, observer) is never refused.
class FaultyGrid : public platform::Grid {
 public:
  explicit FaultyGrid(platform::Grid& real) : real_(real), faults_(own_) {}
  FaultyGrid(platform::Grid& real, Faults& shared) : real_(real), faults_(shared) {}

  // 0 refuses nothing.
  void RefuseCall(int number) { faults_.FailCall(number); }
  // Whether the call came and was refused.
  bool HasRefused() const { return faults_.HasFailed(); }

  std::string TextMatrix(int row, int column) const override { return Asked().TextMatrix(row, column); }
  void SetTextMatrix(int row, int column, std::string_view text) override { Asked().SetTextMatrix(row, column, text); }
  int64_t TextRevision() const override { return Asked().TextRevision(); }
  double ValueMatrix(int row, int column) const override { return Asked().ValueMatrix(row, column); }
  base::Value CellData(int row, int column) const override { return Asked().CellData(row, column); }
  void SetCellData(int row, int column, base::Value data) override {
    Asked().SetCellData(row, column, std::move(data));
  }
  std::string DisplayText(int row, int column) const override { return Asked().DisplayText(row, column); }
  std::string FormatValue(int column, const base::Value& value) const override {
    return Asked().FormatValue(column, value);
  }
  void SetCellPicture(const platform::CellRange& range, const platform::PictureRef& picture,
                      platform::PictureAlignment alignment) override {
    Asked().SetCellPicture(range, picture, alignment);
  }
  void SetCellAlignment(const platform::CellRange& range, platform::Alignment alignment) override {
    Asked().SetCellAlignment(range, alignment);
  }
  void SetCellFontName(const platform::CellRange& range, std::string_view name) override {
    Asked().SetCellFontName(range, name);
  }
  platform::Colour CellBackColor(int row, int column) const override { return Asked().CellBackColor(row, column); }
  platform::Colour CellForeColor(int row, int column) const override { return Asked().CellForeColor(row, column); }
  void SetCellColors(const platform::CellRange& range, platform::Colour back, platform::Colour fore) override {
    Asked().SetCellColors(range, back, fore);
  }
  int Cols() const override { return Asked().Cols(); }
  void SetCols(int count) override { Asked().SetCols(count); }
  int FixedCols() const override { return Asked().FixedCols(); }
  void SetFixedCols(int count) override { Asked().SetFixedCols(count); }
  int FrozenCols() const override { return Asked().FrozenCols(); }
  void SetFrozenCols(int count) override { Asked().SetFrozenCols(count); }
  int ColIndex(std::string_view key) const override { return Asked().ColIndex(key); }
  std::string ColKey(int column) const override { return Asked().ColKey(column); }
  void SetColKey(int column, std::string_view key) override { Asked().SetColKey(column, key); }
  void SetColPosition(int column, int position) override { Asked().SetColPosition(column, position); }
  int64_t ColRevision() const override { return Asked().ColRevision(); }
  bool ColHidden(int column) const override { return Asked().ColHidden(column); }
  void SetColHidden(int column, bool hidden) override { Asked().SetColHidden(column, hidden); }
  platform::DataType ColDataType(int column) const override { return Asked().ColDataType(column); }
  void SetColDataType(int column, platform::DataType type) override { Asked().SetColDataType(column, type); }
  std::string ColFormat(int column) const override { return Asked().ColFormat(column); }
  void SetColFormat(int column, std::string_view format) override { Asked().SetColFormat(column, format); }
  int ColWidth(int column) const override { return Asked().ColWidth(column); }
  void SetColWidth(int column, int twips) override { Asked().SetColWidth(column, twips); }
  void SetColAlignment(int column, platform::Alignment alignment) override {
    Asked().SetColAlignment(column, alignment);
  }
  int Rows() const override { return Asked().Rows(); }
  void SetRows(int count) override { Asked().SetRows(count); }
  int FixedRows() const override { return Asked().FixedRows(); }
  void SetFixedRows(int count) override { Asked().SetFixedRows(count); }
  void AddItem(std::string_view tab_text, int position) override { Asked().AddItem(tab_text, position); }
  bool RowHidden(int row) const override { return Asked().RowHidden(row); }
  void SetRowHidden(int row, bool hidden) override { Asked().SetRowHidden(row, hidden); }
  void SetRowsHidden(int first, int last, bool hidden) override { Asked().SetRowsHidden(first, last, hidden); }
  int RowHeight(int row) const override { return Asked().RowHeight(row); }
  void SetRowHeight(int row, int twips) override { Asked().SetRowHeight(row, twips); }
  float RowHeightMin() const override { return Asked().RowHeightMin(); }
  void SetRowHeightMin(float twips) override { Asked().SetRowHeightMin(twips); }
  float RowHeightMax() const override { return Asked().RowHeightMax(); }
  void SetRowHeightMax(float twips) override { Asked().SetRowHeightMax(twips); }
  void GroupBy(int column, int caption_column, std::string_view caption_format) override {
    Asked().GroupBy(column, caption_column, caption_format);
  }
  void SetIsSubtotal(int row, bool subtotal) override { Asked().SetIsSubtotal(row, subtotal); }
  bool IsSubtotal(int row) const override { return Asked().IsSubtotal(row); }
  int NextSubtotal(int row) const override { return Asked().NextSubtotal(row); }
  int RowOutlineLevel(int row) const override { return Asked().RowOutlineLevel(row); }
  void SetRowOutlineLevel(int row, int level) override { Asked().SetRowOutlineLevel(row, level); }
  bool IsCollapsed(int row) const override { return Asked().IsCollapsed(row); }
  void SetIsCollapsed(int row, bool collapsed) override { Asked().SetIsCollapsed(row, collapsed); }
  int OutlineCol() const override { return Asked().OutlineCol(); }
  void SetOutlineCol(int column) override { Asked().SetOutlineCol(column); }
  platform::OutlineBarStyle OutlineBar() const override { return Asked().OutlineBar(); }
  void SetOutlineBar(platform::OutlineBarStyle style) override { Asked().SetOutlineBar(style); }
  void SetNodeOpenPicture(const platform::PictureRef& picture) override { Asked().SetNodeOpenPicture(picture); }
  void SetNodeClosedPicture(const platform::PictureRef& picture) override { Asked().SetNodeClosedPicture(picture); }
  void LoadColumns(std::vector<columns::Column> columns, int first_column) override {
    Asked().LoadColumns(std::move(columns), first_column);
  }
  size_t RecordCount() const override { return Asked().RecordCount(); }
  int RowOfRecord(size_t record) const override { return Asked().RowOfRecord(record); }
  int64_t RecordOfRow(int row) const override { return Asked().RecordOfRow(row); }
  int RecordsFrom(int row) const override { return Asked().RecordsFrom(row); }
  int64_t LoadedRevision() const override { return Asked().LoadedRevision(); }
  const columns::Column* LoadedText(int column) const override { return Asked().LoadedText(column); }
  const columns::Column* LoadedData(int column) const override { return Asked().LoadedData(column); }
  bool HasEditedRecords(int column) const override { return Asked().HasEditedRecords(column); }
  void ReplaceLoaded(int column, columns::Column values) override { Asked().ReplaceLoaded(column, std::move(values)); }
  void ReplaceLoadedText(int column, columns::Column texts) override {
    Asked().ReplaceLoadedText(column, std::move(texts));
  }
  void SetLoadedPictures(int column, std::vector<uint8_t> codes, std::vector<platform::PictureRef> pictures,
                         platform::PictureAlignment alignment) override {
    Asked().SetLoadedPictures(column, std::move(codes), std::move(pictures), alignment);
  }
  int Row() const override { return Asked().Row(); }
  int Col() const override { return Asked().Col(); }
  void Select(int row, int column) override { Asked().Select(row, column); }
  int RowSel() const override { return Asked().RowSel(); }
  int ColSel() const override { return Asked().ColSel(); }
  int TopRow() const override { return Asked().TopRow(); }
  void SetTopRow(int row) override { Asked().SetTopRow(row); }
  int BottomRow() const override { return Asked().BottomRow(); }
  bool RowIsVisible(int row) const override { return Asked().RowIsVisible(row); }
  int MouseRow() const override { return Asked().MouseRow(); }
  int MouseCol() const override { return Asked().MouseCol(); }
  bool Redraw() const override { return Asked().Redraw(); }
  void SetRedraw(bool on) override { real_.SetRedraw(on); }
  std::string Tag() const override { return Asked().Tag(); }
  void SetTag(std::string_view tag) override { real_.SetTag(tag); }
  platform::MousePointer Pointer() const override { return Asked().Pointer(); }
  void SetPointer(platform::MousePointer pointer) override { Asked().SetPointer(pointer); }
  void CopySelection(platform::Clipboard& clipboard) override { Asked().CopySelection(clipboard); }
  void SetObserver(platform::GridObserver* observer) override { real_.SetObserver(observer); }
  int64_t Revision() const override { return real_.Revision(); }
  void CollapseAll() override { Asked().CollapseAll(); }
  void ExpandAll() override { Asked().ExpandAll(); }
  platform::Colour ColourOf(platform::GridColour which) const override { return Asked().ColourOf(which); }
  void SetColour(platform::GridColour which, platform::Colour colour) override { Asked().SetColour(which, colour); }
  platform::GridLineStyle GridLines() const override { return Asked().GridLines(); }
  void SetGridLines(platform::GridLineStyle style) override { Asked().SetGridLines(style); }
  platform::GridLineStyle GridLinesFixed() const override { return Asked().GridLinesFixed(); }
  void SetGridLinesFixed(platform::GridLineStyle style) override { Asked().SetGridLinesFixed(style); }
  platform::ScrollBarsSetting ScrollBars() const override { return Asked().ScrollBars(); }
  void SetScrollBars(platform::ScrollBarsSetting setting) override { Asked().SetScrollBars(setting); }
  platform::Font GridFont() const override { return Asked().GridFont(); }
  void SetGridFont(const platform::Font& font) override { Asked().SetGridFont(font); }

 private:
  platform::Grid& Asked(const char* call = __builtin_FUNCTION()) const {
    faults_.Meet(call);
    return real_;
  }

  platform::Grid& real_;
  Faults own_{"the grid refuses"};
  Faults& faults_;
};

}  // namespace stockbook::testing
