// SPDX-License-Identifier: MIT
#include "databases/execution/row_sorter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <numeric>

namespace stockbook::databases {
namespace {

// Reading a whole column at once pays off if a good part of it is needed.
constexpr size_t kBulkShare = 8;
constexpr uint64_t kTopBit = uint64_t{1} << 63;

// The next eight bytes as a number with the order of the bytes; zeros, which no clean text has, follow the end.
uint64_t EightBytes(std::string_view text, size_t depth) {
  unsigned char bytes[8] = {};
  if (depth < text.size()) std::memcpy(bytes, text.data() + depth, std::min<size_t>(8, text.size() - depth));
  uint64_t key = 0;
  for (const unsigned char byte : bytes) key = key << 8 | byte;
  return key;
}

uint64_t KeyOfWhole(int64_t whole) {
  if (whole == INT64_MIN) throw NotCovered{};  // null uses its key
  return static_cast<uint64_t>(whole) ^ kTopBit;
}

uint64_t KeyOfDouble(double number) {
  const auto bits = std::bit_cast<uint64_t>(number == 0 ? 0.0 : number);
  return (bits & kTopBit) != 0 ? ~bits : bits | kTopBit;
}

}  // namespace

class RowSorter::CodeReader {
 public:
  explicit CodeReader(const columns::Column& column) : column_(column) {}
  // Without it the codes are read one at a time, as they are asked for.
  void ReadAll() {
    codes_.resize(column_.size());
    column_.ReadTextCodes(0, codes_);
  }
  uint32_t CodeAt(uint32_t cell) const {
    if (!codes_.empty()) return codes_[cell];
    uint32_t code = 0;
    column_.ReadTextCodes(cell, {&code, 1});
    return code;
  }
  std::string_view TextAt(uint32_t cell) const { return column_.TextOfCode(CodeAt(cell)); }

 private:
  const columns::Column& column_;
  std::vector<uint32_t> codes_;
};

// Keys of numbers, money or dates; one kind for the whole column.
class RowSorter::NumberReader {
 public:
  explicit NumberReader(const columns::Column& column) : column_(column) {}
  uint64_t KeyAt(uint32_t cell) {
    const base::Value value = column_.At(cell);
    const size_t kind = value.variant().index();
    if (kind == 0) return 0;
    if (kind_ == 0) kind_ = kind;
    if (kind != kind_) throw NotCovered{};
    if (const auto* whole = value.As<int64_t>()) return KeyOfWhole(*whole);
    if (const auto* money = value.As<base::Money>()) return KeyOfWhole(money->units());
    if (const auto* date = value.As<base::Date>()) return KeyOfWhole(date->seconds());
    if (const auto* number = value.As<double>()) return KeyOfDouble(*number);
    throw NotCovered{};
  }

