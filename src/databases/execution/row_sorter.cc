// SPDX-License-Identifier: MIT
#include "databases/execution/row_sorter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <numeric>

#include "databases/execution/side_by_side.h"

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

// Keys of numbers, money or dates; one kind for the whole column.
class NumberReader {
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
  // Of the values that were read, as base::Value numbers them; 0 if all were null.
  size_t kind() const { return kind_; }

 private:
  const columns::Column& column_;
  size_t kind_ = 0;
};

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

// Orders some of the groups by one key, and finds which of their rows are still tied.
class RowSorter::Refinement {
 public:
  Refinement(std::vector<uint32_t>& order, const Cells& cells, const CodeReader* codes, Direction direction)
      : order_(order),
        cells_(cells),
        codes_(codes),
        descending_(direction == Direction::kDescending),
        numbers_(*cells.column) {}

  void Refine(const Group& group) {
    if (IsSame(group, [&](uint32_t row) { return cells_.at[row]; })) {
      ties_.push_back(group);
    } else if (codes_ != nullptr) {
      RefineTexts(group);
    } else {
      RefineNumbers(group);
    }
  }

  const std::vector<Group>& ties() const { return ties_; }
  size_t kind() const { return numbers_.kind(); }

 private:
  struct Item {
    uint64_t key;
    uint32_t row;
  };
  struct TextTask {
    Group group;
    size_t depth;
  };

  template <typename Of>
  bool IsSame(const Group& group, Of of) const {
    const auto first = of(order_[group.first]);
    for (size_t at = group.first + 1; at < group.second; ++at) {
      if (of(order_[at]) != first) return false;
    }
    return true;
  }

  void RefineNumbers(const Group& group);
  void RefineTexts(const Group& group);
  void RefineTextTask(const TextTask& task);
  size_t CommonPrefix(const TextTask& task) const;
  // Puts the items in order, and their rows into order_ from `begin` on; what(group) for each run of equal keys.
  template <typename What>
  void ArrangeItems(size_t begin, What what);
  void SortItems();
  void RadixSortItems(uint64_t lowest, int bits);
  uint64_t Directed(uint64_t key) const { return descending_ ? ~key : key; }
  std::string_view TextOf(uint32_t row) const { return codes_->TextAt(cells_.at[row]); }

  std::vector<uint32_t>& order_;
  const Cells& cells_;
  const CodeReader* codes_;  // null where the key is a number
  bool descending_;
  NumberReader numbers_;
  std::vector<Group> ties_;
  std::vector<TextTask> tasks_;
  std::vector<Item> items_;
  std::vector<Item> scratch_;
};

template <typename What>
void RowSorter::Refinement::ArrangeItems(size_t begin, What what) {
  SortItems();
  for (size_t index = 0; index < items_.size(); ++index) order_[begin + index] = items_[index].row;
  for (size_t first = 0; first < items_.size();) {
    size_t last = first + 1;
    while (last < items_.size() && items_[last].key == items_[first].key) ++last;
    if (last - first > 1) what(Group(begin + first, begin + last));
    first = last;
  }
}

void RowSorter::Refinement::RefineNumbers(const Group& group) {
  items_.clear();
  for (size_t at = group.first; at < group.second; ++at)
    items_.push_back({Directed(numbers_.KeyAt(cells_.at[order_[at]])), order_[at]});
  ArrangeItems(group.first, [&](const Group& equal) { ties_.push_back(equal); });
}

// Nulls first (last when descending), then the texts, eight bytes at a time.
void RowSorter::Refinement::RefineTexts(const Group& group) {
  const auto is_null = [&](uint32_t row) { return codes_->CodeAt(cells_.at[row]) == 0; };
  const auto begin = order_.begin() + static_cast<std::ptrdiff_t>(group.first);
  const auto end = order_.begin() + static_cast<std::ptrdiff_t>(group.second);
  const auto middle = std::stable_partition(begin, end, [&](uint32_t row) { return is_null(row) != descending_; });
  const size_t split = static_cast<size_t>(middle - order_.begin());
  const Group nulls = descending_ ? Group(split, group.second) : Group(group.first, split);
  const Group texts = descending_ ? Group(group.first, split) : Group(split, group.second);
  if (nulls.second - nulls.first > 1) ties_.push_back(nulls);
  if (texts.second - texts.first > 1) tasks_.push_back({texts, 0});
  while (!tasks_.empty()) {
    const TextTask task = tasks_.back();
    tasks_.pop_back();
    RefineTextTask(task);
  }
}

