// SPDX-License-Identifier: MIT
#include "stockbook/columns/column.h"
#include "stockbook/columns/column_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "base/number.h"
#include "stockbook/base/money.h"

namespace stockbook::columns {
namespace {

using base::Date;
using base::Money;
using base::Value;

Column Build(const std::vector<Value>& values) {
  ColumnBuilder builder;
  for (const Value& value : values) builder.Append(value);
  return builder.Finish();
}

Value RandomValue(std::mt19937& random, int kinds) {
  switch (random() % static_cast<unsigned>(kinds)) {
    case 0:
      return Value(static_cast<double>(static_cast<int>(random() % 20001) - 10000) / 100.0);
    case 1:
      return Value(Money::FromUnits(static_cast<int64_t>(random()) - 2000000000));
    case 2:
      return Value(std::string("text ") + std::to_string(random() % 50));
    case 3:
      return Value(static_cast<int64_t>(random()));
    case 4:
      return Value(Date::FromSeconds(static_cast<int64_t>(random() % 100000) * 86400));
    case 5:
      return Value(static_cast<double>(random()) / 3.0);
    default:
      return {};
  }
}

TEST(Column, GivesBackEveryMixtureOfValuesAcrossChunks) {
  std::mt19937 random(7);
  for (int kinds = 1; kinds <= 7; ++kinds) {
    std::vector<Value> values;
    for (size_t row = 0; row < Column::kChunkRows + 1000; ++row) values.push_back(RandomValue(random, kinds));
    const Column column = Build(values);
    ASSERT_EQ(column.size(), values.size());
    std::vector<double> numbers(values.size());
    column.ReadNumbers(0, numbers);
    for (size_t row = 0; row < values.size(); ++row) {
      ASSERT_EQ(column.At(row), values[row]) << "row " << row << " of " << kinds << " kinds";
      ASSERT_EQ(column.Text(row), values[row].Text());
      ASSERT_EQ(column.IsNull(row), values[row].IsNull());
      ASSERT_EQ(numbers[row], values[row].Number().value_or(0.0));
    }
  }
}

// Numbers of half a byte and of 1 to 8 bytes.
TEST(Column, KeepsNumbersInAsManyBytesAsTheyNeed) {
  for (const int halves : {1, 2, 4, 6, 8, 10, 12, 14, 16}) {
    const double bytes = halves / 2.0;
    const uint64_t range = UINT64_MAX >> (64 - 4 * halves);
    const int64_t least = halves == 16 ? INT64_MIN : -1000;
    std::mt19937_64 random(5);
    std::vector<Value> values;
    for (int row = 0; row < 1000; ++row) {
      const uint64_t above = row == 0 ? 0 : row == 999 ? range : random() & range;
      values.emplace_back(static_cast<int64_t>(static_cast<uint64_t>(least) + above));
    }
    const Column column = Build(values);
    EXPECT_LT(static_cast<double>(column.MemoryBytes()), 1000 * bytes + 400) << bytes;
    std::vector<int64_t> raw(1000);
    for (size_t first : {size_t{0}, size_t{1}, size_t{993}}) {
      const RawRows rows = column.ReadRaw(first, raw);
      ASSERT_EQ(rows.count, 1000 - first);
      for (size_t row = 0; row < rows.count; ++row) ASSERT_EQ(Value(raw[row]), values[first + row]) << bytes;
    }
    const std::vector<uint16_t> places = {0, 1, 6, 500, 998, 999};
    ASSERT_EQ(column.ReadRawAt(0, places, raw).count, places.size());
    for (size_t at = 0; at < places.size(); ++at) EXPECT_EQ(Value(raw[at]), values[places[at]]) << bytes;
    std::vector<double> numbers(1000);
    column.ReadNumbers(0, numbers);
    for (size_t row = 0; row < 1000; ++row) {
      ASSERT_EQ(column.At(row), values[row]) << bytes;
      ASSERT_EQ(numbers[row], values[row].Number()) << bytes;
    }
  }
}

TEST(Column, ReadsRawNumbersOfRowsHereAndThereAsInARun) {
  std::mt19937 random(23);
  for (int kinds = 1; kinds <= 7; ++kinds) {
    ColumnBuilder builder;
    for (size_t row = 0; row < Column::kChunkRows + 3000; ++row) builder.Append(RandomValue(random, kinds));
    const Column column = builder.Finish();
    // Over the end of a chunk, and over the end of the column.
    for (const size_t first : {Column::kChunkRows - 1000, column.size() - 1000}) {
      std::vector<uint16_t> places;
      for (size_t place = random() % 3; place < 2000; place += 1 + random() % 40)
        places.push_back(static_cast<uint16_t>(place));
      std::span<const uint16_t> left(places);
      while (!left.empty() && first + left.front() < column.size()) {
        std::vector<int64_t> raw(left.size());
        const RawRows rows = column.ReadRawAt(first, left, raw);
        ASSERT_GT(rows.count, 0U);
        for (size_t row = 0; row < rows.count; ++row) {
          int64_t expected = 0;
          const RawRows one = column.ReadRaw(first + left[row], std::span(&expected, 1));
          ASSERT_EQ(raw[row], expected);
          ASSERT_EQ(rows.kind, one.kind);
          ASSERT_EQ(rows.decimals, one.decimals);
          if (column.IsNull(first + left[row])) continue;
          ASSERT_GE(raw[row], rows.least);
          ASSERT_LE(static_cast<uint64_t>(raw[row]) - static_cast<uint64_t>(rows.least), rows.range);
        }
        left = left.subspan(rows.count);
      }
      int64_t none = 0;
      EXPECT_EQ(left.empty() ? 0U : column.ReadRawAt(first, left, std::span(&none, 1)).count, 0U);
    }
  }
}

TEST(Column, GathersRowsInAnyOrder) {
  std::mt19937 random(11);
  for (int kinds = 1; kinds <= 7; ++kinds) {
    std::vector<Value> values;
    for (int row = 0; row < 70000; ++row) values.push_back(RandomValue(random, kinds));
    const Column column = Build(values);
    std::vector<uint32_t> order(100000);
    for (uint32_t& row : order) row = static_cast<uint32_t>(random() % 70000);
    const Column gathered = column.Gather(order);
    ASSERT_EQ(gathered.size(), order.size());
    for (size_t row = 0; row < order.size(); ++row) ASSERT_EQ(gathered.At(row), values[order[row]]);
    const Column twice = gathered.Gather(std::vector<uint32_t>{5, 99999, 5});
    EXPECT_EQ(twice.At(0), values[order[5]]);
    EXPECT_EQ(twice.At(1), values[order[99999]]);
  }
}

// The rows of all parts.
Column Joined(const std::vector<Column>& parts) {
  ColumnBuilder builder;
  for (const Column& part : parts) {
    std::vector<uint32_t> pool_codes;
    for (size_t row = 0; row < part.size(); ++row) builder.AppendFrom(part, row, pool_codes);
  }
  return builder.Finish();
}

TEST(ColumnBuilder, AppendsWholeColumnsAsRowByRow) {
  std::mt19937 random(31);
  for (int kinds = 1; kinds <= 7; ++kinds) {
    std::vector<Value> values;
    ColumnBuilder builder;
    for (const size_t rows : {size_t{3}, Column::kChunkRows - 1, size_t{0}, Column::kChunkRows + 5, size_t{900}}) {
      std::vector<Value> part;
      for (size_t row = 0; row < rows; ++row) part.push_back(RandomValue(random, kinds));
      builder.AppendColumn(Build(part));
      values.insert(values.end(), part.begin(), part.end());
    }
    const Column column = builder.Finish();
    ASSERT_EQ(column.size(), values.size());
    for (size_t row = 0; row < values.size(); ++row) ASSERT_EQ(column.At(row), values[row]);
  }
}

TEST(ColumnBuilder, AppendsColumnsOfOneTypeAfterOthersWithTheSameTexts) {
  ColumnBuilder builder;
  builder.AppendText("甲");
  builder.AppendColumn(Build({Value(std::string("乙")), Value(std::string("甲"))}));
  builder.AppendColumn(Build({Value(), Value(std::string("乙"))}));
  const uint32_t known = builder.AddText("丙");
  builder.AppendTextCode(known);
  EXPECT_EQ(builder.AddText("丙"), known);
  const Column column = builder.Finish();
  std::vector<uint32_t> codes(6);
  column.ReadTextCodes(0, codes);
  EXPECT_EQ(codes, (std::vector<uint32_t>{1, 2, 1, 0, 2, 3}));
  EXPECT_EQ(column.Text(5), "丙");
}

// Chunks of one column may count in cents, in ten-thousandths or in whole units, days or minutes.
TEST(Column, GathersFromChunksOfDifferentUnits) {
  constexpr size_t kRows = 3 * Column::kChunkRows;
  ColumnBuilder money;
  ColumnBuilder doubles;
  ColumnBuilder dates;
  for (size_t row = 0; row < kRows; ++row) {
    const auto number = static_cast<int64_t>(row % 1000);
    const size_t chunk = row / Column::kChunkRows;
    money.AppendMoney(base::Money::FromUnits(number * (chunk == 0 ? 10000 : chunk == 1 ? 100 : 1)));
    doubles.AppendDouble(static_cast<double>(number) / (chunk == 0 ? 1 : chunk == 1 ? 8 : 10));
    if (chunk == 1 && row % 3 == 0) {
      dates.AppendNull();
    } else {
      dates.AppendDate(base::Date::FromSeconds(number * (chunk == 0 ? 86400 : chunk == 1 ? 60 : 1)));
    }
  }
  std::mt19937 random(5);
  std::vector<uint32_t> order(Column::kChunkRows + 77);
  for (uint32_t& row : order) row = static_cast<uint32_t>(random() % kRows);
  order.back() = kRows + 9;  // out of range
  for (ColumnBuilder* builder : {&money, &doubles, &dates}) {
    const Column column = builder->Finish();
    const Column gathered = column.Gather(order);
    for (size_t row = 0; row < order.size(); ++row) ASSERT_EQ(gathered.At(row), column.At(order[row])) << row;
  }
}

TEST(ColumnBuilder, AppendsRowsOfColumnsOfDifferentTypesAndPools) {
  std::vector<Column> parts;
  parts.push_back(Build({Value(std::string("甲")), Value(std::string("乙"))}));
  parts.push_back(Build({Value(std::string("乙")), Value(), Value(std::string("丙"))}));
  const Column texts = Joined(parts);
  EXPECT_TRUE(texts.HasTextCodes());
  std::vector<uint32_t> codes(5);
  texts.ReadTextCodes(0, codes);
  EXPECT_EQ(codes[1], codes[2]);
  EXPECT_EQ(codes[3], 0U);
  EXPECT_EQ(texts.Text(4), "丙");
  parts.clear();
  parts.push_back(Build({Value(int64_t{1})}));
  parts.push_back(texts.Gather(std::vector<uint32_t>{0}));
  const Column mixed = Joined(parts);
  EXPECT_EQ(mixed.At(0), Value(int64_t{1}));
  EXPECT_EQ(mixed.At(1), Value(std::string("甲")));
  EXPECT_FALSE(mixed.HasTextCodes());
}

TEST(Column, KnowsAConstantAndKeepsItInNoSpace) {
  const Column zeros = Column::Constant(Value(int64_t{0}), 200000);
  EXPECT_EQ(zeros.size(), 200000U);
  EXPECT_EQ(zeros.ConstantValue(), Value(int64_t{0}));
  EXPECT_LT(zeros.MemoryBytes(), 2000U);
  EXPECT_EQ(zeros.At(199999), Value(int64_t{0}));
  EXPECT_EQ(Build({Value(1.0), Value(2.0)}).ConstantValue(), std::nullopt);
  EXPECT_EQ(Build({Value(), Value(2.0)}).ConstantValue(), std::nullopt);
  EXPECT_EQ(Build({Value(), Value()}).ConstantValue(), Value());
  EXPECT_EQ(Column().ConstantValue(), std::nullopt);
}

TEST(Column, KeepsShortDecimalsInFewBytesAndExactly) {
  ColumnBuilder builder;
  for (int row = 0; row < 60000; ++row) builder.AppendDouble(row % 1000 / 100.0);
  const Column column = builder.Finish();
  EXPECT_LT(column.MemoryBytes(), 60000U * 2 + 1000);
  EXPECT_EQ(column.At(123), Value(1.23));
  EXPECT_EQ(Build({Value(0.1 + 0.2), Value(1e300), Value(9007199254740993.0)}).At(0), Value(0.1 + 0.2));
}

TEST(Column, ReadsMoneyOutOfEveryTypeAndRefusesWhatIsOutOfRange) {
  const Column column = Build({Value(Money::FromUnits(125000)), Value(int64_t{3}), Value(2.5),
                               Value(std::string("7.00005")), Value(), Value(std::string("abc"))});
  std::vector<int64_t> units(6);
  column.ReadMoneyUnits(0, units);
  EXPECT_EQ(units, (std::vector<int64_t>{125000, 30000, 25000, 70000, 0, 0}));
  EXPECT_THROW(Build({Value(1e18)}).ReadMoneyUnits(0, std::span(units).first(1)), base::ArithmeticError);
  EXPECT_THROW(Build({Value(int64_t{INT64_MAX})}).ReadMoneyUnits(0, std::span(units).first(1)), base::ArithmeticError);
}

TEST(Column, ReadsAnInfiniteNumberAmongOtherValuesAsInfinite) {
  const Column column =
      Build({Value(std::string("x")), Value(HUGE_VAL), Value(int64_t{7}), Value(-HUGE_VAL), Value(2.5), Value()});
  std::vector<double> numbers(6);
  column.ReadNumbers(0, numbers);
  EXPECT_EQ(numbers, (std::vector<double>{0, HUGE_VAL, 7, -HUGE_VAL, 2.5, 0}));
  EXPECT_EQ(column.Number(1), HUGE_VAL);
}

TEST(Column, RefusesAnInfiniteAmountInsteadOfReadingItAsZero) {
  int64_t units = 0;
  for (const double infinite : {HUGE_VAL, -HUGE_VAL}) {
    EXPECT_THROW(Build({Value(infinite)}).ReadMoneyUnits(0, std::span(&units, 1)), base::ArithmeticError);
    EXPECT_THROW(Build({Value(std::string("x")), Value(infinite)}).ReadMoneyUnits(1, std::span(&units, 1)),
                 base::ArithmeticError);
  }
}

TEST(Column, ReadsRowsOutsideAsNothing) {
  const Column column = Build({Value(1.5)});
  EXPECT_TRUE(column.IsNull(1));
  EXPECT_EQ(column.At(1), Value());
  EXPECT_EQ(column.Text(70000), "");
  std::vector<double> numbers(3, 9.0);
  column.ReadNumbers(0, numbers);
  EXPECT_EQ(numbers, (std::vector<double>{1.5, 0, 0}));
}

}  // namespace
}  // namespace stockbook::columns
