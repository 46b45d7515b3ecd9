// SPDX-License-Identifier: MIT
#include "stockbook/platform/recordset.h"

#include <gtest/gtest.h>

#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"

namespace stockbook::platform {
namespace {

Recordset TwoRows() {
  columns::ColumnBuilder builder;
  builder.AppendText("总库");
  builder.AppendText("分库");
  std::vector<Field> fields;
  fields.push_back({"仓库名称", builder.Finish()});
  columns::ColumnBuilder years;
  years.AppendInteger(2005);
  years.AppendInteger(2006);
  fields.push_back({"Year", years.Finish()});
  return Recordset(std::move(fields));
}

TEST(Recordset, ReadsTheCurrentRecordByNameWhateverItsCase) {
  Recordset rows = TwoRows();
  EXPECT_EQ(rows.RecordCount(), 2u);
  EXPECT_EQ(rows.FieldValue("仓库名称").Text(), "总库");
  EXPECT_EQ(rows.FieldValue("YEAR").Text(), "2005");
  rows.MoveNext();
  EXPECT_EQ(rows.FieldValue("Year").Text(), "2006");
  EXPECT_EQ(rows.FieldValue(size_t{0}).Text(), "分库");
  rows.MoveNext();
  EXPECT_TRUE(rows.AtEnd());
}

TEST(Recordset, HasTheFieldsOfExactlyTheirNames) {
  const Recordset rows = TwoRows();
  EXPECT_TRUE(rows.HasField("Year"));
  EXPECT_FALSE(rows.HasField("YEAR"));
  EXPECT_FALSE(Recordset().HasField(""));
}

TEST(Recordset, SaysWhichFieldItDoesNotHaveAndWhatToDo) {
  const Recordset rows = TwoRows();
  try {
    rows.FieldValue("年份");
    FAIL() << "nothing was thrown";
  } catch (const Error& error) {
    EXPECT_EQ(error.operation(), "read field");
    EXPECT_STREQ(error.what(), "查询结果中没有字段“年份”，请检查数据库的表结构。");
  }
}

TEST(Recordset, RefusesToReadAFieldThatEndsBeforeTheOthers) {
  columns::ColumnBuilder shorter;
  shorter.Append(base::Value(int64_t{1}));
  columns::ColumnBuilder longer;
  for (int record = 0; record < 2; ++record) longer.Append(base::Value(int64_t{record}));
  std::vector<Field> fields;
  fields.push_back({"short", shorter.Finish()});
  fields.push_back({"long", longer.Finish()});
  Recordset records(std::move(fields));
  EXPECT_EQ(records.FieldValue("short").Text(), "1");
  records.MoveNext();
  ASSERT_FALSE(records.AtEnd());
  EXPECT_EQ(records.FieldValue("long").Text(), "1");
  EXPECT_THROW(records.FieldValue("short"), Error);
}

TEST(Recordset, RefusesToReadAfterTheLastRecord) {
  Recordset rows = TwoRows();
  rows.MoveNext();
  rows.MoveNext();
  EXPECT_THROW(rows.FieldValue("Year"), Error);
}

TEST(Recordset, KeepsWhatIsRemarkedOnItsRowsWhereverItGoes) {
  Recordset rows = TwoRows();
  EXPECT_TRUE(rows.Remarks().empty());
  rows.AddRemark("有 1 行没有列出。");
  rows.AddRemark("有 2 行没有列出。");
  Recordset moved = std::move(rows);
  moved.TakeAll();
  moved.Close();
  EXPECT_EQ(moved.Remarks(), (std::vector<std::string>{"有 1 行没有列出。", "有 2 行没有列出。"}));
}

}  // namespace
}  // namespace stockbook::platform