size_t RowSorter::Refinement::CommonPrefix(const TextTask& task) const {
  const std::string_view first = TextOf(order_[task.group.first]);
  size_t common = first.size();
  for (size_t at = task.group.first + 1; at < task.group.second && common > task.depth; ++at) {
    const std::string_view text = TextOf(order_[at]);
    common = std::min(common, text.size());
    const auto differs = std::mismatch(first.begin() + static_cast<std::ptrdiff_t>(task.depth),
                                       first.begin() + static_cast<std::ptrdiff_t>(common),
                                       text.begin() + static_cast<std::ptrdiff_t>(task.depth));
    common = static_cast<size_t>(differs.first - first.begin());
  }
  return common;
}

void RowSorter::Refinement::RefineTextTask(const TextTask& task) {
  const auto [begin, end] = task.group;
  if (IsSame(task.group, [&](uint32_t row) { return codes_->CodeAt(cells_.at[row]); })) {
    ties_.push_back(task.group);
    return;
  }
  const size_t depth = CommonPrefix(task);
  items_.clear();
  for (size_t at = begin; at < end; ++at)
    items_.push_back({Directed(EightBytes(TextOf(order_[at]), depth)), order_[at]});
  ArrangeItems(begin, [&](const Group& equal) { tasks_.push_back({equal, depth + 8}); });
}

void RowSorter::Refinement::SortItems() {
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

void RowSorter::Refinement::RadixSortItems(uint64_t lowest, int bits) {
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

RowSorter::RowSorter(size_t rows, size_t threads) : threads_(threads), order_(rows) {
  std::iota(order_.begin(), order_.end(), 0U);
  if (rows > 1) ties_.emplace_back(0, rows);
}

size_t RowSorter::TiedRows() const {
  size_t rows = 0;
  for (const auto& [begin, end] : ties_) rows += end - begin;
  return rows;
}

std::vector<RowSorter::Group> RowSorter::PartsOfTies() const {
  // A part takes longer than starting a thread does, and there are more of them than threads, so that all end together.
  constexpr size_t kLeastRows = 16384;
  constexpr size_t kPartsAThread = 4;
  const size_t rows = threads_ == 1 ? ties_.size() : std::max(kLeastRows, TiedRows() / (threads_ * kPartsAThread));
  std::vector<Group> parts;
  size_t first = 0;
  size_t in_part = 0;
  for (size_t group = 0; group < ties_.size(); ++group) {
    in_part += threads_ == 1 ? 1 : ties_[group].second - ties_[group].first;
    if (in_part < rows && group + 1 < ties_.size()) continue;
    parts.emplace_back(first, group + 1);
    first = group + 1;
    in_part = 0;
  }
  return parts;
}

void RowSorter::Refine(const Cells& cells, Direction direction) {
  if (ties_.empty()) return;
  const bool texts = cells.column->HasTextCodes();
  CodeReader codes(*cells.column);
  if (texts && TiedRows() > cells.column->size() / kBulkShare) codes.ReadAll();
  const std::vector<Group> parts = PartsOfTies();
  std::vector<Refinement> refinements;
  for (size_t part = 0; part < parts.size(); ++part)
    refinements.emplace_back(order_, cells, texts ? &codes : nullptr, direction);
  RunSideBySide(parts.size(), threads_, [&](size_t part, const auto&) {
    for (size_t group = parts[part].first; group < parts[part].second; ++group) refinements[part].Refine(ties_[group]);
  });
  std::vector<Group> ties;
  size_t kind = 0;
  for (const Refinement& refinement : refinements) {
    ties.insert(ties.end(), refinement.ties().begin(), refinement.ties().end());
    if (refinement.kind() == 0) continue;
    if (kind != 0 && refinement.kind() != kind) throw NotCovered{};
    kind = refinement.kind();
  }
  std::sort(ties.begin(), ties.end());
  ties_.swap(ties);
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
