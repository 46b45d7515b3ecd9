// SPDX-License-Identifier: MIT
// What is written for tables, wherever these come from.
#include "databases/desktop/copy_writer.h"

#include <gtest/gtest.h>

#include "databases/desktop/read_failure.h"
#include "support/test_folder.h"

namespace stockbook::testing {
namespace {

using databases::ColumnKind;
using databases::CopyWriter;
using databases::DesktopIndex;
using databases::Repetition;

class CopyWriterTest : public ::testing::Test, protected TestFolder {
 protected:
  // The first column of all rows, with blanks between them.
  std::string Query(const std::string& sql) const {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_open(path_.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    std::string text;
    while (sqlite3_step(statement) == SQLITE_ROW)
      text += (text.empty() ? "" : " ") + std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return text;
  }

  std::string path_ = Write("copy.db", "");
  databases::Interruption interruption_{std::nullopt};
};

TEST_F(CopyWriterTest, MakesAPlainIndexWhereKeysRepeatThatShouldNot) {
  CopyWriter writer(path_, "/a'b.mdb", interruption_);
  for (const char* name : {"t", "u"}) {
    writer.BeginTable({name, {{"id", ColumnKind::kWhole}, {"we\"ird", ColumnKind::kText}}});
    writer.AddIndex({{0}, Repetition::kForbidden});
    writer.AddIndex({{1, 0}, Repetition::kForbidden});
    writer.AddIndex({{0}, Repetition::kAllowed});
    for (int64_t row = 0; row < 5000; ++row) writer.AddRow({row % 4999, "x" + std::to_string(row)});
  }
  writer.Finish();
  EXPECT_EQ(Query("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(Query("SELECT \"unique\" FROM pragma_index_list('t') ORDER BY seq DESC"), "0 1")
      << "the third is the first";
  EXPECT_EQ(Query("SELECT count(*) FROM u WHERE id = 0"), "2");
  EXPECT_EQ(databases::SourceOfCopy(path_), "/a'b.mdb");
}

TEST_F(CopyWriterTest, RefusesTwoTablesOrTwoColumnsOfOneName) {
  CopyWriter writer(path_, "", interruption_);
  writer.BeginTable({"t", {{"id", ColumnKind::kWhole}}});
  EXPECT_THROW(writer.BeginTable({"T", {{"id", ColumnKind::kWhole}}}), databases::ReadFailure);
  EXPECT_THROW(writer.BeginTable({"u", {{"id", ColumnKind::kWhole}, {"ID", ColumnKind::kWhole}}}),
               databases::ReadFailure);
}

TEST_F(CopyWriterTest, SaysThatItCannotWrite) {
  EXPECT_THROW(CopyWriter(PathOf("none/copy.db"), "", interruption_), databases::CannotWriteCopy);
  EXPECT_EQ(databases::SourceOfCopy(PathOf("none/copy.db")), "");
  EXPECT_EQ(databases::SourceOfCopy(Write("text.db", std::string(5000, 'x'))), "");
}

}  // namespace
}  // namespace stockbook::testing
