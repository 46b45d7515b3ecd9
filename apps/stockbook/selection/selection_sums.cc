// SPDX-License-Identifier: MIT
#include "stockbook/selection/selection_sums.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "base/decimal.h"
#include "base/digits.h"
#include "base/number.h"
#include "sheet/format/cell_format.h"
#include "sheet/outline/row_states.h"
#include "sheet/store/store.h"

namespace stockbook::app {
namespace {

using columns::RawKind;
using columns::RawRows;

constexpr size_t kSummedBlock = 1024;
// So many numbers of this size can be added without an overflow.
constexpr int64_t kMostAdded = std::numeric_limits<int64_t>::max() / static_cast<int64_t>(kSummedBlock);

double ToDouble(int64_t units, int decimals) {
  return static_cast<double>(units) / static_cast<double>(base::kPowersOfTen[static_cast<size_t>(decimals)]);
}

}  // namespace

SelectionSums SelectionSums::Of(const sheet::Sheet& sheet, const sheet::Selection& selection) {
  SelectionSums sums;
  platform::CellRange range = selection.Range();
  range.row1 = std::max(range.row1, sheet.FixedRows());
  range.column1 = std::max(range.column1, sheet.FixedCols());
  range.row2 = std::min(range.row2, sheet.Rows());
  range.column2 = std::min(range.column2, sheet.Cols());
  if (range.row1 >= range.row2) return sums;
  sums.has_numbers_.resize(static_cast<size_t>(std::max(range.column2, 0)));
  sums.AddRows(sheet, range);
  if (sums.count_ == 0) sums.AddInserted(sheet, range);
  sums.TakeDecimals(sheet);
  return sums;
}

void SelectionSums::TakeDecimals(const sheet::Sheet& sheet) {
  for (size_t column = 0; column < has_numbers_.size(); ++column) {
    if (!has_numbers_[column]) continue;
    const sheet::SheetColumn& cells = sheet.store().columns().At(static_cast<int>(column));
    const auto& format = cells.format().plain();
    // A share is shown as another number than it is.
    const bool formatted = cells.format().FormatsNumbers(cells.type()) && format && format->power == 0;
    least_decimals_ = std::max(least_decimals_, formatted ? format->least_decimals : 0);
    most_decimals_ = std::max(most_decimals_, formatted ? format->most_decimals : kExactDecimals);
  }
}

void SelectionSums::AddRows(const sheet::Sheet& sheet, const platform::CellRange& range) {
  sheet.states().ForEachRun(range.row1, range.row2, [&](int64_t first, int64_t count, const sheet::RowState& state) {
    if (!state.IsShown()) return true;
    sheet.store().order().ForEachPiece(first, first + count, [&](int64_t, int64_t rows, sheet::RowId id) {
      for (int column = range.column1; id >= 0 && column < range.column2; ++column) {
        const int64_t before = count_;
        if (!sheet.ColHidden(column)) AddRecords(sheet, column, static_cast<size_t>(id), static_cast<size_t>(rows));
        if (count_ != before) has_numbers_[static_cast<size_t>(column)] = true;
      }
    });
    return true;
  });
}

void SelectionSums::AddInserted(const sheet::Sheet& sheet, const platform::CellRange& range) {
  sheet.states().ForEachRun(range.row1, range.row2, [&](int64_t first, int64_t count, const sheet::RowState& state) {
    if (!state.IsShown()) return true;
    sheet.store().order().ForEachPiece(first, first + count, [&](int64_t row, int64_t rows, sheet::RowId id) {
      for (int64_t at = row; id < 0 && at < row + rows; ++at) {
        for (int column = range.column1; column < range.column2; ++column) {
          const int64_t before = count_;
          if (!sheet.ColHidden(column) && sheet::IsNumberType(sheet.ColDataType(column)))
            AddText(sheet.TextMatrix(static_cast<int>(at), column));
          if (count_ != before) has_numbers_[static_cast<size_t>(column)] = true;
        }
      }
    });
    return true;
  });
}

void SelectionSums::AddRecords(const sheet::Sheet& sheet, int column, size_t first, size_t count) {
  const sheet::SheetColumn& cells = sheet.store().columns().At(column);
  const columns::Column* loaded = cells.LoadedText();
  const bool of_numbers = sheet::IsNumberType(cells.type());
  const bool of_texts = loaded != nullptr && loaded->HasTextCodes();
  if (of_texts && !of_numbers && !cells.HasRecordTexts()) return;
  if (of_texts && !cells.HasRecordTexts() && loaded->TextCodeCount() <= count) {
    AddCodes(*loaded, first, count);
    return;
  }
  if (cells.HasRecordTexts() || of_texts) {
    std::string text;
    for (size_t record = first; of_numbers && record < first + count; ++record) {
      text.clear();
      cells.AppendText(static_cast<sheet::RowId>(record), text);
      AddText(text);
    }
    return;
  }
  std::array<int64_t, kSummedBlock> raw;
  for (size_t done = 0; loaded != nullptr && done < count;) {
    const auto block = std::span(raw).first(std::min(kSummedBlock, count - done));
    const RawRows rows = loaded->ReadRaw(first + done, block);
    if (rows.count == 0) return;
    AddRaw(*loaded, first + done, block.first(rows.count), rows);
    done += rows.count;
  }
}

// Each text is read once.
void SelectionSums::AddCodes(const columns::Column& column, size_t first, size_t count) {
  std::vector<std::optional<double>> numbers(column.TextCodeCount());
  for (uint32_t code = 0; code < numbers.size(); ++code) numbers[code] = base::ParseNumber(column.TextOfCode(code));
  std::array<uint32_t, kSummedBlock> codes;
  for (size_t done = 0; done < count;) {
    const auto block = std::span(codes).first(std::min(kSummedBlock, count - done));
    column.ReadTextCodes(first + done, block);
    for (const uint32_t code : block) {
      if (numbers[code]) AddNumber(*numbers[code]);
    }
    done += block.size();
  }
}

void SelectionSums::AddRaw(const columns::Column& column, size_t first, std::span<const int64_t> raw,
                           const RawRows& rows) {
  // A zero is also what an empty cell reads as.
  const auto zeros = [&] {
    int64_t count = 0;
    for (size_t at = 0; at < raw.size(); ++at) count += raw[at] == 0 && !column.IsNull(first + at) ? 1 : 0;
    return count;
  };
  if (rows.kind == RawKind::kDecimal) {
    if (AddDecimals(raw, rows.decimals) < static_cast<int64_t>(raw.size())) AddZeros(zeros());
  } else if (rows.kind == RawKind::kDouble) {
    for (const int64_t number : raw) AddDouble(std::bit_cast<double>(number));
    AddZeros(zeros());
  } else {
    for (size_t at = 0; at < raw.size(); ++at) {
      if (raw[at] != 0 || !column.IsNull(first + at)) AddValue(column.At(first + at));
    }
  }
}

int64_t SelectionSums::AddDecimals(std::span<const int64_t> raw, int decimals) {
  int64_t least = std::numeric_limits<int64_t>::max();
  int64_t greatest = std::numeric_limits<int64_t>::min();
  int64_t others = 0;
  uint64_t sum = 0;
  for (const int64_t number : raw) {
    sum += static_cast<uint64_t>(number);
    others += number != 0 ? 1 : 0;
    least = std::min(least, number != 0 ? number : least);
    greatest = std::max(greatest, number != 0 ? number : greatest);
  }
  if (others == 0) return 0;
  if (least < -kMostAdded || greatest > kMostAdded) {
    for (const int64_t number : raw) AddUnits(number, decimals);
  } else {
    AddUnits(static_cast<int64_t>(sum), decimals);
  }
  Meet(ToDouble(least, decimals));
  Meet(ToDouble(greatest, decimals));
  count_ += others - 2;  // each meeting has counted one
  return others;
}

void SelectionSums::AddZeros(int64_t zeros) {
  if (zeros == 0) return;
  Meet(0);
  count_ += zeros - 1;
}

void SelectionSums::AddDouble(double number) {
  if (number == 0 || !std::isfinite(number)) return;
  exact_ = false;
  others_ += number;
  Meet(number);
}

void SelectionSums::AddValue(const base::Value& value) {
  const auto number = value.Number();
  if (!number || value.As<base::Date>() != nullptr || value.As<std::string>() != nullptr) return;
  AddNumber(*number);
}

void SelectionSums::AddText(std::string_view text) {
  if (const auto number = base::ParseNumber(text)) AddNumber(*number);
}

void SelectionSums::AddNumber(double number) {
  if (!std::isfinite(number)) return;
  if (const auto units = base::ShortDecimalUnits(number)) {
    AddUnits(*units, kExactDecimals);
  } else {
    exact_ = false;
    others_ += number;
  }
  Meet(number);
}

void SelectionSums::AddUnits(int64_t units, int decimals) {
  int64_t total = 0;
  if (decimals <= kExactDecimals && !__builtin_add_overflow(units_[static_cast<size_t>(decimals)], units, &total)) {
    units_[static_cast<size_t>(decimals)] = total;
    return;
  }
  exact_ = exact_ && units == 0;
  others_ += ToDouble(units, decimals);
}

void SelectionSums::Meet(double number) {
  least_ = count_ == 0 ? number : std::min(least_, number);
  greatest_ = count_ == 0 ? number : std::max(greatest_, number);
  ++count_;
}

double SelectionSums::sum() const {
  double sum = others_;
  for (int decimals = 0; decimals <= kExactDecimals; ++decimals)
    sum += ToDouble(units_[static_cast<size_t>(decimals)], decimals);
  return sum;
}

double SelectionSums::average() const { return count_ == 0 ? 0 : sum() / static_cast<double>(count_); }

std::string SelectionSums::SumText() const {
  int64_t units = 0;
  bool fits = exact_;
  for (int decimals = 0; decimals <= kExactDecimals; ++decimals) {
    const auto factor = static_cast<int64_t>(base::kPowersOfTen[static_cast<size_t>(kExactDecimals - decimals)]);
    int64_t scaled = 0;
    fits = fits && !__builtin_mul_overflow(units_[static_cast<size_t>(decimals)], factor, &scaled) &&
           !__builtin_add_overflow(units, scaled, &units);
  }
  std::string text;
  const sheet::PlainNumber shape{1, least_decimals_, most_decimals_, 0, true, 0};
  return fits && shape.Append(units, kExactDecimals, text) ? text : NumberText(sum(), most_decimals_);
}

std::string SelectionSums::NumberText(double number, int most_decimals) const {
  const std::string decimals = std::string(static_cast<size_t>(least_decimals_), '0') +
                               std::string(static_cast<size_t>(most_decimals - least_decimals_), '#');
  const sheet::CellFormat format("#,##0" + (decimals.empty() ? "" : "." + decimals));
  std::string text;
  format.Append(platform::DataType::kDouble, base::Value(number), text);
  return text;
}

}  // namespace stockbook::app
