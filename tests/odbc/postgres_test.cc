// SPDX-License-Identifier: MIT
// A real PostgreSQL server behind its own ODBC driver: what it tells is what the embedded engine tells of the same
// inventory.
#include <gtest/gtest.h>

#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "odbc/odbc_drivers.h"
#include "odbc/postgres_inventory.h"
#include "stockbook/databases/odbc/odbc_connection.h"
#include "stockbook/platform/error.h"
#include "support/postgres_server.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;
using databases::OpenOdbc;
using platform::ErrorKind;

class OdbcOfPostgres : public ::testing::Test {
 protected:
  void SetUp() override {
    if (PostgresOdbcDriver().empty())
      GTEST_SKIP() << "the ODBC driver of PostgreSQL (odbc-postgresql) is not installed";
    server_ = SharedPostgresServer();
    if (server_ == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed (postgresql)";
    CreateInventory(file_);
    FillInventory(file_);
    CopyToPostgres(file_, *server_);
  }
  std::string Through(Dialect dialect, const std::string& more = "") const {
    return "Provider=Odbc;Driver=" + PostgresOdbcDriver() +
           ";Server=127.0.0.1;Port=" + std::to_string(server_->port()) + ";Database=postgres;UID=tester" +
           (more.empty() ? "" : ";" + more) + (dialect == Dialect::kServer ? ";Dialect=SQL" : "");
  }
  void ExpectSameAsEmbedded(Dialect dialect, const std::string& statement) {
    EmbeddedConnection embedded(dialect == Dialect::kServer ? file_.ServerString() : file_.DesktopString());
    EXPECT_EQ(ExactRows(OpenOdbc(Through(dialect, "Tables=*"))->Execute(statement)),
              ExactRows(embedded.Execute(statement)))
        << statement;
  }
  platform::Error ErrorOf(platform::Connection& connection, const std::string& statement) {
    try {
      connection.Execute(statement);
    } catch (const platform::Error& error) {
      return error;
    }
    ADD_FAILURE() << "no error";
    return {"", ""};
  }

  DatabaseFile file_;
  PostgresServer* server_ = nullptr;
};

TEST_F(OdbcOfPostgres, GivesTheJournalsOfTheEmbeddedEngine) {
  for (const Dialect dialect : {Dialect::kDesktop, Dialect::kServer}) {
    ExpectSameAsEmbedded(dialect, MaterialJournal(dialect, "1)", "2005-12"));
  }
  ExpectSameAsEmbedded(Dialect::kDesktop, ProjectJournal(Dialect::kDesktop, "1 And Recs.pjID=3", "2005-12"));
  ExpectSameAsEmbedded(Dialect::kDesktop, SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 5)", "2005-12"));
  ExpectSameAsEmbedded(Dialect::kDesktop, CustomerJournal(Dialect::kDesktop, " Where (Recs.ksID = 7)", "2005-12"));
}

TEST_F(OdbcOfPostgres, GivesTheBalancesOfTheEmbeddedEngine) {
  ExpectSameAsEmbedded(Dialect::kDesktop, DepotBalance("1", "", "2004-12"));
  ExpectSameAsEmbedded(Dialect::kDesktop, PartnerBalance("tqSuppBalance", "Where bn.ksID=5 And bn.pdID=1", "2005-01"));
  ExpectSameAsEmbedded(Dialect::kDesktop, "SELECT Max(AccPeriod) FROM tqAccPeriod");
}

TEST_F(OdbcOfPostgres, KeepsEveryKindOfValue) {
  server_->Run(
      "CREATE TABLE kinds(k int PRIMARY KEY, whole bigint, number double precision, amount numeric(19,4), day date, at "
      "timestamp, words text);"
      "INSERT INTO kinds VALUES(1, 9007199254740993, 0.1::float8+0.2::float8, 922337203685477.5807, '2005-01-05', "
      "'2005-01-05 08:30:00', '螺丝 🔩'), (2, NULL, NULL, NULL, NULL, NULL, NULL), (3, -1, 1e300, -0.0001, "
      "'1999-12-31', '1999-12-31', ''), (4, 0, 1.0/3, 0, '9999-12-31', '0100-01-01', repeat('长🔩', 20000))");
  const auto connection = OpenOdbc(Through(Dialect::kDesktop, "Tables=kinds;MaxLongVarcharSize=1000000"));
  const auto rows = ExactRows(connection->Execute("SELECT * FROM kinds ORDER BY k"));
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[0],
            "1:1|1:9007199254740993|2:0.30000000000000004|3:922337203685477.5807|4:2005-01-05|4:2005-01-05 08:30:00|"
            "5:螺丝 🔩|");
  EXPECT_EQ(rows[1], "1:2|0:|0:|0:|0:|0:|0:|");
  EXPECT_EQ(rows[2].substr(0, rows[2].find("|4:")), "1:3|1:-1|2:1.0000000000000001e+300|3:-0.0001");
  EXPECT_EQ(rows[3].size() - rows[3].rfind("|5:"), 20000U * 7 + 4);
}

