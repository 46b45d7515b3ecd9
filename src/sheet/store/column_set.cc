// SPDX-License-Identifier: MIT
#include "sheet/store/column_set.h"

#include <algorithm>
#include <utility>

namespace stockbook::sheet {

ColumnSet::ColumnSet(const ColumnSet& other) {
  columns_.reserve(other.columns_.size());
  for (const auto& column : other.columns_) {
    columns_.push_back(std::make_unique<SheetColumn>(*column));
    if (!column->key.empty()) List(*columns_.back(), column->key);
  }
}

void ColumnSet::SetCount(int count) {
  while (Count() > count) {
    Forget(*columns_.back());
    columns_.pop_back();
  }
  while (Count() < count) {
    columns_.push_back(std::make_unique<SheetColumn>());
    columns_.back()->position = Count() - 1;
  }
}

int ColumnSet::IndexOf(std::string_view key) const {
  const auto found = by_key_.find(key);
  if (key.empty() || found == by_key_.end()) return -1;
  int first = found->second.front()->position;
  for (const SheetColumn* column : found->second) first = std::min(first, column->position);
  return first;
}

void ColumnSet::SetKey(int position, std::string_view key) {
  SheetColumn& column = At(position);
  if (column.key == key) return;
  std::string named(key);
  if (!key.empty()) List(column, named);
  Forget(column);
  column.key = std::move(named);
}

void ColumnSet::List(const SheetColumn& column, const std::string& key) {
  auto& listed = by_key_[key];
  try {
    listed.push_back(&column);
  } catch (...) {
    if (listed.empty()) by_key_.erase(key);
    throw;
  }
}

void ColumnSet::Move(int from, int to) {
  const auto begin = columns_.begin();
  if (from < to) {
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  } else {
    std::rotate(begin + to, begin + from, begin + from + 1);
  }
  for (int position = std::min(from, to); position <= std::max(from, to); ++position) At(position).position = position;
}

void ColumnSet::Forget(const SheetColumn& column) {
  const auto found = by_key_.find(column.key);
  if (found == by_key_.end()) return;
  std::erase(found->second, &column);
  if (found->second.empty()) by_key_.erase(found);
}

bool ColumnSet::CheckInvariants() const {
  size_t keyed = 0;
  for (int position = 0; position < Count(); ++position) {
    const SheetColumn& column = At(position);
    if (column.position != position) return false;
    if (column.key.empty()) continue;
    ++keyed;
    const auto found = by_key_.find(column.key);
    if (found == by_key_.end() || std::find(found->second.begin(), found->second.end(), &column) == found->second.end())
      return false;
  }
  size_t listed = 0;
  for (const auto& [key, columns] : by_key_) listed += columns.size();
  return listed == keyed;
}

size_t ColumnSet::MemoryBytes() const {
  size_t bytes = columns_.capacity() * sizeof(columns_.front());
  for (const auto& column : columns_) bytes += column->MemoryBytes();
  return bytes;
}

}  // namespace stockbook::sheet
