// SPDX-License-Identifier: MIT
#include "sheet/contents/row_texts.h"

#include <algorithm>

#include "sheet/store/store.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::sheet {

RowTexts::RowTexts(const Sheet& sheet, const std::vector<int>& columns)
    : sheet_(sheet), row_(columns.size()), made_(columns.size()) {
  for (const int column : columns) {
    columns_.push_back(&sheet.store().columns().At(column));
    readers_.push_back(std::make_unique<ColumnTexts>(sheet.store(), *columns_.back()));
  }
}

int RowTexts::ForEachRow(int first, int last, const TakeRow& take) {
  int64_t taken = 0;
  wanted_ = true;
  sheet_.store().order().ForEachPiece(first, last, [&](int64_t, int64_t count, RowId id) {
    if (!wanted_) return;
    taken += id >= 0 ? ReadRecords(count, id, take) : ReadInserted(count, id, take);
  });
  return first + static_cast<int>(taken);
}

std::string_view RowTexts::WithSlack(std::string& text) {
  const size_t size = text.size();
  text.append(kSlack, ' ');
  return std::string_view(text).substr(0, size);
}

// Column by column, a block of rows at a time.
int64_t RowTexts::ReadRecords(int64_t count, RowId first, const TakeRow& take) {
  for (int64_t done = 0; done < count;) {
    const auto block = std::min<size_t>(static_cast<size_t>(count - done), ColumnTexts::kMostRecords);
    blocks_.clear();
    for (auto& reader : readers_) blocks_.push_back(reader->Read(first + done, block));
    for (size_t at = 0; at < block; ++at) {
      for (size_t column = 0; column < row_.size(); ++column) row_[column] = blocks_[column][at];
      wanted_ = take(row_);
      ++done;
      if (!wanted_) return done;
    }
  }
  return count;
}

// Their ids go down.
int64_t RowTexts::ReadInserted(int64_t count, RowId first, const TakeRow& take) {
  for (int64_t done = 0; done < count;) {
    for (size_t column = 0; column < row_.size(); ++column) {
      made_[column].clear();
      sheet_.store().AppendDisplay(*columns_[column], first - done, made_[column]);
      row_[column] = WithSlack(made_[column]);
    }
    wanted_ = take(row_);
    ++done;
    if (!wanted_) return done;
  }
  return count;
}

}  // namespace stockbook::sheet
