// SPDX-License-Identifier: MIT
#include "sheet/selection/selection_text.h"

#include <algorithm>
#include <cstring>
#include <future>
#include <memory>
#include <span>
#include <string_view>
#include <thread>
#include <vector>

#include "base/text.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/column_texts.h"
#include "sheet/store/store.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::sheet {
namespace {

constexpr int64_t kCellsWorthAWorker = 100'000;
constexpr int64_t kMostWorkers = 4;

// The selected cells. Without a current row only their columns; without a current column all columns.
platform::CellRange CopiedRange(const Sheet& sheet, const Selection& selection) {
  if (selection.current.row >= 0 && selection.current.column >= 0) return selection.Range();
  if (selection.current.column < 0) return {0, std::min(sheet.FixedCols(), sheet.Cols()), 0, sheet.Cols()};
  return {0, std::min(selection.current.column, selection.end.column), 0,
          std::max(selection.current.column, selection.end.column) + 1};
}

class SelectionWriter {
 public:
  SelectionWriter(const Sheet& sheet, const platform::CellRange& range) : sheet_(sheet), range_(range) {
    for (int column = range_.column1; column < range_.column2; ++column) {
      if (sheet.ColHidden(column)) continue;
      columns_.push_back(&sheet.store().columns().At(column));
      readers_.push_back(std::make_unique<ColumnTexts>(sheet.store(), *columns_.back()));
      ends_cell_.push_back(column + 1 < range_.column2 ? 1 : 0);
    }
  }

  std::string WriteCaptions() {
    AddCaptions();
    return std::move(text_);
  }
  // Rows [first, last) of the selection.
  std::string WriteRows(int first, int last) {
    constexpr size_t kUsualCell = 12;
    text_.reserve(static_cast<size_t>(std::max(last - first, 0)) * columns_.size() * kUsualCell);
    sheet_.states().ForEachRun(first, last, [&](int64_t row, int64_t count, const RowState& state) {
      if (state.IsShown()) AddRows(row, row + count);
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
      text_ += base::OneLine(caption, "");
      EndCell(*column);
    }
    text_ += "\r\n";
  }

  void AddRows(int64_t first, int64_t last) {
    sheet_.store().order().ForEachPiece(first, last, [&](int64_t row, int64_t count, RowId id) {
      if (id >= 0 && row >= sheet_.FixedRows()) {
        AddRecords(static_cast<int>(row), count, id);
        return;
      }
      for (int64_t offset = 0; offset < count; ++offset) {
        AddRow(static_cast<int>(row + offset), id >= 0 ? id + offset : id - offset);
      }
    });
  }

  // Column by column, a block of rows at a time.
  void AddRecords(int row, int64_t count, RowId first) {
    for (int64_t done = 0; done < count;) {
      const auto block = std::min<size_t>(static_cast<size_t>(count - done), ColumnTexts::kMostRecords);
      blocks_.clear();
      for (auto& reader : readers_) blocks_.push_back(reader->Read(first + done, block));
      AddBlock(row + static_cast<int>(done), block);
      done += static_cast<int64_t>(block);
    }
  }

  // Short texts are copied at a fixed length, with the bytes that follow them; the next text, or the slack at the end,
  // overwrites those.
  void AddBlock(int row, size_t rows) {
    constexpr size_t kSlack = columns::TextPool::kSlack;
    const size_t begin = text_.size();
    size_t most = kSlack + rows * (columns_.size() + 2);
    for (const auto& texts : blocks_) {
      for (const std::string_view text : texts) most += text.size();
    }
    text_.resize(begin + most);
    char* to = text_.data() + begin;
    for (size_t at = 0; at < rows; ++at) {
      for (size_t column = 0; column < blocks_.size(); ++column) {
        const std::string_view text = blocks_[column][at];
        if (text.size() <= kSlack) {
          std::memcpy(to, text.data(), kSlack);
        } else {
          std::memcpy(to, text.data(), text.size());
        }
        to += text.size();
        *to = '\t';
        to += ends_cell_[column];
      }
      if (row + static_cast<int>(at) + 1 < range_.row2) {
        *to++ = '\r';
        *to++ = '\n';
      }
    }
    text_.resize(static_cast<size_t>(to - text_.data()));
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
    EndRow(row);
  }

  void EndRow(int row) {
    if (row + 1 < range_.row2) text_ += "\r\n";
  }
  void EndCell(const SheetColumn& column) {
    if (column.position + 1 < range_.column2) text_ += '\t';
  }

  const Sheet& sheet_;
  platform::CellRange range_;
  std::vector<const SheetColumn*> columns_;
  std::vector<std::unique_ptr<ColumnTexts>> readers_;  // one for each column
  std::vector<std::span<const std::string_view>> blocks_;
  std::vector<uint8_t> ends_cell_;  // 1 if a tab follows the column's cells
  std::string text_;
};

}  // namespace

std::string SelectionText(const Sheet& sheet, const Selection& selection) {
  const platform::CellRange range = CopiedRange(sheet, selection);
  const int64_t cells = int64_t{range.row2 - range.row1} * (range.column2 - range.column1);
  const int64_t workers = std::clamp<int64_t>(std::thread::hardware_concurrency(), 1, kMostWorkers);
  const int parts = cells < kCellsWorthAWorker ? 1 : static_cast<int>(workers);
  const auto begin_of = [&](int part) {
    return range.row1 + static_cast<int>(int64_t{range.row2 - range.row1} * part / parts);
  };
  // The sheet does not change meanwhile: only this thread changes it, and it waits.
  std::vector<std::future<std::string>> others;
  for (int part = 1; part < parts; ++part) {
    others.push_back(std::async(std::launch::async | std::launch::deferred,
                                [&sheet, &range, first = begin_of(part), last = begin_of(part + 1)] {
                                  return SelectionWriter(sheet, range).WriteRows(first, last);
                                }));
  }
  std::string text = SelectionWriter(sheet, range).WriteCaptions();
  text += SelectionWriter(sheet, range).WriteRows(begin_of(0), begin_of(1));
  for (std::future<std::string>& other : others) text += other.get();
  return text;
}

}  // namespace stockbook::sheet
