// SPDX-License-Identifier: MIT
#include "stockbook/copy/inventory_copy.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "app/inventory_fixture.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/copy/copy_progress.h"
#include "stockbook/copy/file_table_writer.h"
#include "stockbook/inventory/database_source.h"
#include "stockbook/platform/error.h"
#include "stockbook/sample/sample_inventory.h"

namespace stockbook::app {
namespace {

using databases::StoredType;

columns::Column ColumnOf(std::initializer_list<base::Value> values) {
  columns::ColumnBuilder builder;
  for (const base::Value& value : values) builder.Append(value);
  return builder.Finish();
}

// A target that stores something else than what it is given.
class ForgetfulWriter : public FileTableWriter {
 public:
  ForgetfulWriter(const std::string& path, std::string table) : FileTableWriter(path), table_(std::move(table)) {}
  void Write(const databases::StoredTable& table, std::span<const columns::Column> columns, size_t first,
             size_t count) override {
    FileTableWriter::Write(table, columns, first, table.name == table_ ? count - 1 : count);
  }
  void Commit() override { ADD_FAILURE() << "committed what differs"; }

 private:
  std::string table_;
};

class ChangingWriter : public FileTableWriter {
 public:
  using FileTableWriter::FileTableWriter;
  std::vector<columns::Column> ReadBack(const databases::StoredTable& table) override {
    auto columns = FileTableWriter::ReadBack(table);
    if (table.name == "仓库设置")
      columns[1] = columns::Column::Constant(base::Value(std::string("x")), columns[1].size());
    return columns;
  }
  void Commit() override { ADD_FAILURE() << "committed what differs"; }
};

class InventoryCopyTest : public InventoryTest {
 protected:
  InventoryCopyTest() {
    WriteSampleInventory(PathOf("source.db"), {});
    source_ = OpenInventory(PathOf("source.db"));
  }
  std::string ErrorOf(databases::TableWriter& writer) {
    try {
      CopyInventory(*source_, writer, [](auto...) {});
    } catch (const platform::Error& error) {
      return error.what();
    }
    return "copied";
  }
  std::shared_ptr<platform::Connection> source_;
};

TEST_F(InventoryCopyTest, FindsARowThatWasNotStored) {
  {
    ForgetfulWriter writer(PathOf("target.db"), "出库记录");
    EXPECT_TRUE(ErrorOf(writer).starts_with("核对失败：写入的表“出库记录”的行数与源不同，没有保留任何内容"));
  }
  EXPECT_EQ(Files(), std::vector<std::string>{"source.db"});
}

TEST_F(InventoryCopyTest, FindsAValueThatWasStoredOtherwise) {
  ChangingWriter writer(PathOf("target.db"));
  EXPECT_TRUE(ErrorOf(writer).starts_with("核对失败：写入的表“仓库设置”的列“仓库名称”与源不同"));
}

TEST_F(InventoryCopyTest, TellsHowFarItIs) {
  FileTableWriter writer(PathOf("target.db"));
  std::vector<std::string> steps;
  CopyInventory(*source_, writer, [&](std::string_view step, std::string_view table, size_t, size_t) {
    steps.push_back(std::string(step) + " " + std::string(table));
  });
  EXPECT_EQ(steps.front(), "读取 入库目录");
  EXPECT_EQ(steps.back(), "核对 tqProjBalance");
}

TEST(ColumnDigest, DiffersWhereValuesOrTheirOrderDo) {
  const auto text = [](const char* value) { return base::Value(std::string(value)); };
  const ColumnDigest digest = DigestOf(ColumnOf({text("a"), text("bc"), {}}), StoredType::kText);
  EXPECT_EQ(digest.values, 2U);
  EXPECT_EQ(digest, DigestOf(ColumnOf({text("a"), text("bc"), {}}), StoredType::kText));
  EXPECT_NE(digest, DigestOf(ColumnOf({text("ab"), text("c"), {}}), StoredType::kText));
  EXPECT_NE(digest, DigestOf(ColumnOf({text("bc"), text("a"), {}}), StoredType::kText));
  EXPECT_NE(digest, DigestOf(ColumnOf({text("a"), text("bc"), text("")}), StoredType::kText));
}

TEST(ColumnDigest, IsThatOfTheValueHoweverItIsTyped) {
  const auto numbers = ColumnOf({base::Value(int64_t{5}), base::Value(-0.5)});
  EXPECT_EQ(DigestOf(numbers, StoredType::kNumber),
            DigestOf(ColumnOf({base::Value(5.0), base::Value(-0.5)}), StoredType::kNumber));
  const auto money = ColumnOf({base::Value(base::Money::FromUnits(50000)), base::Value(base::Money::FromUnits(-5000))});
  EXPECT_EQ(DigestOf(numbers, StoredType::kMoney), DigestOf(money, StoredType::kMoney));
  EXPECT_EQ(DigestOf(money, StoredType::kMoney).sum, "4.5");
}

TEST(ColumnDigest, TellsInfiniteNumbersFromZero) {
  const double infinite = std::numeric_limits<double>::infinity();
  const auto digest = [](double number) { return DigestOf(ColumnOf({base::Value(number)}), StoredType::kNumber); };
  EXPECT_NE(digest(infinite), digest(0));
  EXPECT_NE(digest(infinite), digest(-infinite));
}

TEST(ColumnDigest, SumsExactly) {
  const base::Value most(INT64_MAX);
  EXPECT_EQ(DigestOf(ColumnOf({most, most, most}), StoredType::kWhole).sum, "27670116110564327421");
  const base::Value least(base::Money::FromUnits(INT64_MIN));
  EXPECT_EQ(DigestOf(ColumnOf({least, least}), StoredType::kMoney).sum, "-1844674407370955.1616");
  EXPECT_EQ(DigestOf(ColumnOf({base::Value(base::Money::FromUnits(-1))}), StoredType::kMoney).sum, "-0.0001");
}

TEST(StoredValues, AreHeldExactlyOrNotAtAll) {
  EXPECT_TRUE(HoldsExactly(StoredType::kMoney, base::Value(0.1)));
  EXPECT_FALSE(HoldsExactly(StoredType::kMoney, base::Value(1.0 / 3)));
  EXPECT_FALSE(HoldsExactly(StoredType::kWhole, base::Value(0.5)));
  EXPECT_FALSE(HoldsExactly(StoredType::kNumber, base::Value((int64_t{1} << 53) + 1)));
  EXPECT_TRUE(HoldsExactly(StoredType::kNumber, base::Value(base::Money::FromUnits(1))));
  EXPECT_FALSE(HoldsExactly(StoredType::kNumber, base::Value(base::Money::FromUnits(INT64_MAX))));
  EXPECT_FALSE(HoldsExactly(StoredType::kText, base::Value(int64_t{7})));
}

TEST(CopyProgress, WritesOneLineOnATerminalAndClearsIt) {
  std::ostringstream out;
  {
    CopyProgress progress(out, ProgressStyle::kOneLine);
    progress.Show("复制", "出库记录", 5, 10, CopyProgress::Clock::now());
    EXPECT_EQ(out.str(), "\r\033[K复制 出库记录 5/10");
  }
  EXPECT_TRUE(out.str().ends_with("\r\033[K"));
}

TEST(CopyProgress, WritesALineEveryFewSecondsElsewhere) {
  std::ostringstream out;
  const auto start = CopyProgress::Clock::now();
  CopyProgress progress(out, ProgressStyle::kLines);
  progress.Show("读取", "a", 0, 0, start);
  progress.Show("复制", "b", 5, 10, start + 2 * CopyProgress::kPause);
  progress.Show("复制", "c", 5, 10, start + 2 * CopyProgress::kPause + CopyProgress::kPause / 2);
  EXPECT_EQ(out.str(), "复制 b 5/10\n");
}

}  // namespace
}  // namespace stockbook::app
