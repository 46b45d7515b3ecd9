// SPDX-License-Identifier: MIT
// One inventory in databases of every kind: the exports are the same to the byte.
#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "end_to_end/fixture.h"
#include "stockbook/databases/providers/open_connection.h"
#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ
#include "support/postgres_server.h"
#endif

namespace stockbook::end_to_end {
namespace {

const std::filesystem::path kShared = std::filesystem::path(STOCKBOOK_SOURCE_DIR) / "../shared/data";

const std::vector<std::vector<std::string>> kJournals = {
    {"--journal", "material", "--product", "1"},
    {"--journal", "material", "--product", "2", "--second", "1"},
    {"--journal", "supplier", "--product", "1", "--second", "1"},
    {"--journal", "supplier", "--second", "2"},
    {"--journal", "customer", "--product", "3", "--second", "1"},
    {"--journal", "customer", "--second", "2"},
    {"--journal", "customer", "--product", "1"},
    {"--journal", "project", "--product", "1"},
    {"--journal", "project", "--product", "2", "--second", "1"},
    {"--journal", "project", "--product", "2", "--class", "01"},
};

class SameExports : public EndToEnd {
 protected:
  // What the program gives for a journal: its rows, and what it has to say.
  std::string ExportOf(const std::string& database, const std::vector<std::string>& journal) const {
    std::vector<std::string> arguments = {"export", database, "--format", "ndjson"};
    arguments.insert(arguments.end(), journal.begin(), journal.end());
    const Outcome outcome = Program(arguments);
    return std::to_string(outcome.code) + "\n" + outcome.out;
  }

  // Every journal of the others is that of the first; some have lines.
  void ExpectTheSame(const std::string& first, const std::vector<std::string>& others) const {
    size_t bytes = 0;
    for (const auto& journal : kJournals) {
      const std::string expected = ExportOf(first, journal);
      bytes += expected.size();
      for (const std::string& other : others)
        EXPECT_TRUE(ExportOf(other, journal) == expected) << other << "\n" << ::testing::PrintToString(journal);
    }
    EXPECT_GT(bytes, 100'000U);
  }

  std::string Unpacked(const std::string& name) const {
    const std::string path = PathOf(name);
    const std::string packed = (kShared / (name + ".xz")).string();
    EXPECT_EQ(std::system(("xz -dkc '" + packed + "' > '" + path + "'").c_str()), 0) << packed;
    return path;
  }

  static bool IsBuilt(const std::string& provider) {
    const auto built = databases::BuiltProviders();
    return std::find(built.begin(), built.end(), provider) != built.end();
  }
};

TEST_F(SameExports, ComeFromDesktopFilesAndTheirOriginal) {
  if (!std::filesystem::exists(kShared / "inventory.mdb.xz")) GTEST_SKIP() << "The files are not here: " << kShared;
  if (!IsBuilt("Stockbook.Desktop")) GTEST_SKIP() << "built without libmdb";
  setenv("XDG_CACHE_HOME", PathOf("cache").c_str(), 1);
  ExpectTheSame(Unpacked("inventory.db"), {Unpacked("inventory.mdb"), Unpacked("inventory.accdb")});
}

#ifdef STOCKBOOK_TESTS_HAVE_LIBPQ

class SameExportsOfAServer : public SameExports {
 protected:
  void SetUp() override {
    server_ = testing::SharedPostgresServer();
    if (server_ == nullptr) GTEST_SKIP() << "no PostgreSQL server is installed";
    if (!IsBuilt("Postgres")) GTEST_SKIP() << "built without PostgreSQL";
  }
  // An embedded file behind a driver of its engine; empty where there is none.
  static std::string BehindDriver(const std::string& file) {
    const std::string driver = "/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so";
    if (!IsBuilt("Odbc") || !std::filesystem::exists(driver)) return {};
    return "Provider=Odbc;Driver=" + driver + ";Database=" + file;
  }
  // The same database by its own provider and behind its driver, where there is one.
  std::vector<std::string> Servers() const {
    std::vector<std::string> servers = {server_->ConnectionString()};
    const std::string driver = "/usr/lib/x86_64-linux-gnu/odbc/psqlodbcw.so";
    if (IsBuilt("Odbc") && std::filesystem::exists(driver)) {
      servers.push_back("Provider=Odbc;Driver=" + driver + ";Servername=127.0.0.1;Port=" +
                        std::to_string(server_->port()) + ";Database=postgres;UID=tester");
    }
    return servers;
  }

  testing::PostgresServer* server_ = nullptr;
};

TEST_F(SameExportsOfAServer, ComeFromTheServerThatASampleIsCopiedTo) {
  const std::string sample = PathOf("sample.db");
  ASSERT_EQ(Program({"sample", sample, "--lines", "4000", "--seed", "7"}).code, 0);
  const Outcome copied = Program({"copy", sample, server_->ConnectionString()});
  ASSERT_EQ(copied.code, 0) << copied.err;
  std::vector<std::string> others = Servers();
  if (const std::string driven = BehindDriver(sample); !driven.empty()) others.push_back(driven);
  ExpectTheSame(sample, others);
}

// From the desktop to a server in one command, and every other way to the same data.
TEST_F(SameExportsOfAServer, ComeFromTheServerThatADesktopFileIsCopiedTo) {
  if (!std::filesystem::exists(kShared / "inventory.mdb.xz")) GTEST_SKIP() << "The files are not here: " << kShared;
  if (!IsBuilt("Stockbook.Desktop")) GTEST_SKIP() << "built without libmdb";
  setenv("XDG_CACHE_HOME", PathOf("cache").c_str(), 1);
  const std::string desktop = Unpacked("inventory.mdb");
  const Outcome copied = Program({"copy", desktop, server_->ConnectionString(), "--replace"});
  ASSERT_EQ(copied.code, 0) << copied.err;
  const std::string original = Unpacked("inventory.db");
  std::vector<std::string> others = Servers();
  others.push_back(desktop);
  if (const std::string driven = BehindDriver(original); !driven.empty()) others.push_back(driven);
  ExpectTheSame(original, others);
}

#ifndef STOCKBOOK_SANITIZED  // half a million rows are copied

TEST_F(SameExportsOfAServer, ComeFromTheServerThatRealInvoicesAreCopiedTo) {
  const std::filesystem::path table = kShared / "online-retail-2010-12_2011-06.csv.xz";
  if (!std::filesystem::exists(table)) GTEST_SKIP() << "The table of invoice lines is not here: " << table;
  const std::string retail = PathOf("retail.db");
  const Outcome imported = Program({"import", table.string(), "-o", retail, "--map",
                                    "product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity="
                                    "Quantity,price=UnitPrice,partner=CustomerID,project=Country"});
  ASSERT_EQ(imported.code, 0) << imported.err;
  const Outcome copied = Program({"copy", retail, server_->ConnectionString(), "--replace"});
  ASSERT_EQ(copied.code, 0) << copied.err;
  ExpectTheSame(retail, Servers());
  // Each reading takes the whole file over, so only one journal of each type.
  const std::string driven = BehindDriver(retail);
  if (driven.empty()) return;
  for (const size_t journal : {0U, 3U, 5U, 8U})
    EXPECT_TRUE(ExportOf(driven, kJournals[journal]) == ExportOf(retail, kJournals[journal])) << journal;
}

#endif
#endif

}  // namespace
}  // namespace stockbook::end_to_end
