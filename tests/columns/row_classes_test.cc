// SPDX-License-Identifier: MIT
// Reading columns in blocks, and sorting their rows into classes.
#include "columns/row_classes.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

#include "stockbook/columns/column_builder.h"

namespace stockbook::columns {
namespace {

std::vector<size_t> CountsOf(size_t begin, size_t end) {
  std::vector<size_t> counts;
  size_t next = begin;
  for (const RowBlock block : RowBlocks(begin, end)) {
    EXPECT_EQ(block.first, next);
    next += block.count;
    counts.push_back(block.count);
  }
  return counts;
}

TEST(RowBlocks, AreFullUpToTheLastOne) {
  EXPECT_EQ(CountsOf(5, 5 + 2 * kBlockRows + 1), (std::vector<size_t>{kBlockRows, kBlockRows, 1}));
  EXPECT_EQ(CountsOf(0, kBlockRows), (std::vector<size_t>{kBlockRows}));
  EXPECT_TRUE(CountsOf(7, 7).empty());
  EXPECT_TRUE(CountsOf(9, 7).empty());
}

TEST(BlockReader, ReadsNumbersMoneyAndCodesAsTheColumnDoes) {
  ColumnBuilder builder;
  for (size_t row = 0; row < 3 * kBlockRows; ++row) builder.AppendInteger(static_cast<int64_t>(row % 7));
  const Column column = builder.Finish();
  BlockReader<double> numbers(&column);
  BlockReader<int64_t> units(&column);
  for (const RowBlock block : RowBlocks(3, column.size())) {
    EXPECT_EQ(numbers.Read(block).back(), static_cast<double>((block.first + block.count - 1) % 7));
    EXPECT_EQ(units.Read(block).front(), static_cast<int64_t>(block.first % 7) * 10000);
  }
  EXPECT_TRUE(BlockReader<double>(nullptr).Read({0, 10}).empty());
  builder.AppendText("a");
  builder.AppendText("b");
  builder.AppendText("a");
  const Column texts = builder.Finish();
  BlockReader<uint32_t> reader(&texts);
  const auto codes = reader.Read({0, 3});
  EXPECT_EQ(codes[0], codes[2]);
  EXPECT_EQ(texts.TextOfCode(codes[1]), "b");
}

TEST(RowClasses, AreAskedForOnceForEveryDistinctText) {
  ColumnBuilder builder;
  for (size_t row = 0; row < 2 * kBlockRows; ++row) builder.AppendText(row % 2 == 0 ? "even" : "odd");
  builder.AppendNull();
  const Column column = builder.Finish();
  int asked = 0;
  const auto classes = ClassifyTexts(&column, column.size(), [&](std::string_view text) {
    ++asked;
    return static_cast<uint8_t>(text.size());
  });
  EXPECT_EQ(asked, 3) << "nothing is a text, too";
  EXPECT_EQ(std::accumulate(classes.begin(), classes.end(), size_t{0}), 7 * kBlockRows);
  EXPECT_EQ(classes.back(), 0);
}

TEST(RowClasses, TakeNumbersForTheirTextsAndNoColumnForEmptyOnes) {
  ColumnBuilder builder;
  builder.AppendInteger(12);
  builder.AppendText("x");
  const Column column = builder.Finish();
  const auto length = [](std::string_view text) { return static_cast<uint8_t>(text.size()); };
  EXPECT_EQ(ClassifyTexts(&column, 2, length), (std::vector<uint8_t>{2, 1}));
  EXPECT_EQ(ClassifyTexts(nullptr, 2, length), (std::vector<uint8_t>{0, 0}));
}

TEST(RowClasses, OfNumbersReadWhatIsNoneAsZero) {
  ColumnBuilder builder;
  for (const char* text : {"-1", "?", "2.5"}) builder.AppendText(text);
  const Column column = builder.Finish();
  const auto sign = [](double number) { return static_cast<uint8_t>(number > 0 ? 2 : number < 0 ? 1 : 0); };
  EXPECT_EQ(ClassifyNumbers(&column, 3, sign), (std::vector<uint8_t>{1, 0, 2}));
  EXPECT_EQ(ClassifyNumbers(nullptr, 1, sign), (std::vector<uint8_t>{0}));
}

}  // namespace
}  // namespace stockbook::columns
