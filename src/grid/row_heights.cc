// SPDX-License-Identifier: MIT
#include "grid/row_heights.h"

#include "base/text.h"
#include "stockbook/platform/grid_guards.h"

namespace stockbook::grid {
namespace {

constexpr const char* kSampleText = "Tallomere";
constexpr int kMarginPixels = 4;

}  // namespace

RowSizes SizeRows(platform::GridRows& grid, const platform::TextMetrics& metrics, const platform::Font& font) {
  const double text_height = metrics.TextHeightTwips(kSampleText, font);
  RowSizes sizes;
  sizes.data = static_cast<int>(text_height + kMarginPixels * metrics.TwipsPerPixelY());
  grid.SetRowHeight(-1, sizes.data);
  sizes.sum = 2 * grid.RowHeight(0);
  sizes.title = static_cast<int>(text_height + grid.RowHeight(0));
  grid.SetRowHeight(0, sizes.title);
  return sizes;
}

void SetSumRowHeight(platform::GridRows& grid, int twips) {
  for (int row = grid.NextSubtotal(grid.FixedRows()); row >= 0; row = grid.NextSubtotal(row + 1))
    grid.SetRowHeight(row, twips);
}

RowSizes ReadRowSizes(const platform::GridRows& grid) {
  RowSizes sizes;
  sizes.title = grid.RowHeight(0);
  for (int row = grid.FixedRows(); row < grid.Rows() && (sizes.sum == 0 || sizes.data == 0); ++row) {
    if (sizes.sum == 0 && grid.IsSubtotal(row))
      sizes.sum = grid.RowHeight(row);
    else if (sizes.data == 0)
      sizes.data = grid.RowHeight(row);
  }
  if (sizes.sum == 0) sizes.sum = sizes.data;
  return sizes;
}

void SetColumnsFont(platform::GridTable& grid, platform::GridBusy& busy, std::string_view keys,
                    std::string_view font_name) {
  const auto redraw = platform::RedrawOff(busy);
  if (grid.Rows() <= grid.FixedRows()) return;
  for (const std::string_view key : base::Split(keys, '|')) {
    const int column = key.empty() ? -1 : grid.ColIndex(key);
    if (column < 0 || column < grid.FixedCols()) continue;
    grid.SetCellFontName({grid.FixedRows(), column, grid.Rows(), column + 1}, font_name.empty() ? "Arial" : font_name);
  }
}

}  // namespace stockbook::grid
