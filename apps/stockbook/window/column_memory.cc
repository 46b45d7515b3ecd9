// SPDX-License-Identifier: MIT
#include "stockbook/window/column_memory.h"

#include "stockbook/window/column_arrangement.h"

namespace stockbook::app {
namespace {

std::map<std::string, int> WidthsOf(const platform::Grid& grid) {
  std::map<std::string, int> widths;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    widths.emplace(grid.ColKey(column), grid.ColWidth(column));
  return widths;
}

std::map<std::string, int> HiddenOf(const platform::Grid& grid) {
  std::map<std::string, int> hidden;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    hidden.emplace(grid.ColKey(column), grid.ColHidden(column) ? 1 : 0);
  return hidden;
}

// Keeps the values that differ from the layout.
void LearnValues(const std::map<std::string, int>& now, const std::map<std::string, int>& laid_out,
                 std::map<std::string, int>& learnt) {
  for (const auto& [key, value] : now) {
    const auto usual = laid_out.find(key);
    if (usual == laid_out.end() || usual->second == value) {
      learnt.erase(key);
    } else {
      learnt[key] = value;
    }
  }
}

std::vector<std::string> OrderOf(const platform::Grid& grid) {
  std::vector<std::string> keys;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) keys.push_back(grid.ColKey(column));
  return keys;
}

}  // namespace

void ColumnMemory::StartFrom(const platform::Grid& grid) {
  changes_ = {};
  laid_out_widths_ = WidthsOf(grid);
  laid_out_hidden_ = HiddenOf(grid);
  laid_out_order_ = OrderOf(grid);
}

void ColumnMemory::Learn(const platform::Grid& grid, int frozen) {
  if (laid_out_order_.empty()) return;
  LearnValues(WidthsOf(grid), laid_out_widths_, changes_.widths);
  LearnValues(HiddenOf(grid), laid_out_hidden_, changes_.hidden);
  changes_.order = OrderOf(grid);
  if (changes_.order == laid_out_order_) changes_.order.clear();
  changes_.frozen = frozen;
}

void ColumnMemory::PutBack(platform::Grid& grid, const std::string& kept) {
  laid_out_widths_ = WidthsOf(grid);
  laid_out_hidden_ = HiddenOf(grid);
  laid_out_order_ = OrderOf(grid);
  for (const auto& [key, width] : changes_.widths) {
    if (const int column = grid.ColIndex(key); column >= 0) grid.SetColWidth(column, width);
  }
  for (const auto& [key, hidden] : changes_.hidden) {
    const int column = grid.ColIndex(key);
    if (column >= 0 && !IsKept(kept, key)) grid.SetColHidden(column, hidden == 1);
  }
  int position = grid.FixedCols();
  for (const std::string& key : changes_.order) {
    const int column = grid.ColIndex(key);
    if (column < 0) continue;
    if (column != position) grid.SetColPosition(column, position);
    ++position;
  }
}

}  // namespace stockbook::app
