// SPDX-License-Identifier: MIT
#include "stockbook/control/row_fields.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "columns/block_reader.h"
#include "control/neutral.h"
#include "grid/row_runs.h"
#include "journal/issue_source.h"
#include "journal/restricted_amounts.h"
#include "stockbook/platform/grid.h"

namespace stockbook::control {
namespace {

template <typename Integer>
Integer IntegerOrZero(double number) {
  const double rounded = std::nearbyint(number);
  const bool fits = rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max();
  return fits ? static_cast<Integer>(rounded) : Integer{0};
}

// The first data row whose number in the column is the value; -1 when there is none.
int FirstRowWith(const platform::GridTable& grid, int column, double value) {
  const columns::Column* loaded = grid::UneditedColumn(grid, column);
  columns::BlockReader<double> reader(loaded);
  for (auto run = grid::RowRunAt(grid, grid.FixedRows()); run.count > 0; run = grid::RowRunAt(grid, run.End())) {
    if (loaded == nullptr || run.IsInserted()) {
      for (int row = run.row; row < run.End(); ++row) {
        if (grid.ValueMatrix(row, column) == value) return row;
      }
      continue;
    }
    const auto record = static_cast<size_t>(run.record);
    for (const columns::RowBlock block : columns::RowBlocks(record, record + static_cast<size_t>(run.count))) {
      const auto numbers = reader.Read(block);
      const auto found = std::find(numbers.begin(), numbers.end(), value);
      if (found != numbers.end())
        return run.row + static_cast<int>(block.first - record) + static_cast<int>(found - numbers.begin());
    }
  }
  return -1;
}

}  // namespace

int RowFields::RowOrCurrent(int32_t row) const { return row < 0 ? grid_.Row() : row; }

std::string RowFields::TextOf(const char* key, int32_t row) const {
  return OrNeutral(tell_, [&] { return grid_.TextMatrix(RowOrCurrent(row), grid_.ColIndex(key)); });
}

double RowFields::NumberOf(const char* key, int32_t row) const {
  return OrNeutral(tell_, [&] { return grid_.ValueMatrix(RowOrCurrent(row), grid_.ColIndex(key)); });
}

double RowFields::DoubleDataOf(const char* key, int32_t row) const {
  return OrNeutral(tell_, [&] { return grid_.CellData(RowOrCurrent(row), grid_.ColIndex(key)).Number().value_or(0); });
}

base::Money RowFields::MoneyOf(const char* key, int32_t row) const {
  return OrNeutral(
      tell_, [&] { return grid_.CellData(RowOrCurrent(row), grid_.ColIndex(key)).AsMoney().value_or(base::Money()); });
}

base::Date RowFields::DateOf(const char* key, int32_t row) const {
  return base::Date::Parse(TextOf(key, row)).value_or(base::Date());
}

template <typename Integer>
Integer RowFields::IntegerOf(const char* key, int32_t row) const {
  return IntegerOrZero<Integer>(NumberOf(key, row));
}
template int16_t RowFields::IntegerOf<int16_t>(const char* key, int32_t row) const;
template int32_t RowFields::IntegerOf<int32_t>(const char* key, int32_t row) const;

void RowFields::WriteMasked(const char* key, int32_t row, const base::Value& value) const {
  OrNeutral(tell_, [&] {
    const int cell_row = RowOrCurrent(row);
    grid_.SetCellData(cell_row, grid_.ColIndex(key), value);
    grid_.SetTextMatrix(cell_row, grid_.ColIndex(key),
                        amounts_ == AmountTexts::kMasked ? journal::kAmountMask : value.Text());
  });
}

void RowFields::WriteText(const char* key, int32_t row, const base::Value& value) const {
  OrNeutral(tell_, [&] { grid_.SetTextMatrix(RowOrCurrent(row), grid_.ColIndex(key), value.Text()); });
}

void RowFields::SelectRowWith(const char* key, int32_t value) const {
  if (value <= 0) return;
  OrNeutral(tell_, [&] {
    const int column = grid_.ColIndex(key);
    const int row = column < 0 ? -1 : FirstRowWith(grid_, column, value);
    if (row < grid_.FixedRows() || row >= grid_.Rows()) return;
    grid_.Select(row, grid_.Col() < 0 ? grid_.FixedCols() : grid_.Col());
    if (!grid_.RowIsVisible(row)) grid_.SetTopRow(row);
  });
}

std::string RowFields::IssueSource(int32_t row) const {
  if (row < 0) return {};
  return OrNeutral(tell_, [&] { return journal::IssueSource(connection_, Get(fields::OtherID, row == 0 ? -1 : row)); });
}

}  // namespace stockbook::control
