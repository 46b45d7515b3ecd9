// SPDX-License-Identifier: MIT
#include "sheet/store/store.h"

#include <algorithm>
#include <array>
#include <span>

#include "stockbook/platform/error.h"

namespace stockbook::sheet {
namespace {

using columns::Column;

size_t CommonSize(const std::vector<Column>& columns) {
  const size_t rows = columns.empty() ? 0 : columns.front().size();
  for (const Column& column : columns) {
    if (column.size() != rows) {
      throw platform::Error("Load", "The columns to load have different numbers of rows (" + std::to_string(rows) +
                                        " and " + std::to_string(column.size()) +
                                        "); hand over columns of one result.");
    }
  }
  return rows;
}

// Walks the texts of a column in row order and records where a different text begins.
class TextRunFinder {
 public:
  explicit TextRunFinder(const SheetColumn& column) : column_(column), loaded_(column.LoadedText()) {
    by_code_ = loaded_ != nullptr && loaded_->HasTextCodes() && !column.HasRecordTexts();
  }

  void Visit(int64_t row, int64_t count, RowId id) {
    if (by_code_ && id >= 0) {
      VisitCodes(row, count, id);
      return;
    }
    for (int64_t offset = 0; offset < count; ++offset) {
      std::string text;
      column_.AppendText(id >= 0 ? id + offset : id - offset, text);
      Note(row + offset, std::move(text));
    }
  }
  std::vector<Store::TextRun> Take() { return std::move(runs_); }

 private:
  void Note(int64_t row, std::string text) {
    if (runs_.empty() || runs_.back().text != text) runs_.push_back({row, std::move(text)});
  }

  // Comparing codes is enough; the texts need not be read.
  void VisitCodes(int64_t row, int64_t count, RowId id) {
    std::array<uint32_t, 4096> codes{};
    for (int64_t done = 0; done < count;) {
      const auto part = std::min<int64_t>(count - done, static_cast<int64_t>(codes.size()));
      loaded_->ReadTextCodes(static_cast<size_t>(id + done), std::span(codes).first(static_cast<size_t>(part)));
      for (int64_t at = 0; at < part; ++at) {
        const uint32_t code = codes[static_cast<size_t>(at)];
        if (at > 0 && code == codes[static_cast<size_t>(at - 1)]) continue;
        Note(row + done + at, std::string(loaded_->TextOfCode(code)));
      }
      done += part;
    }
  }

  const SheetColumn& column_;
  const Column* loaded_;
  bool by_code_ = false;
  std::vector<Store::TextRun> runs_;
};

}  // namespace

void Store::EraseCells(int row, int count) {
  const std::vector<RowIdRange> ids = order_.IdsOf(row, row + count);
  // A range of records may include records that were removed earlier; erasing those again is harmless.
  for (int column = 0; column < columns_.Count(); ++column) columns_.At(column).EraseRows(ids);
}

size_t Store::CheckColumns(const std::vector<Column>& columns, int fixed_rows) {
  const size_t rows = CommonSize(columns);
  if (rows + static_cast<size_t>(fixed_rows) > static_cast<size_t>(kMostRows)) {
    throw platform::Error(
        "Load", "The result has " + std::to_string(rows) + " rows, more than a grid can show; narrow the selection.");
  }
  return rows;
}

void Store::Load(std::vector<Column> columns, int first_column) {
  ForgetRecords();
  columns_.SetCount(std::max(columns_.Count(), first_column + static_cast<int>(columns.size())));
  const size_t rows = columns.empty() ? 0 : columns.front().size();
  std::vector<std::shared_ptr<const Column>> shared;
  shared.reserve(columns.size());
  for (Column& column : columns) shared.push_back(std::make_shared<const Column>(std::move(column)));
  order_.Reserve();
  for (auto& column : shared) columns_.At(first_column++).Load(std::move(column));
  records_ = rows;
  order_.AppendRecords(static_cast<int64_t>(rows));
}

void Store::KeepRecordsAsRows() {
  std::vector<std::pair<int64_t, int64_t>> pieces;
  order_.ForEachPiece(0, order_.Rows(), [&](int64_t row, int64_t count, RowId id) {
    if (id >= 0) pieces.emplace_back(row, count);
  });
  for (const auto& [first, count] : pieces) {
    const RowId from = order_.IdAt(first);
    order_.Reserve();
    order_.Renew(first, count);
    const RowId to = order_.IdAt(first);
    for (int column = 0; column < columns_.Count(); ++column) {
      for (int64_t row = 0; row < count; ++row) columns_.At(column).CopyRow(from + row, to - row);
    }
  }
}

void Store::ForgetRecords() {
  KeepRecordsAsRows();
  for (int column = 0; column < columns_.Count(); ++column) columns_.At(column).Unload();
  records_ = 0;
}

bool Store::CheckInvariants() const {
  if (!order_.CheckInvariants() || !columns_.CheckInvariants() || !styles_.CheckInvariants()) return false;
  const std::vector<RowIdRange> living = order_.LivingIds();
  if (!living.empty() && living.back().last > static_cast<RowId>(records_)) return false;
  for (int column = 0; column < columns_.Count(); ++column) {
    if (!columns_.At(column).CheckInvariants(living, records_, styles_.Count())) return false;
  }
  return true;
}

std::string Store::TextAt(int row, int column) const {
  std::string text;
  columns_.At(column).AppendText(order_.IdAt(row), text);
  return text;
}

std::string Store::DisplayAt(int row, int column) const {
  std::string text;
  AppendDisplay(columns_.At(column), order_.IdAt(row), text);
  return text;
}

void Store::AppendDisplay(const SheetColumn& column, RowId id, std::string& out) const {
  const CellContent content = column.ContentOf(id);
  if (content.column == nullptr) {
    if (!column.format().Append(column.type(), content.text, out)) out += content.text;
    return;
  }
  if (column.format().IsEmpty() || !column.format().Append(column.type(), content.column->At(content.record), out)) {
    content.column->AppendText(content.record, out);
  }
}

platform::PictureRef Store::PictureAt(const SheetColumn& column, RowId id,
                                      platform::PictureAlignment& alignment) const {
  const CellStyle& style = StyleAt(column, id);
  alignment = style.picture ? style.picture_alignment : column.pictures.alignment;
  return style.picture ? *style.picture : column.pictures.At(id);
}

void Store::SetLoadedPictures(int column, LoadedPictures pictures) {
  SheetColumn& target = columns_.At(column);
  target.pictures = std::move(pictures);
  target.styles.Update(0, static_cast<int64_t>(records_), [&](uint32_t code) {
    return styles_.Changed(code, [](CellStyle& style) {
      style.picture.reset();
      style.picture_alignment = {};
    });
  });
}

std::vector<Store::TextRun> Store::TextRuns(int column,
                                            const std::vector<std::pair<int64_t, int64_t>>& row_ranges) const {
  TextRunFinder finder(columns_.At(column));
  for (const auto& [first, last] : row_ranges) {
    order_.ForEachPiece(first, last, [&](int64_t row, int64_t count, RowId id) { finder.Visit(row, count, id); });
  }
  return finder.Take();
}

}  // namespace stockbook::sheet
