// SPDX-License-Identifier: MIT
// Tables that a host's own objects hand over as whole columns.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "databases/database_file.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"

namespace stockbook::databases {
namespace {

using testing::AllRows;
using testing::ExactRows;

using Values = std::vector<base::Value>;

base::Value Whole(int64_t number) { return base::Value(number); }
base::Value Words(const char* text) { return base::Value(std::string(text)); }

platform::Field FieldOf(const std::string& name, const Values& values) {
  columns::ColumnBuilder builder;
  for (const base::Value& value : values) builder.Append(value);
  return {name, builder.Finish()};
}

// Gives the tables that it has as columns, and nothing else.
class ColumnTables : public RowSource {
 public:
  void Periods(const Take<std::string>&) override {}
  void Receipts(const RowFilter&, const TakeLine&) override {}
  void Issues(const RowFilter&, const TakeLine&) override {}
  std::optional<std::vector<platform::Field>> Columns(std::string_view table, const RowFilter& filter) override {
    asked = filter;
    const auto found = tables.find(std::string(table));
    if (found == tables.end()) return std::nullopt;
    std::vector<platform::Field> fields;
    for (const auto& [name, values] : found->second) fields.push_back(FieldOf(name, values));
    return fields;
  }

  std::map<std::string, std::vector<std::pair<std::string, Values>>> tables;
  RowFilter asked;
};

class RowColumns : public ::testing::Test {
 protected:
  std::vector<std::string> Rows(std::string_view statement) { return AllRows(connection_->Execute(statement)); }
  std::string ErrorOf(std::string_view statement) {
    try {
      connection_->Execute(statement);
    } catch (const platform::Error& error) {
      EXPECT_TRUE(error.IsOfEngine());
      return error.what();
    }
    return "no error";
  }

