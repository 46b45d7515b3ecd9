// SPDX-License-Identifier: MIT
#include "stockbook/window/column_memory.h"

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
  widths_.clear();
  hidden_.clear();
  order_.clear();
  laid_out_widths_ = WidthsOf(grid);
  laid_out_hidden_ = HiddenOf(grid);
  laid_out_order_ = OrderOf(grid);
}

void ColumnMemory::Learn(const platform::Grid& grid) {
  LearnValues(WidthsOf(grid), laid_out_widths_, widths_);
  LearnValues(HiddenOf(grid), laid_out_hidden_, hidden_);
  order_ = OrderOf(grid);
  if (order_ == laid_out_order_) order_.clear();
}

void ColumnMemory::PutBack(platform::Grid& grid, const std::string& kept) {
  laid_out_widths_ = WidthsOf(grid);
  laid_out_hidden_ = HiddenOf(grid);
  laid_out_order_ = OrderOf(grid);
  for (const auto& [key, width] : widths_) {
    if (const int column = grid.ColIndex(key); column >= 0) grid.SetColWidth(column, width);
  }
  for (const auto& [key, hidden] : hidden_) {
    const int column = grid.ColIndex(key);
    if (column >= 0 && kept.find("|" + key + "|") == std::string::npos) grid.SetColHidden(column, hidden == 1);
  }
  int position = grid.FixedCols();
  for (const std::string& key : order_) {
    const int column = grid.ColIndex(key);
    if (column < 0) continue;
    if (column != position) grid.SetColPosition(column, position);
    ++position;
  }
}

}  // namespace stockbook::app
