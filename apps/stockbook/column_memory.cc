// SPDX-License-Identifier: MIT
#include "stockbook/column_memory.h"

namespace stockbook::app {
namespace {

std::map<std::string, int> WidthsOf(const platform::Grid& grid) {
  std::map<std::string, int> widths;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column)
    widths.emplace(grid.ColKey(column), grid.ColWidth(column));
  return widths;
}

std::vector<std::string> OrderOf(const platform::Grid& grid) {
  std::vector<std::string> keys;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) keys.push_back(grid.ColKey(column));
  return keys;
}

}  // namespace

void ColumnMemory::StartFrom(const platform::Grid& grid) {
  widths_.clear();
  order_.clear();
  laid_out_widths_ = WidthsOf(grid);
  laid_out_order_ = OrderOf(grid);
}

void ColumnMemory::Learn(const platform::Grid& grid) {
  for (const auto& [key, width] : WidthsOf(grid)) {
    const auto laid_out = laid_out_widths_.find(key);
    if (laid_out == laid_out_widths_.end() || laid_out->second == width) {
      widths_.erase(key);
    } else {
      widths_[key] = width;
    }
  }
  order_ = OrderOf(grid);
  if (order_ == laid_out_order_) order_.clear();
}

void ColumnMemory::PutBack(platform::Grid& grid) {
  laid_out_widths_ = WidthsOf(grid);
  laid_out_order_ = OrderOf(grid);
  for (const auto& [key, width] : widths_) {
    if (const int column = grid.ColIndex(key); column >= 0) grid.SetColWidth(column, width);
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
