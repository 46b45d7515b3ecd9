// SPDX-License-Identifier: MIT
#include "com/ado/ado_connection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com/ado_double/ado_double.h"

namespace stockbook::com {
namespace {

using testing::AdoLog;
using testing::AdoManner;
using testing::AdoRows;
using testing::MadeRows;

// `count` rows: a number, and a text that one in `texts` rows has.
std::shared_ptr<MadeRows> CountedRows(int32_t count, int32_t texts = 7) {
  auto rows = std::make_shared<MadeRows>(std::vector<std::string>{"RecID", "品名"});
  for (int32_t row = 0; row < count; ++row) rows->Add(Variant(row), Variant("货" + std::to_string(row % texts)));
  return rows;
}

ComPtr<IDispatch> DoubleOf(AdoLog& log, std::shared_ptr<AdoRows> rows, AdoManner manner = {}) {
  return testing::MakeAdoDouble(
      log, "Provider=Some;Data Source=a.mdb", [rows](const std::string&) { return rows; }, std::move(manner));
}

void ExpectCountedRows(platform::Recordset result, int32_t count, int32_t texts = 7) {
  ASSERT_EQ(result.RecordCount(), static_cast<size_t>(count));
  for (int32_t row = 0; row < count; ++row, result.MoveNext()) {
    ASSERT_EQ(result.FieldValue("RecID"), base::Value(int64_t{row}));
    ASSERT_EQ(result.FieldValue("品名"), base::Value("货" + std::to_string(row % texts)));
  }
}

TEST(AdoConnection, SendsTheStatementAsItStandsAndLeavesItsKindToTheProvider) {
  AdoLog log;
  const std::string statement = "Select 商品名称 As [a'b] From 商品资料  Where x = '\xF0\xA0\xAE\xB7' ";
  const auto connection = OpenAdoConnection(DoubleOf(log, CountedRows(1)).get());
  connection->Execute(statement);
  EXPECT_EQ(log.last_statement, statement);
  EXPECT_EQ(log.last_options, -1);
  connection->Execute("x", 1);
  EXPECT_EQ(log.last_options, 1);
}

TEST(AdoConnection, IsNoneWithoutAnObject) { EXPECT_EQ(OpenAdoConnection(nullptr), nullptr); }

TEST(AdoConnection, KnowsNoMoments) {
  AdoLog log;
  EXPECT_EQ(OpenAdoConnection(DoubleOf(log, CountedRows(1)).get())->ReadAsOfOneMoment(), nullptr);
}

TEST(AdoConnection, ReadsFieldsWithoutRowsWhereTheRecordsetIsAtItsEndAtOnce) {
  for (const auto fetch : {AdoManner::Fetch::kPortions, AdoManner::Fetch::kRowByRow}) {
    AdoLog log;
    AdoManner manner;
    manner.fetch = fetch;
    platform::Recordset result = OpenAdoConnection(DoubleOf(log, CountedRows(0), manner).get())->Execute("");
    EXPECT_TRUE(result.AtEnd());
    EXPECT_EQ(log.portions, 0);
    EXPECT_EQ(log.closed, 1);
    const auto fields = result.TakeAll();
    ASSERT_EQ(fields.size(), 2U);
    EXPECT_EQ(fields[1].name, "品名");
  }
}

TEST(AdoConnection, ReadsARecordsetWithoutFields) {
  AdoLog log;
  const auto none = std::make_shared<MadeRows>(std::vector<std::string>{});
  EXPECT_EQ(OpenAdoConnection(DoubleOf(log, none).get())->Execute("").FieldCount(), 0U);
  EXPECT_EQ(log.closed, 1);
}

TEST(AdoConnection, ReadsLongResultsInPortions) {
  AdoLog log;
  ExpectCountedRows(OpenAdoConnection(DoubleOf(log, CountedRows(1000)).get())->Execute(""), 1000);
  EXPECT_EQ(log.portions, 4);
  EXPECT_EQ(log.moves, 0);
  EXPECT_EQ(log.cache_size, 256);
  EXPECT_EQ(log.closed, 1);
}

TEST(AdoConnection, KeepsTextsApartThatHardlyEverComeAgain) {
  AdoLog log;
  ExpectCountedRows(OpenAdoConnection(DoubleOf(log, CountedRows(12000, 11000)).get())->Execute(""), 12000, 11000);
}

TEST(AdoConnection, ReadsRowByRowWhereThereIsNoGetRows) {
  AdoLog log;
  AdoManner manner;
  manner.fetch = AdoManner::Fetch::kRowByRow;
  ExpectCountedRows(OpenAdoConnection(DoubleOf(log, CountedRows(300), manner).get())->Execute(""), 300);
  EXPECT_EQ(log.moves, 300);
  EXPECT_EQ(log.closed, 1);
}

TEST(AdoConnection, LooksNamesUpOnceForAClassOfObjects) {
  AdoLog log;
  const auto object = DoubleOf(log, CountedRows(600));
  const auto connection = OpenAdoConnection(object.get());
  connection->Execute("");
  const int lookups = log.name_lookups;
  EXPECT_LE(lookups, 12);
  ExpectCountedRows(connection->Execute(""), 600);
  EXPECT_EQ(log.name_lookups, lookups);
}

TEST(AdoConnection, AsksEveryObjectForItsOwnIdsWhereItHasNoClass) {
  for (const auto fetch : {AdoManner::Fetch::kPortions, AdoManner::Fetch::kRowByRow}) {
    AdoLog log;
    AdoManner manner;
    manner.type = AdoManner::Type::kNone;
    manner.fetch = fetch;
    const auto connection = OpenAdoConnection(DoubleOf(log, CountedRows(30), manner).get());
    ExpectCountedRows(connection->Execute(""), 30);
    ExpectCountedRows(connection->Execute(""), 30);
  }
}

TEST(AdoConnection, LetsGoOfEveryObject) {
  for (const auto fetch : {AdoManner::Fetch::kPortions, AdoManner::Fetch::kRowByRow}) {
    AdoLog log;
    AdoManner manner;
    manner.fetch = fetch;
    {
      auto object = DoubleOf(log, CountedRows(300), manner);
      const auto connection = OpenAdoConnection(object.get());
      object.Reset();
      connection->Execute("");
      EXPECT_EQ(log.objects, 1);
    }
    EXPECT_EQ(log.objects, 0);
  }
}

TEST(AdoConnection, MayBeDestroyedByTheHostWhileItExecutes) {
  AdoLog log;
  AdoManner manner;
  ComPtr<IDispatch> object;
  std::shared_ptr<platform::Connection> connection;
  manner.meanwhile = [&] {
    object.Reset();
    connection.reset();
  };
  object = DoubleOf(log, CountedRows(600), manner);
  connection = OpenAdoConnection(object.get());
  platform::Connection& borrowed = *connection;
  ExpectCountedRows(borrowed.Execute(""), 600);
  EXPECT_EQ(log.closed, 1);
  EXPECT_EQ(log.objects, 0);
}

TEST(AdoConnection, TellsTheConnectionStringAfresh) {
  AdoLog log;
  const auto connection = OpenAdoConnection(DoubleOf(log, CountedRows(1)).get());
  EXPECT_EQ(connection->ConnectionString(), "Provider=Some;Data Source=a.mdb");
  EXPECT_FALSE(platform::IsServerDialect(connection->ConnectionString()));
}

std::string ConnectionStringOf(const std::string& text) {
  AdoLog log;
  const auto object = testing::MakeAdoDouble(log, text, [](const std::string&) { return CountedRows(0); });
  return OpenAdoConnection(object.get())->ConnectionString();
}

TEST(AdoConnection, NeverTellsAPassword) {
  EXPECT_EQ(ConnectionStringOf("Provider=SQLOLEDB.1;Password=geheim;User ID=sa;Data Source=."),
            "Provider=SQLOLEDB.1;User ID=sa;Data Source=.");
  EXPECT_EQ(ConnectionStringOf("PWD = x"), "");
  EXPECT_EQ(ConnectionStringOf("Provider=Jet; Jet OLEDB:Database Password=\"a;b\"\"c\" ;Mode=Read"),
            "Provider=Jet;Mode=Read");
  EXPECT_EQ(ConnectionStringOf("Password='never closed;Mode=Read"), "");
  EXPECT_EQ(ConnectionStringOf("a;Password=1"), "a;");
}

TEST(AdoConnection, LeavesAConnectionStringWithoutPasswordsAsItIs) {
  for (const std::string text :
       {"", ";;", "DSN", "=;=", "Extended Properties=\"x;y=1\";Mode=Read;", "Provider= 'a''b'"}) {
    EXPECT_EQ(ConnectionStringOf(text), text);
  }
}

}  // namespace
}  // namespace stockbook::com
