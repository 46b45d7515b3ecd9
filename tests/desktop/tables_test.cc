// SPDX-License-Identifier: MIT
// The inventory kept beside the sources as desktop files of two generations and as an SQLite file, if it is there.
#include <sqlite3.h>

#include <cstdlib>
#include <random>

#include "databases/sqlite/embedded_connection.h"
#include "desktop/desktop_fixture.h"

namespace stockbook::testing {
namespace {

const std::string kShared = std::string(STOCKBOOK_SOURCE_DIR) + "/../shared/data/";

class DesktopTables : public DesktopFixture {
 protected:
  void SetUp() override {
    for (const char* name : {"inventory.db", "inventory.mdb", "inventory.accdb"}) {
      const std::string packed = kShared + name + ".xz";
      if (!std::filesystem::exists(packed)) GTEST_SKIP() << "The inventory is not here: " << packed;
      const std::string command = "xz -dc '" + packed + "' > '" + PathOf(name) + "'";
      if (std::system(command.c_str()) != 0) GTEST_SKIP() << "There is no xz to unpack with";
    }
  }

  std::vector<std::string> Tables() const {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_open(PathOf("inventory.db").c_str(), &database), SQLITE_OK);
    sqlite3_prepare_v2(database, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%'", -1,
                       &statement, nullptr);
    std::vector<std::string> names;
    while (sqlite3_step(statement) == SQLITE_ROW)
      names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return names;
  }
  // Names and values of all fields of all tables, in order, with the kind of each value.
  static std::string Content(platform::Connection& connection, const std::vector<std::string>& tables) {
    std::string text;
    for (const std::string& table : tables) {
      platform::Recordset rows = connection.Execute("Select * From " + table);
      const size_t count = rows.RecordCount();
      const auto fields = rows.TakeAll();
      for (const platform::Field& field : fields) {
        text += table + "." + field.name + " " + std::to_string(count) + "\n";
        for (size_t row = 0; row < count; ++row) {
          const base::Value value = field.column.At(row);
          text += value.IsNull() ? "~" : value.Text() + (value.As<base::Money>() != nullptr ? "$" : "");
          text += "\n";
        }
      }
    }
    return text;
  }
  std::string ContentOfOriginal() const {
    databases::EmbeddedConnection original("Tables=*;Data Source=" + PathOf("inventory.db"));
    return Content(original, Tables());
  }
};

TEST_F(DesktopTables, EqualThoseOfTheOriginalValueByValue) {
  const std::string original = ContentOfOriginal();
  EXPECT_GT(original.size(), 500000U);
  EXPECT_EQ(Tables().size(), 18U);
  for (const char* name : {"inventory.mdb", "inventory.accdb"}) {
    EXPECT_TRUE(Content(*Open(PathOf(name)), Tables()) == original) << name;
  }
}

TEST_F(DesktopTables, HaveTheIndexesOfTheFileAndThoseThatJournalsNeed) {
  Open(PathOf("inventory.mdb"));
  sqlite3* database = nullptr;
  sqlite3_stmt* statement = nullptr;
  ASSERT_EQ(sqlite3_open(Copies().at(0).c_str(), &database), SQLITE_OK);
  sqlite3_prepare_v2(database,
                     "SELECT group_concat(i.\"unique\" || x.name, ' ') FROM pragma_index_list('入库记录') i, "
                     "pragma_index_info(i.name) x ORDER BY i.seq",
                     -1, &statement, nullptr);
  ASSERT_EQ(sqlite3_step(statement), SQLITE_ROW);
  const std::string indexes = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  for (const char* index : {"1RecID", "0BillID", "0pdID", "0ksID", "0pjID"}) {
    EXPECT_NE(indexes.find(index), std::string::npos) << index << " of " << indexes;
  }
  sqlite3_finalize(statement);
  sqlite3_close(database);
}

TEST_F(DesktopTables, AreWholeOrRefusedWhereTheFileWasCutOff) {
  const std::string original = ContentOfOriginal();
  const std::string whole = ReadAll(PathOf("inventory.mdb"));
  size_t refused = 0;
  // The sizes are spread over the file and fall on pages and between them.
  for (size_t size = 4096; size < whole.size(); size += 23 * 4096 + 512) {
    const std::string path = Write("cut.mdb", whole.substr(0, size));
    try {
      EXPECT_TRUE(Content(*Open(path, "Cache=No"), Tables()) == original) << size;
    } catch (const platform::Error& error) {
      EXPECT_EQ(error.kind(), platform::ErrorKind::kDamaged) << size << error.what();
      ++refused;
    }
  }
  EXPECT_GT(refused, 10U);
}

TEST_F(DesktopTables, OfADamagedFileNeitherCrashNorHangTheHost) {
  std::string bytes = ReadAll(PathOf("inventory.accdb"));
  std::mt19937 random(20260101);
  for (int round = 0; round < 24; ++round) {
    std::string damaged = bytes;
    // A few at once, most of them where pages say what they are.
    for (int change = 0; change < 20; ++change) {
      const size_t page = random() % (bytes.size() / 4096);
      const size_t at = page * 4096 + (change % 2 == 0 ? random() % 64 : random() % 4096);
      damaged[at] = static_cast<char>(random());
    }
    const std::string path = Write("damaged.accdb", damaged);
    try {
      const auto connection = Open(path, "Cache=No");
      for (const std::string& table : Tables()) connection->Execute("Select * From " + table);
    } catch (const platform::Error& error) {
      EXPECT_NE(std::string(error.what()), "");
    }
  }
}

}  // namespace
}  // namespace stockbook::testing
