// SPDX-License-Identifier: MIT
#include "control/row_fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

#include "journal/issue_source.h"
#include "platform/row_runs.h"

namespace stockbook::control {
namespace {

// What `read` gives, or the empty value where the grid or the database refuses.
template <typename Read>
auto OrEmpty(Read read) -> decltype(read()) {
  try {
    return read();
  } catch (const std::exception&) {
    return {};
  }
}

// Writes as far as the grid lets it.
template <typename Write>
void Try(Write write) {
  try {
    write();
  } catch (const std::exception&) {
    // What has been written stays.
  }
}

template <typename Integer>
Integer IntegerOrZero(double number) {
  const double rounded = std::nearbyint(number);
  const bool fits = rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max();
  return fits ? static_cast<Integer>(rounded) : Integer{0};
}

// The first data row of a grid column whose number is the value.
class RowSearch {
 public:
  RowSearch(const platform::Grid& grid, int column, double value)
      : grid_(grid), column_(column), value_(value), loaded_(grid.LoadedText(column)) {
    if (grid.HasEditedRecords(column)) loaded_ = nullptr;
  }

  // -1 when no row has it.
  int First() const {
    for (int row = grid_.FixedRows(); row < grid_.Rows();) {
      const platform::RowRun run = loaded_ != nullptr ? platform::RowRunAt(grid_, row) : platform::RowRun{row, 1, -1};
      const int found = run.record >= 0 ? InRun(row, run.End(), run.record) : (HasValue(row) ? row : -1);
      if (found >= 0) return found;
      row = run.End();
    }
    return -1;
  }

 private:
  bool HasValue(int row) const { return grid_.ValueMatrix(row, column_) == value_; }

  int InRun(int row, int end, int64_t record) const {
    std::array<double, 1024> numbers{};
    while (row < end) {
      const auto count = std::min(numbers.size(), static_cast<size_t>(end - row));
      const std::span<double> part(numbers.data(), count);
      loaded_->ReadNumbers(static_cast<size_t>(record), part);
      const auto found = std::find(part.begin(), part.end(), value_);
      if (found != part.end()) return row + static_cast<int>(found - part.begin());
      row += static_cast<int>(count);
      record += static_cast<int64_t>(count);
    }
    return -1;
  }

  const platform::Grid& grid_;
  int column_;
  double value_;
  const columns::Column* loaded_;
};

}  // namespace

std::string RowFields::TextOf(const char* key, int32_t row) const {
  return OrEmpty([&] { return grid_.TextMatrix(RowOrCurrent(row), grid_.ColIndex(key)); });
}

double RowFields::NumberOf(const char* key, int32_t row) const {
  return OrEmpty([&] { return grid_.ValueMatrix(RowOrCurrent(row), grid_.ColIndex(key)); });
}

double RowFields::DoubleDataOf(const char* key, int32_t row) const {
  return OrEmpty([&] { return grid_.CellData(RowOrCurrent(row), grid_.ColIndex(key)).Number().value_or(0); });
}

base::Money RowFields::MoneyOf(const char* key, int32_t row) const {
  return OrEmpty(
      [&] { return grid_.CellData(RowOrCurrent(row), grid_.ColIndex(key)).AsMoney().value_or(base::Money()); });
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
  Try([&] {
    const int cell_row = RowOrCurrent(row);
    grid_.SetCellData(cell_row, grid_.ColIndex(key), value);
    grid_.SetTextMatrix(cell_row, grid_.ColIndex(key),
                        amounts_ == AmountTexts::kMasked ? journal::kAmountMask : value.Text());
  });
}

void RowFields::WriteText(const char* key, int32_t row, const base::Value& value) const {
  Try([&] { grid_.SetTextMatrix(RowOrCurrent(row), grid_.ColIndex(key), value.Text()); });
}

void RowFields::SelectRowWith(const char* key, int32_t value) const {
  if (value <= 0) return;
  Try([&] {
    const int column = grid_.ColIndex(key);
    const int row = column < 0 ? -1 : RowSearch(grid_, column, value).First();
    if (row < grid_.FixedRows() || row >= grid_.Rows()) return;
    grid_.Select(row, grid_.Col() < 0 ? grid_.FixedCols() : grid_.Col());
    if (!grid_.RowIsVisible(row)) grid_.SetTopRow(row);
  });
}

std::string RowFields::IssueSource(int32_t row) const {
  if (row < 0) return {};
  return OrEmpty([&] { return journal::IssueSource(connection_, Get(fields::OtherID, row == 0 ? -1 : row)); });
}

}  // namespace stockbook::control
