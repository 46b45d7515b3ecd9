// SPDX-License-Identifier: MIT
#include "sheet/store/column_texts.h"

#include <algorithm>
#include <bit>

namespace stockbook::sheet {
namespace {

using columns::RawKind;
using columns::RawRows;
using columns::TextPool;

// Beyond, the digits of a double's shortest text are fewer than its integer has.
constexpr int64_t kMostDoubleUnits = 1'000'000'000'000'000;

constexpr std::array<char, TextPool::kSlack> kNothing{};

}  // namespace

ColumnTexts::ColumnTexts(const Store& store, const SheetColumn& column)
    : store_(store),
      column_(column),
      loaded_(column.LoadedText()),
      formatted_(!column.format().IsEmpty()),
      formats_numbers_(column.format().FormatsNumbers(column.type())),
      plain_(formats_numbers_ ? column.format().plain() : std::optional(PlainNumber())),
      one_by_one_(loaded_ == nullptr || column.HasRecordTexts()) {}

std::span<const std::string_view> ColumnTexts::Read(int64_t first, size_t count) {
  count = std::min(count, kMostRecords);
  made_.clear();
  made_at_.clear();
  for (size_t done = 0; done < count;) done += ReadSome(static_cast<size_t>(first) + done, done, count - done);
  if (!made_at_.empty()) {
    made_.append(TextPool::kSlack, ' ');
    for (const Made& made : made_at_) texts_[made.record] = std::string_view(made_).substr(made.at, made.size);
  }
  return std::span(texts_).first(count);
}

size_t ColumnTexts::ReadSome(size_t record, size_t place, size_t count) {
  std::array<int64_t, kMostRecords> raw;
  RawRows rows;
  if (!one_by_one_) rows = loaded_->ReadRaw(record, std::span(raw).first(count));
  if (rows.count == 0) {
    MakeShown(record, place);
    return 1;
  }
  ReadRows(record, std::span(raw).first(rows.count), rows, place);
  return rows.count;
}

void ColumnTexts::ReadRows(size_t first, std::span<const int64_t> raw, const RawRows& rows, size_t place) {
  const bool pointed_at = rows.kind == RawKind::kText && !formatted_;
  for (size_t at = 0; at < raw.size(); ++at) {
    std::string_view& text = texts_[place + at];
    if (raw[at] == 0 && loaded_->IsNull(first + at)) {
      text = std::string_view(kNothing.data(), 0);
    } else if (pointed_at) {
      text = loaded_->TextOfCode(static_cast<uint32_t>(raw[at]));
      if (text.data() == nullptr) text = std::string_view(kNothing.data(), 0);
    } else if (at > 0 && raw[at] == raw[at - 1] && raw[at] != 0) {
      // A value equal to the previous row's is not formatted again.
      text = texts_[place + at - 1];
      if (!made_at_.empty() && made_at_.back().record == place + at - 1)
        made_at_.push_back({place + at, made_at_.back().at, made_at_.back().size});
    } else {
      char* const end = numbers_.data() + (place + at + 1) * PlainNumber::kMostBytes;
      if (const char* begin = WriteNumber(raw[at], rows, end)) {
        text = std::string_view(begin, static_cast<size_t>(end - begin));
      } else {
        MakeShown(first + at, place + at);
      }
    }
  }
}

char* ColumnTexts::WriteNumber(int64_t raw, const RawRows& rows, char* end) const {
  if (!plain_) return nullptr;
  if (rows.kind == RawKind::kDecimal) {
    return raw < kMostDoubleUnits && raw > -kMostDoubleUnits ? plain_->Write(raw, rows.decimals, end) : nullptr;
  }
  if (rows.kind != RawKind::kDouble) return nullptr;
  const auto number = std::bit_cast<double>(raw);
  return formats_numbers_ ? plain_->Write(number, end) : PlainNumber::WriteDefault(number, end);
}

void ColumnTexts::MakeShown(size_t record, size_t place) {
  const size_t begin = made_.size();
  store_.AppendDisplay(column_, static_cast<RowId>(record), made_);
  made_at_.push_back({place, begin, made_.size() - begin});
}

}  // namespace stockbook::sheet
