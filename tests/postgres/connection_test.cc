// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>

#include "contract/postgres_copy.h"
#include "databases/database_file.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "postgres/session_fixture.h"
#include "stockbook/databases/postgres/postgres_connection.h"
#include "stockbook/databases/providers/open_connection.h"

namespace stockbook::databases {
namespace {

using testing::ExactRows;

// The same inventory in a file and on the server.
class PostgresConnections : public PostgresTest {
 protected:
  void SetUp() override {
    PostgresTest::SetUp();
    if (IsSkipped()) return;
    file_.emplace();
    testing::CreateInventory(*file_);
    testing::FillInventory(*file_);
    server().Run(testing::PostgresCopyOf(*file_));
  }

  std::unique_ptr<platform::Connection> Open(Dialect dialect, const std::string& more = {}) {
    return OpenConnection(server().ConnectionString((dialect == Dialect::kServer ? "Dialect=SQL;" : "") + more));
  }
  void ExpectAsInTheFile(Dialect dialect, const std::string& statement) {
    EmbeddedConnection embedded(dialect == Dialect::kServer ? file_->ServerString() : file_->DesktopString());
    const auto expected = ExactRows(embedded.Execute(statement));
    EXPECT_FALSE(expected.empty()) << statement;
    EXPECT_EQ(ExactRows(Open(dialect)->Execute(statement)), expected) << statement;
  }

  std::optional<testing::DatabaseFile> file_;
};

TEST_F(PostgresConnections, GiveTheMaterialJournalOfTheFile) {
  for (const Dialect dialect : {Dialect::kDesktop, Dialect::kServer}) {
    ExpectAsInTheFile(dialect, testing::MaterialJournal(dialect, "1)", "2005-03"));
  }
}

TEST_F(PostgresConnections, GiveThePartnerJournalsOfTheFile) {
  ExpectAsInTheFile(Dialect::kDesktop,
                    testing::SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 5)", "2005-03"));
  ExpectAsInTheFile(Dialect::kDesktop,
                    testing::CustomerJournal(Dialect::kDesktop, " Where (Recs.ksID = 8)", "2005-03"));
}

TEST_F(PostgresConnections, GiveTheProjectJournalOfTheFile) {
  ExpectAsInTheFile(Dialect::kDesktop, testing::ProjectJournal(Dialect::kDesktop, "1", "2005-03"));
}

TEST_F(PostgresConnections, GiveTheBalancesOfTheFile) {
  ExpectAsInTheFile(Dialect::kDesktop, testing::DepotBalance("1", "", "2004-12"));
  ExpectAsInTheFile(Dialect::kServer, testing::PartnerBalance("tqSuppBalance", " Where ksID = 5", "2004-12"));
}

TEST_F(PostgresConnections, TellTheirStringWithoutThePassword) {
  const auto connection = Open(Dialect::kDesktop, "User=locked;Password='open; sesame'");
  EXPECT_EQ(connection->ConnectionString().find("sesame"), std::string::npos);
  EXPECT_FALSE(platform::IsServerDialect(connection->ConnectionString()));
  EXPECT_TRUE(platform::IsServerDialect(Open(Dialect::kServer)->ConnectionString()));
}

TEST_F(PostgresConnections, ReadOneMomentThroughSeveralStatements) {
  const auto connection = Open(Dialect::kDesktop);
  const char* count = "SELECT count(*) AS n FROM 商品设置";
  {
    const auto moment = connection->ReadAsOfOneMoment();
    server().Run("DELETE FROM \"商品设置\" WHERE \"pdID\" = 3");
    const auto inner = connection->ReadAsOfOneMoment();
    EXPECT_EQ(connection->Execute(count).FieldValue("n").Text(), "3");
    EXPECT_THROW(connection->Execute("SELECT nothing FROM 商品设置"), platform::Error);
    EXPECT_EQ(connection->Execute(count).FieldValue("n").Text(), "3");
  }
  EXPECT_EQ(connection->Execute(count).FieldValue("n").Text(), "2");
}

TEST_F(PostgresConnections, RefuseWhatIsNoSelectOrNoTableOfTheirs) {
  const auto connection = Open(Dialect::kDesktop);
  for (const char* statement : {"DELETE FROM 商品设置", "SELECT 1; DELETE FROM 商品设置", "SELECT * FROM pg_authid",
                                "SELECT pg_read_file('/etc/passwd')", "SELECT * FROM wages"}) {
    EXPECT_EQ(ErrorOf([&] { connection->Execute(statement); }).kind(), platform::ErrorKind::kStatement) << statement;
  }
  EXPECT_EQ(server().Run("SELECT count(*) FROM \"商品设置\""), "3");
}

TEST_F(PostgresConnections, FailInALostMomentAndWorkInTheNext) {
  const auto connection = Open(Dialect::kDesktop);
  const char* count = "SELECT count(*) AS n FROM 商品设置";
  {
    const auto moment = connection->ReadAsOfOneMoment();
    connection->Execute(count);
    server().Kill();
    EXPECT_EQ(ErrorOf([&] { connection->Execute(count); }).kind(), platform::ErrorKind::kInputOutput);
    server().Start();
    EXPECT_EQ(ErrorOf([&] { connection->Execute(count); }).kind(), platform::ErrorKind::kInputOutput);
  }
  EXPECT_EQ(connection->Execute(count).FieldValue("n").Text(), "3");
}

TEST_F(PostgresConnections, EndTheirMomentThoughTheServerIsStopped) {
  const auto connection = Open(Dialect::kDesktop, "Timeout=0.5");
  auto moment = connection->ReadAsOfOneMoment();
  server().Pause();
  EXPECT_EQ(ErrorOf([&] { connection->Execute("SELECT count(*) AS n FROM 商品设置"); }).kind(),
            platform::ErrorKind::kInterrupted);
  moment.reset();
  server().Resume();
}

}  // namespace
}  // namespace stockbook::databases