 private:
  const columns::Column& column_;
  size_t kind_ = 0;
};

RowSorter::RowSorter(size_t rows) : order_(rows) {
  std::iota(order_.begin(), order_.end(), 0U);
  if (rows > 1) ties_.emplace_back(0, rows);
}

size_t RowSorter::TiedRows() const {
  size_t rows = 0;
  for (const auto& [begin, end] : ties_) rows += end - begin;
  return rows;
}

bool RowSorter::SameCell(const Group& group, const Cells& cells) const {
  const uint32_t first = cells.at[order_[group.first]];
  for (size_t at = group.first + 1; at < group.second; ++at) {
    if (cells.at[order_[at]] != first) return false;
  }
  return true;
}

void RowSorter::Refine(const Cells& cells, Direction direction) {
  if (ties_.empty()) return;
  next_ties_.clear();
  const bool texts = cells.column->HasTextCodes();
  CodeReader codes(*cells.column);
  if (texts && TiedRows() > cells.column->size() / kBulkShare) codes.ReadAll();
  NumberReader numbers(*cells.column);
  for (const Group& group : ties_) {
    if (SameCell(group, cells)) {
      next_ties_.push_back(group);
    } else if (texts) {
      RefineTexts(group, cells, codes, direction);
    } else {
      RefineNumbers(group, cells, numbers, direction);
    }
  }
  std::sort(next_ties_.begin(), next_ties_.end());
  ties_.swap(next_ties_);
}

template <typename What>
void RowSorter::ForEqualItems(size_t begin, What what) const {
  for (size_t first = 0; first < items_.size();) {
    size_t last = first + 1;
    while (last < items_.size() && items_[last].key == items_[first].key) ++last;
    if (last - first > 1) what(Group(begin + first, begin + last), items_[first].key);
    first = last;
  }
}

void RowSorter::RefineNumbers(const Group& group, const Cells& cells, NumberReader& numbers, Direction direction) {
  items_.clear();
  for (size_t at = group.first; at < group.second; ++at) {
    const uint64_t key = numbers.KeyAt(cells.at[order_[at]]);
    items_.push_back({direction == Direction::kDescending ? ~key : key, order_[at]});
  }
  SortItems();
  WriteItems(group.first);
  ForEqualItems(group.first, [&](const Group& equal, uint64_t) { next_ties_.push_back(equal); });
}

// Nulls first (last when descending), then the texts, eight bytes at a time.
void RowSorter::RefineTexts(const Group& group, const Cells& cells, CodeReader& codes, Direction direction) {
  const auto is_null = [&](uint32_t row) { return codes.CodeAt(cells.at[row]) == 0; };
  const auto begin = order_.begin() + static_cast<std::ptrdiff_t>(group.first);
  const auto end = order_.begin() + static_cast<std::ptrdiff_t>(group.second);
  const bool descending = direction == Direction::kDescending;
  const auto middle = std::stable_partition(begin, end, [&](uint32_t row) { return is_null(row) != descending; });
  const size_t split = static_cast<size_t>(middle - order_.begin());
  const Group nulls = descending ? Group(split, group.second) : Group(group.first, split);
  const Group texts = descending ? Group(group.first, split) : Group(split, group.second);
  if (nulls.second - nulls.first > 1) next_ties_.push_back(nulls);
  if (texts.second - texts.first > 1) tasks_.push_back({texts, 0});
  while (!tasks_.empty()) {
    const TextTask task = tasks_.back();
    tasks_.pop_back();
    RefineTextTask(task, cells, codes, direction);
  }
}

size_t RowSorter::CommonPrefix(const TextTask& task, const Cells& cells, CodeReader& codes) const {
  const std::string_view first = codes.TextAt(cells.at[order_[task.group.first]]);
  size_t common = first.size();
  for (size_t at = task.group.first + 1; at < task.group.second && common > task.depth; ++at) {
    const std::string_view text = codes.TextAt(cells.at[order_[at]]);
    common = std::min(common, text.size());
    const auto differs = std::mismatch(first.begin() + static_cast<std::ptrdiff_t>(task.depth),
                                       first.begin() + static_cast<std::ptrdiff_t>(common),
                                       text.begin() + static_cast<std::ptrdiff_t>(task.depth));
    common = static_cast<size_t>(differs.first - first.begin());
  }
  return common;
}

void RowSorter::RefineTextTask(const TextTask& task, const Cells& cells, CodeReader& codes, Direction direction) {
  const auto [begin, end] = task.group;
  const uint32_t first_code = codes.CodeAt(cells.at[order_[begin]]);
  bool same = true;
  for (size_t at = begin + 1; at < end && same; ++at) same = codes.CodeAt(cells.at[order_[at]]) == first_code;
  if (same) {
    next_ties_.push_back(task.group);
    return;
  }
  const size_t depth = CommonPrefix(task, cells, codes);
  items_.clear();
  for (size_t at = begin; at < end; ++at) {
    const uint64_t key = EightBytes(codes.TextAt(cells.at[order_[at]]), depth);
    items_.push_back({direction == Direction::kDescending ? ~key : key, order_[at]});
  }
  SortItems();
  WriteItems(begin);
  ForEqualItems(begin, [&](const Group& equal, uint64_t) { tasks_.push_back({equal, depth + 8}); });
}

void RowSorter::SortItems() {
  constexpr size_t kRadixFrom = 2048;
  constexpr int kRadixBits = 44;
  uint64_t lowest = UINT64_MAX;
  uint64_t highest = 0;
  bool sorted = true;
  for (size_t index = 0; index < items_.size(); ++index) {
    lowest = std::min(lowest, items_[index].key);
    highest = std::max(highest, items_[index].key);
    sorted = sorted && (index == 0 || items_[index - 1].key <= items_[index].key);
  }
  if (sorted) return;
  const auto bits = static_cast<int>(std::bit_width(highest - lowest));
  if (items_.size() >= kRadixFrom && bits <= kRadixBits) {
    RadixSortItems(lowest, bits);
    return;
  }
  // Tied rows are in the order of their numbers, so the number keeps the sort stable.
  std::sort(items_.begin(), items_.end(),
            [](const Item& a, const Item& b) { return a.key != b.key ? a.key < b.key : a.row < b.row; });
}

void RowSorter::RadixSortItems(uint64_t lowest, int bits) {
  constexpr int kDigitBits = 11;
  constexpr size_t kDigits = size_t{1} << kDigitBits;
  scratch_.resize(items_.size());
  for (int shift = 0; shift < bits; shift += kDigitBits) {
    std::array<size_t, kDigits> starts{};
    for (const Item& item : items_) ++starts[(item.key - lowest) >> shift & (kDigits - 1)];
    size_t sum = 0;
    for (size_t& start : starts) sum += std::exchange(start, sum);
    for (const Item& item : items_) scratch_[starts[(item.key - lowest) >> shift & (kDigits - 1)]++] = item;
    items_.swap(scratch_);
  }
}

void RowSorter::WriteItems(size_t begin) {
  for (size_t index = 0; index < items_.size(); ++index) order_[begin + index] = items_[index].row;
}

void RowSorter::DropTied() {
  if (ties_.empty()) return;
  size_t kept = 0;
  size_t next = 0;
  for (size_t at = 0; at < order_.size(); ++at) {
    const bool in_group = next < ties_.size() && at >= ties_[next].first;
    const bool repeated = in_group && at > ties_[next].first;
    if (in_group && at + 1 == ties_[next].second) ++next;
    if (!repeated) order_[kept++] = order_[at];
  }
  order_.resize(kept);
  ties_.clear();
}

}  // namespace stockbook::databases
