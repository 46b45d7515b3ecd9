// SPDX-License-Identifier: MIT
// Every journal of the inventory kept beside the sources, from two desktop files, against those from the SQLite file:
// what is exported is the same, byte by byte.
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "end_to_end/fixture.h"
#include "end_to_end/journal_comparison.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/databases/providers/open_connection.h"

namespace stockbook::end_to_end {
namespace {

const std::string kInventories = std::string(STOCKBOOK_SOURCE_DIR) + "/../shared/data/";

class DesktopJournals : public EndToEnd {
 protected:
  using Connection = std::shared_ptr<platform::Connection>;

  void SetUp() override {
    const auto providers = databases::BuiltProviders();
    if (std::count(providers.begin(), providers.end(), "Stockbook.Desktop") == 0)
      GTEST_SKIP() << "This was built without desktop files";
    for (const char* name : {"inventory.db", "inventory.mdb", "inventory.accdb"}) {
      const std::string packed = kInventories + name + ".xz";
      if (!std::filesystem::exists(packed)) GTEST_SKIP() << "The inventory is not here: " << packed;
      ASSERT_EQ(std::system(("xz -dc '" + packed + "' > '" + PathOf(name) + "'").c_str()), 0);
    }
    for (const char* dialect : {"", "Dialect=SQL;"}) {
      const std::string settings = std::string(dialect) + "Provider=Stockbook.Desktop;Cache=No;Data Source=";
      connections_.push_back({databases::OpenConnection(dialect + ("Data Source=" + PathOf("inventory.db"))),
                              databases::OpenConnection(settings + PathOf("inventory.mdb")),
                              databases::OpenConnection(settings + PathOf("inventory.accdb"))});
    }
  }

  std::vector<std::string> Column(const std::string& sql) const {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_open(PathOf("inventory.db").c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sql;
    std::vector<std::string> values;
    while (sqlite3_step(statement) == SQLITE_ROW)
      values.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    sqlite3_close(database);
    EXPECT_FALSE(values.empty()) << sql;
    return values;
  }

  std::string Exported(const Connection& connection, const app::JournalOptions& options) {
    const app::LoadReport report = app::LoadJournal(desk().control(), connection, options);
    // The server dialect refuses what the partner and project journals are asked with.
    EXPECT_TRUE(report.loaded ||
                (options.journal_type != 0 && platform::IsServerDialect(connection->ConnectionString())))
        << app::LoadError(report);
    if (!report.loaded) return app::LoadError(report);
    std::ostringstream out;
    app::WriteNdjson(desk().sheet(), app::ExportColumns::kAll, desk().control().Caption(), report, out);
    return out.str();
  }
  // In the desktop dialect, and every few journals in the server dialect as well.
  void Compare(const app::JournalOptions& options) {
    constexpr size_t kJournalsPerServerDialect = 8;
    const size_t dialects = journals_++ % kJournalsPerServerDialect == 0 ? 2 : 1;
    for (size_t dialect = 0; dialect < dialects; ++dialect) {
      const auto& [original, mdb, accdb] = connections_[dialect];
      const std::string expected = Exported(original, options);
      lines_ += static_cast<size_t>(std::count(expected.begin(), expected.end(), '\n'));
      EXPECT_TRUE(Exported(mdb, options) == expected) << Describe(options);
      EXPECT_TRUE(Exported(accdb, options) == expected) << Describe(options);
    }
  }
  static int32_t Number(const std::string& text) { return static_cast<int32_t>(std::stol(text)); }

  struct Three {
    Connection original;
    Connection mdb;
    Connection accdb;
  };
  std::vector<Three> connections_;  // by dialect
  size_t journals_ = 0;
  size_t lines_ = 0;
};

TEST_F(DesktopJournals, OfAllProductsAreThoseOfTheOriginal) {
  for (const std::string& product : Column("SELECT pdID FROM 商品设置")) {
    app::JournalOptions options;
    options.key_id = Number(product);
    Compare(options);
    options.journal_type = 3;
    Compare(options);
  }
  for (const std::string& depot : Column("SELECT dpID FROM 仓库设置")) {
    app::JournalOptions options;
    options.key_id = Number(Column("SELECT pdID FROM 出库记录 WHERE dpID = " + depot + " LIMIT 1")[0]);
    options.dp_id = Number(depot);
    options.allow_qty2 = true;
    Compare(options);
  }
  EXPECT_GT(lines_, 8000U);
}

TEST_F(DesktopJournals, OfAllPartnersProjectsAndClassesAreThoseOfTheOriginal) {
  const char* const keys[] = {"", "SELECT KSID FROM 厂商资料", "SELECT KSID FROM 客户资料",
                              "SELECT 项目ID FROM 项目设置"};
  const char* const classes[] = {"", "厂商分类", "客户分类", "项目分类"};
  const int32_t product =
      Number(Column("SELECT pdID FROM 出库记录 WHERE pjID > 0 GROUP BY pdID ORDER BY count(*) DESC")[0]);
  for (int type = 1; type <= 3; ++type) {
    app::JournalOptions options;
    options.journal_type = type;
    options.key_id = type == 3 ? product : 0;
    options.allow_inv = true;
    Compare(options);
    for (const std::string& key : Column(keys[type])) {
      options.dp_id = Number(key);
      Compare(options);
    }
    options.dp_id = 0;
    for (const std::string& code : Column(std::string("SELECT ClassCode FROM ") + classes[type])) {
      options.dp_code = code;
      Compare(options);
    }
  }
  EXPECT_GT(lines_, 8000U);
}

}  // namespace
}  // namespace stockbook::end_to_end