  std::shared_ptr<ColumnTables> source_ = std::make_shared<ColumnTables>();
  std::unique_ptr<platform::Connection> connection_ = OpenRowSource(source_);
};

TEST_F(RowColumns, AreFoundByTheirNamesAndMayBeFewerThanTheTables) {
  source_->tables["入库记录"] = {{"recid", {Whole(21), Whole(22), Whole(23)}},
                                 {"pdID", {Whole(7), Whole(7), Whole(7)}},
                                 {"another", {Whole(1), Whole(2), Whole(3)}}};
  EXPECT_EQ(Rows("SELECT RecID, pdID, 数量 FROM 入库记录 WHERE pdID=7 ORDER BY RecID"),
            (std::vector<std::string>{"21|7|~", "22|7|~", "23|7|~"}));
  EXPECT_EQ(source_->asked.products, std::vector<int64_t>{7});
}

TEST_F(RowColumns, KeepEmptyTextsAndNullsApart) {
  source_->tables["厂商资料"] = {{"KSID", {Whole(1), Whole(2), Whole(3)}},
                                 {"ClassCode", {Words(""), base::Value(), Words("01")}}};
  EXPECT_EQ(Rows("SELECT KSID, ClassCode FROM 厂商资料 ORDER BY KSID"),
            (std::vector<std::string>{"1|", "2|~", "3|01"}));
  EXPECT_EQ(Rows("Select ksID From 厂商资料 Where ClassCode like '%'").size(), 2U) << "as in a file";
}

TEST_F(RowColumns, KeepEveryTypeExactly) {
  const auto money = [](const char* text) { return base::Value(*base::Money::Parse(text)); };
  source_->tables["入库记录"] = {
      {"RecID", {Whole(9007199254740993), Whole(INT64_MAX), Whole(-INT64_MAX), Words("12")}},
      {"pdID", {Whole(1), Whole(9007199254740993), base::Value(2.0), base::Value()}},
      {"数量", {base::Value(0.1), base::Value(1e300), Whole(3), base::Value()}},
      {"除税金额", {money("922337203685477.5807"), money("-0.0001"), money("0"), base::Value()}},
      {"ProductDate",
       {base::Value(*base::Date::FromParts({2005, 3, 8, 23, 59, 59})), base::Value(*base::Date::FromParts({100, 1, 1})),
        base::Value(*base::Date::FromParts({9999, 12, 31})), base::Value()}},
      {"SerialNo", {Words("0012"), Words("中文 'x'"), Words(" 1 "), Words("1e3")}}};
  EXPECT_EQ(Rows("SELECT RecID, pdID, 数量, 除税金额, ProductDate, SerialNo FROM 入库记录 ORDER BY RecID"),
            (std::vector<std::string>{"-9223372036854775807|2|3|0|9999-12-31| 1 ", "12|~|~|~|~|1e3",
                                      "9007199254740993|1|0.1|922337203685477.5807|2005-03-08 23:59:59|0012",
                                      "9223372036854775807|9007199254740993|1E+300|-0.0001|0100-01-01|中文 'x'"}));
}

TEST_F(RowColumns, MustBeOfOneLength) {
  source_->tables["入库记录"] = {{"RecID", {Whole(1), Whole(2), Whole(3)}}, {"数量", {Whole(5), Whole(6)}}};
  const std::string said = ErrorOf("SELECT Sum(数量) FROM 入库记录");
  EXPECT_EQ(said,
            "表“入库记录”的字段不一样长：RecID 有 3 行，数量 有 2 行。请在 RowSource::Columns 中给出同样多的值。");
  source_->tables["入库记录"] = {{"数量", {Whole(5), Whole(6)}}, {"RecID", {Whole(1)}}};
  EXPECT_NE(ErrorOf("SELECT Sum(数量) FROM 入库记录").find("不一样长"), std::string::npos);
}

// Without them a journal or a balance would be empty, and nobody would know why.
TEST_F(RowColumns, MustHaveTheFieldsByWhichRowsAreFound) {
  source_->tables["入库记录"] = {{"RecID", {Whole(1)}}, {"BillID", {Whole(1)}}, {"数量", {Whole(5)}}};
  EXPECT_EQ(ErrorOf("SELECT Sum(数量) FROM 入库记录 WHERE pdID=7"),
            "表“入库记录”缺少字段 pdID，没有它就找不到要读的行：请在 RowSource::Columns 中给出它。");
  EXPECT_EQ(Rows("SELECT Sum(数量) FROM 入库记录"), (std::vector<std::string>{"5"})) << "nothing is found by it here";
  source_->tables["出库记录"] = {{"RecID", {Whole(1)}}, {"pdID", {Whole(7)}}};
  EXPECT_NE(ErrorOf("SELECT BillID FROM 出库记录").find("表“出库记录”缺少字段 BillID"), std::string::npos);
  source_->tables["入库目录"] = {{"BillID", {Whole(1)}}};
  EXPECT_NE(ErrorOf("SELECT BillID FROM 入库目录 WHERE AccPeriod<='2005-03'").find("“入库目录”缺少字段 AccPeriod"),
            std::string::npos);
  source_->tables["仓库余额表"] = {{"ID", {Whole(1)}}, {"PdID", {Whole(1)}}};
  EXPECT_NE(ErrorOf("SELECT * FROM 仓库余额表").find("“仓库余额表”缺少字段 DpID"), std::string::npos);
  source_->tables["tqSuppBalance"] = {{"bnPeriod", {Words("2005-01")}}, {"ksID", {Whole(5)}}};
  EXPECT_NE(ErrorOf("SELECT Sum(LastQuantity) FROM tqSuppBalance WHERE pdID=1").find("缺少字段 pdID"),
            std::string::npos);
  source_->tables["tqAccPeriod"] = {{"Period", {Words("2005-01")}}};
  EXPECT_NE(ErrorOf("Select * From tqAccPeriod Order by AccPeriod").find("“tqAccPeriod”缺少字段 AccPeriod"),
            std::string::npos);
}

TEST_F(RowColumns, MustHaveWholeNumbersForKeys) {
  for (const base::Value& key : {base::Value(), Words("x"), base::Value(2.5), Words("")}) {
    source_->tables["入库记录"] = {{"RecID", {Whole(1), key}}, {"数量", {Whole(5), Whole(6)}}};
    EXPECT_EQ(ErrorOf("SELECT Sum(数量) FROM 入库记录"),
              "表“入库记录”第 2 行的键 RecID 不是整数：每一行须有自己的编号，请更正后再读入。")
        << key.Text();
  }
}

}  // namespace
}  // namespace stockbook::databases