TEST_F(OdbcOfPostgres, ReadsSeveralStatementsAsOfOneMomentAndWritesNothing) {
  const auto connection = OpenOdbc(Through(Dialect::kDesktop));
  const std::string count = "SELECT Count(*) FROM 入库记录";
  {
    const auto moment = connection->ReadAsOfOneMoment();
    ASSERT_NE(moment, nullptr);
    server_->Run("DELETE FROM 入库记录 WHERE \"RecID\"=100");
    EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "5");
  }
  EXPECT_EQ(connection->Execute(count).FieldValue(0).Text(), "4");
  EXPECT_EQ(ErrorOf(*connection, "DELETE FROM 入库记录").kind(), ErrorKind::kStatement);
}

TEST_F(OdbcOfPostgres, EndsAStatementAtItsDeadlineAndGoesOn) {
  server_->Run("CREATE TABLE many AS SELECT generate_series(1,100000) AS k");
  const auto connection = OpenOdbc(Through(Dialect::kDesktop, "Tables=*;Timeout=2"));
  const platform::Error error =
      ErrorOf(*connection, "SELECT Count(*) FROM many AS a, many AS b, many AS c WHERE a.k+b.k+c.k=0");
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
  EXPECT_EQ(connection->Execute("SELECT Count(*) FROM many").FieldValue(0).Text(), "100000");
}

TEST_F(OdbcOfPostgres, LeavesAStoppedServerAtTheDeadlineAndComesBack) {
  const auto connection = OpenOdbc(Through(Dialect::kDesktop, "Timeout=3"));
  server_->Pause();
  const platform::Error error = ErrorOf(*connection, "SELECT Count(*) FROM 入库记录");
  server_->Resume();
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
  EXPECT_EQ(connection->Execute("SELECT Count(*) FROM 入库记录").FieldValue(0).Text(), "5");
}

TEST_F(OdbcOfPostgres, LogsInAgainAfterTheServerWasKilled) {
  const auto connection = OpenOdbc(Through(Dialect::kDesktop, "Timeout=30"));
  {
    const auto moment = connection->ReadAsOfOneMoment();
    server_->Kill();
    const platform::Error error = ErrorOf(*connection, "SELECT Count(*) FROM 入库记录");
    EXPECT_EQ(error.kind(), ErrorKind::kInputOutput) << error.what();
    server_->Start();
    EXPECT_EQ(ErrorOf(*connection, "SELECT Count(*) FROM 入库记录").kind(), ErrorKind::kInputOutput)
        << "a moment never goes on as of another one";
  }
  EXPECT_EQ(connection->Execute("SELECT Count(*) FROM 入库记录").FieldValue(0).Text(), "5");
  server_->Kill();
  server_->Start();
  EXPECT_EQ(connection->Execute("SELECT Count(*) FROM 入库记录").FieldValue(0).Text(), "5");
}

TEST_F(OdbcOfPostgres, SaysThatTheServerIsNotThereAndThatThePasswordIsWrong) {
  try {
    OpenOdbc("Provider=Odbc;Driver=" + PostgresOdbcDriver() + ";Server=127.0.0.1;Port=1;Database=x;UID=y;PWD=geheim");
    ADD_FAILURE();
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
    EXPECT_EQ(std::string(error.what()).find("geheim"), std::string::npos);
  }
}

}  // namespace
}  // namespace stockbook::testing
