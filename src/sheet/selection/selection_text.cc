// SPDX-License-Identifier: MIT
#include "sheet/selection/selection_text.h"

#include <algorithm>
#include <vector>

#include "sheet/sheet.h"

namespace stockbook::sheet {
namespace {

class SelectionWriter {
 public:
  explicit SelectionWriter(const Sheet& sheet) : sheet_(sheet), range_(sheet.selection().Range()) {
    for (int column = range_.column1; column < range_.column2; ++column) {
      if (!sheet.ColHidden(column)) columns_.push_back(&sheet.store().columns().At(column));
    }
  }

  std::string Write() {
    constexpr size_t kUsualCell = 12;
    text_.reserve(static_cast<size_t>(std::max(range_.row2 - range_.row1, 0)) * columns_.size() * kUsualCell);
    AddCaptions();
    sheet_.states().ForEachRun(range_.row1, range_.row2, [&](int64_t first, int64_t count, const RowState& state) {
      if (state.IsShown()) AddRows(first, first + count);
      return true;
    });
    return std::move(text_);
  }

 private:
  void AddCaptions() {
    const bool captioned = sheet_.Rows() > 0;
    std::string caption;
    for (const SheetColumn* column : columns_) {
      caption.clear();
      if (captioned) column->AppendText(sheet_.store().order().IdAt(0), caption);
      std::erase_if(caption, [](char c) { return c == '\r' || c == '\n'; });
      text_ += caption;
      EndCell(*column);
    }
    text_ += "\r\n";
  }

  void AddRows(int64_t first, int64_t last) {
    sheet_.store().order().ForEachPiece(first, last, [&](int64_t row, int64_t count, RowId id) {
      for (int64_t offset = 0; offset < count; ++offset) {
        AddRow(static_cast<int>(row + offset), id >= 0 ? id + offset : id - offset);
      }
    });
  }

  void AddRow(int row, RowId id) {
    const bool caption = row < sheet_.FixedRows();
    for (const SheetColumn* column : columns_) {
      if (caption) {
        column->AppendText(id, text_);
      } else {
        sheet_.store().AppendDisplay(*column, id, text_);
      }
      EndCell(*column);
    }
    if (row + 1 < range_.row2) text_ += "\r\n";
  }

  void EndCell(const SheetColumn& column) {
    if (column.position + 1 < range_.column2) text_ += '\t';
  }

  const Sheet& sheet_;
  platform::CellRange range_;
  std::vector<const SheetColumn*> columns_;
  std::string text_;
};

}  // namespace

std::string SelectionText(const Sheet& sheet) { return SelectionWriter(sheet).Write(); }

}  // namespace stockbook::sheet
