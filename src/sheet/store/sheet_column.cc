// SPDX-License-Identifier: MIT
#include "sheet/store/sheet_column.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <limits>

#include "base/decimal.h"
#include "base/number.h"

namespace stockbook::sheet {
namespace {

using columns::Column;

constexpr int64_t kExactDoubles = int64_t{1} << 53;

bool IsLoaded(const Column* column, RowId id) {
  return column != nullptr && id >= 0 && static_cast<size_t>(id) < column->size();
}

// Of a text it reads nothing, since it is asked where nothing may fail: a value of a text takes memory.
bool HoldsNumbers(const Column& column) noexcept {
  if (column.size() == 0 || !column.HoldsNumbersOnly()) return false;
  const auto constant = column.ConstantValue();
  return !(constant && constant->IsNull());
}

constexpr auto kIsOfRecord = [](const auto& cell) { return cell.first >= 0; };

template <typename Map>
void EraseIds(Map& cells, RowIdRange ids) {
  if (cells.empty()) return;
  if (static_cast<size_t>(ids.last - ids.first) < cells.size()) {
    for (RowId id = ids.first; id < ids.last; ++id) cells.erase(id);
  } else {
    std::erase_if(cells, [&](const auto& cell) { return cell.first >= ids.first && cell.first < ids.last; });
  }
}

// The number that the value's text spells. The text is not made if it is known to spell the same number.
double NumberOfText(const base::Value& value) {
  if (const auto* whole = value.As<int64_t>(); whole != nullptr && std::abs(*whole) <= kExactDoubles) {
    return static_cast<double>(*whole);
  }
  if (const auto* money = value.As<base::Money>(); money != nullptr && std::abs(money->units()) <= kExactDoubles) {
    return money->ToDouble();
  }
  if (const auto* number = value.As<double>(); number != nullptr && base::ShortDecimalUnits(*number)) return *number;
  if (value.IsNull() || value.As<base::Date>() != nullptr) return 0;
  return base::NumericValue(value.Text());
}

}  // namespace

void SheetColumn::SetType(platform::DataType type) {
  set_type_ = type;
  FindType();
}

void SheetColumn::SetFormat(std::string_view format) {
  format_ = CellFormat(format);
  FindType();
}

void SheetColumn::FindType() {
  const auto implied = [&] {
    if (const auto shown = format_.ShownType()) return *shown;
    return loaded_text_ != nullptr && HoldsNumbers(*loaded_text_) ? platform::DataType::kDouble
                                                                  : platform::DataType::kString;
  };
  type_ = set_type_ ? *set_type_ : implied();
}

CellContent SheetColumn::ContentOf(RowId id) const {
  if (!texts_.empty()) {
    if (const auto found = texts_.find(id); found != texts_.end()) return {nullptr, 0, found->second};
  }
  if (!IsLoaded(loaded_text_.get(), id)) return {};
  return {loaded_text_.get(), static_cast<size_t>(id), {}};
}

void SheetColumn::AppendText(RowId id, std::string& out) const {
  const CellContent content = ContentOf(id);
  if (content.column != nullptr) {
    content.column->AppendText(content.record, out);
  } else {
    out += content.text;
  }
}

double SheetColumn::NumberOf(RowId id) const {
  const CellContent content = ContentOf(id);
  return content.column != nullptr ? NumberOfText(content.column->At(content.record))
                                   : base::NumericValue(content.text);
}

base::Value SheetColumn::DataOf(RowId id) const {
  if (!data_.empty()) {
    if (const auto found = data_.find(id); found != data_.end()) return found->second;
  }
  return IsLoaded(loaded_data_.get(), id) ? loaded_data_->At(static_cast<size_t>(id)) : base::Value();
}

void SheetColumn::SetText(RowId id, std::string_view text) {
  if (text.empty() && !IsLoaded(loaded_text_.get(), id)) {
    texts_.erase(id);
    return;
  }
  texts_.insert_or_assign(id, std::string(text));
}

void SheetColumn::SetData(RowId id, base::Value data) {
  if (data.IsNull() && !IsLoaded(loaded_data_.get(), id)) {
    data_.erase(id);
    return;
  }
  data_.insert_or_assign(id, std::move(data));
}

void SheetColumn::Load(std::shared_ptr<const Column> values) {
  std::erase_if(data_, kIsOfRecord);
  loaded_data_ = values;
  LoadText(std::move(values));
}

void SheetColumn::LoadText(std::shared_ptr<const Column> texts) {
  std::erase_if(texts_, kIsOfRecord);
  loaded_text_ = std::move(texts);
  FindType();
}

bool SheetColumn::HasRecordTexts() const { return std::any_of(texts_.begin(), texts_.end(), kIsOfRecord); }

bool SheetColumn::HasEditedRecords() const {
  return HasRecordTexts() || std::any_of(data_.begin(), data_.end(), kIsOfRecord);
}

void SheetColumn::EraseRows(const std::vector<RowIdRange>& ids) {
  for (const RowIdRange& range : ids) {
    EraseIds(texts_, range);
    EraseIds(data_, range);
    if (!styles.IsEmpty()) styles.Erase(range.first, range.last);
  }
}

void SheetColumn::Unload() {
  LoadText(nullptr);
  loaded_data_.reset();
  std::erase_if(data_, kIsOfRecord);
  pictures = LoadedPictures();
  // Styles may have been set on records in between that had already gone; new records must not inherit them.
  if (!styles.IsEmpty()) styles.Erase(0, std::numeric_limits<RowId>::max());
}

void SheetColumn::CopyRow(RowId from, RowId to) {
  std::string text;
  AppendText(from, text);
  SetText(to, text);
  SetData(to, DataOf(from));
  const uint32_t style = styles.At(from);
  styles.Update(to, to + 1, [style](uint32_t) { return style; });
}

bool SheetColumn::CheckInvariants(const std::vector<RowIdRange>& living, size_t records, size_t style_count) const {
  // The rows [first, last) are all alive; for records it is enough that all are known.
  const auto alive = [&](RowId first, RowId last) {
    const auto after = std::upper_bound(living.begin(), living.end(), first,
                                        [](RowId id, const RowIdRange& range) { return id < range.first; });
    return after != living.begin() && last <= std::prev(after)->last;
  };
  const auto cell_alive = [&](const auto& cell) { return alive(cell.first, cell.first + 1); };
  const auto sized = [&](const Column* loaded) { return loaded == nullptr || loaded->size() == records; };
  const bool styled = styles.CheckInvariants() && styles.ForEach([&](RowId first, RowId last, uint32_t code) {
    if (code >= style_count || last > static_cast<RowId>(records)) return false;
    return first >= 0 || alive(first, std::min<RowId>(last, 0));
  });
  return styled && sized(loaded_text_.get()) && sized(loaded_data_.get()) &&
         (pictures.codes.size() == 0 || pictures.codes.size() == records) &&
         std::all_of(texts_.begin(), texts_.end(), cell_alive) && std::all_of(data_.begin(), data_.end(), cell_alive);
}

size_t SheetColumn::MemoryBytes() const {
  constexpr size_t kHashNode = 2 * sizeof(void*);
  const auto hashed = [](const auto& cells) {
    return cells.empty() ? 0 : cells.size() * (sizeof(*cells.begin()) + kHashNode) + cells.bucket_count() * kHashNode;
  };
  size_t bytes =
      sizeof(SheetColumn) + styles.MemoryBytes() + pictures.codes.MemoryBytes() + hashed(texts_) + hashed(data_);
  for (const auto& [id, text] : texts_) bytes += text.capacity();
  return bytes;
}

}  // namespace stockbook::sheet
