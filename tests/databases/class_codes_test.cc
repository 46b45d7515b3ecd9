// SPDX-License-Identifier: MIT
// Class codes go into the statements unescaped. These try to read what is none of theirs, to change something, or to
// keep the program busy; none may.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "databases/database_file.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/error.h"
#include "support/fake_surroundings.h"

namespace stockbook::testing {
namespace {

constexpr std::string_view kSecret = "geheim";

std::string Times(size_t count, std::string_view text) {
  std::string result;
  for (size_t index = 0; index < count; ++index) result += text;
  return result;
}

// `levels` times around `inner`.
std::string Nested(size_t levels, std::string_view before, std::string_view inner, std::string_view after) {
  return Times(levels, before) + std::string(inner) + Times(levels, after);
}

struct Attack {
  const char* what;
  std::string code;
};

std::vector<Attack> ReadingAttacks() {
  return {
      {"another table in a union of one column", "x' UNION SELECT 口令 FROM 用户 WHERE '1'='"},
      {"another table in a union of three", "x' UNION SELECT 口令, 名称, 口令 FROM 用户 WHERE '1'='"},
      {"another table in a union of four", "x' UNION SELECT 口令, 名称, 口令, 口令 FROM 用户 WHERE '1'='"},
      {"a union that keeps duplicates", "x' UNION ALL SELECT 口令 FROM 用户 WHERE '1'='"},
      {"another table as keys", "x' UNION SELECT 口令 AS ksID, 口令, 口令 FROM 用户 WHERE 'a' LIKE '"},
      {"the number in a secret", "x' UNION SELECT CLng(口令), 1, 1 FROM 用户 WHERE '1'='"},
      {"the amount in a secret", "x' UNION SELECT CCur(口令), 1, 1 FROM 用户 WHERE '1'='"},
      {"the server's number in a secret", "x' UNION SELECT CONVERT(int, 口令), 1, 1 FROM 用户 WHERE '1'='"},
      {"a condition on another table", "x' OR (SELECT Count(*) FROM 用户 WHERE 口令 LIKE 'g%')>0 OR '1'='"},
      {"keys from another table", "x' OR KSID IN (SELECT Len(口令) FROM 用户) OR '1'='"},
      {"whether rows exist", "x' OR EXISTS (SELECT 1 FROM 用户) OR '1'='"},
      {"a name in brackets", "x' UNION SELECT [口令] FROM [用户] WHERE '1'='"},
      {"a name in quotes", "x' UNION SELECT \"口令\" FROM \"用户\" WHERE '1'='"},
      {"a name in back quotes", "x' UNION SELECT `口令` FROM `用户` WHERE '1'='"},
      {"a name with its database", "x' UNION SELECT 口令 FROM main.用户 WHERE '1'='"},
      {"a derived table", "x' UNION SELECT * FROM (SELECT 口令 FROM 用户) AS t WHERE '1'='"},
      {"a join", "x' UNION SELECT u.口令 FROM 项目设置 AS p INNER JOIN 用户 AS u ON p.项目ID=u.编号 WHERE '1'='"},
      {"a cross join", "x' UNION SELECT u.口令 FROM 项目设置 AS p, 用户 AS u WHERE '1'='"},
      {"a scalar subquery", "x' UNION SELECT (SELECT 口令 FROM 用户), 1, 1 FROM 仓库设置 WHERE '1'='"},
      {"the catalogue", "x' UNION SELECT sql FROM sqlite_master WHERE '1'='"},
      {"the catalogue by its other name", "x' UNION SELECT sql, sql, sql FROM sqlite_schema WHERE '1'='"},
      {"the table list", "x' UNION SELECT name FROM pragma_table_list WHERE '1'='"},
      {"the columns", "x' UNION SELECT name FROM pragma_table_info('用户') WHERE '1'='"},
      {"the pages", "x' UNION SELECT data FROM sqlite_dbpage WHERE '1'='"},
      {"a view over another table", "x' UNION SELECT * FROM 名册 WHERE '1'='"},
      {"a file", "x' UNION SELECT readfile('/etc/passwd') FROM 仓库设置 WHERE '1'='"},
      {"a common table expression", "x' UNION WITH t AS (SELECT 口令 FROM 用户) SELECT * FROM t WHERE '1'='"},
  };
}

std::vector<Attack> ChangingAttacks() {
  return {
      {"a second statement that drops", "x'; DROP TABLE 用户; SELECT '"},
      {"a second statement that updates", "x'; UPDATE 用户 SET 口令='y'; SELECT '"},
      {"a second statement that inserts", "x'; INSERT INTO 用户 VALUES (2,'b','c'); SELECT '"},
      {"a second statement that deletes", "x'; DELETE FROM 用户 WHERE '1'='1"},
      {"an index", "x'; CREATE INDEX i ON 用户(口令); SELECT '"},
      {"another database", "x'; ATTACH DATABASE 'attached.db' AS a; SELECT '"},
      {"a copy", "x'; VACUUM INTO 'copy.db'; SELECT '"},
      {"a setting", "x'; PRAGMA query_only=0; SELECT '"},
      {"a transaction", "x'; COMMIT; SELECT '"},
      {"a table by SELECT INTO", "x' UNION SELECT * INTO 新表 FROM 仓库设置 WHERE '1'='"},
      {"a file", "x' UNION SELECT writefile('written', '1') FROM 仓库设置 WHERE '1'='"},
      {"an extension", "x' UNION SELECT load_extension('a.so') FROM 仓库设置 WHERE '1'='"},
      {"a comment to the end of the line", "x'; DROP TABLE 用户 --"},
      {"a comment that stays open", "x' /*"},
  };
}

// Many rows from few: five tables of two thousand.
const char* const kCross = "厂商资料 AS a, 厂商资料 AS b, 厂商资料 AS c, 厂商资料 AS d, 厂商资料 AS e";

std::vector<Attack> StallingAttacks() {
  const std::string long_text = "Replace(Space(500),' ',Space(8000))";
  const std::string cross = kCross;
  return {
      {"a count over a cross join", "x' OR (SELECT Count(*) FROM " + cross + ")=0 OR '1'='"},
      {"a cross join in order",
       "x' UNION SELECT a.KSID+b.KSID+c.KSID FROM " + cross + " WHERE a.KSID+e.KSID>b.KSID ORDER BY 1 DESC --"},
      {"a cross join in a union", "x' UNION SELECT a.KSID & b.KSID & c.KSID FROM " + cross + " WHERE '1'='"},
      {"a cross join without duplicates",
       "x' OR (SELECT Count(*) FROM (SELECT DISTINCT a.KSID, b.KSID AS k FROM " + cross + ") AS t)=0 OR '1'='"},
      {"groups of a cross join", "x' OR EXISTS (SELECT a.KSID, b.KSID, Sum(c.KSID) FROM " + cross +
                                     " GROUP BY a.KSID, b.KSID HAVING Sum(c.KSID)<0)"
                                     " OR '1'='"},
      {"sums of a cross join", "x' OR (SELECT Sum(a.KSID*b.KSID+c.KSID) FROM " + cross + ")=0 OR '1'='"},
      {"subqueries in subqueries",
       "x' OR (SELECT Count(*) FROM 厂商资料 AS a WHERE (SELECT Count(*) FROM 厂商资料 AS b WHERE (SELECT Count(*) "
       "FROM "
       "厂商资料 AS c WHERE c.KSID>a.KSID+b.KSID)<0)<0)<0 OR '1'='"},
      {"texts that grow and grow",
       "x' OR Len(" + Nested(8, "Replace(", "Space(8000)", ",' ',Space(8000))") + ")=0 OR '1'='"},
      {"long texts for every row", "x' OR InStr(" + long_text + ", ClassCode & ' b')>0 OR '1'='"},
      {"long texts for every two rows",
       "x' OR (SELECT Count(*) FROM " + cross + " WHERE InStr(" + long_text + ", a.KSID & 'b')>0)=0 OR '1'='"},
      {"long texts as a result",
       "x' UNION SELECT " + long_text + " & a.KSID & b.KSID FROM 厂商资料 AS a, 厂商资料 AS b WHERE '1'='"},
      {"texts that are looked for in each other",
       "x' OR InStr(Replace(Space(500),' ',Space(8000)), Replace(Space(200),' ',Space(8000)) & 'b')>0 OR '1'='"},
      {"open brackets", "%" + Times(2000, "[")},
      {"open brackets in another like", "x' OR Space(8000) LIKE '%" + Times(2000, "[") + "' OR '1'='"},
      {"many wildcards", Times(2000, "%a") + "b"},
      {"many wildcards over a long text", "x' OR " + long_text + " LIKE '" + Times(500, "% ") + "b' OR '1'='"},
      {"a long pattern over a long text", "x' OR " + long_text + " LIKE '%" + Times(4000, " ") + "b' OR '1'='"},
      {"classes over a long text", "x' OR " + long_text + " LIKE '%" + Times(1000, "[a-z0-9]") + "' OR '1'='"},
      {"a like for every pair of rows",
       "x' OR (SELECT Count(*) FROM " + cross + " WHERE Space(8000) LIKE '%" + Times(300, " ") + "b')=0 OR '1'='"},
      {"a literal of four megabytes", Times(4 << 20, "x")},
      {"a million quotes", Times(1'000'000, "'")},
      {"parentheses", "x' OR " + Nested(50000, "(", "1", ")") + "=1 OR '1'='"},
      {"negations", "x' OR " + Times(50000, "NOT ") + "1=1 OR '1'='"},
      {"signs", "x' OR 1=" + Times(50000, "- ") + "1 OR '1'='"},
      {"functions in functions", "x' OR " + Nested(5000, "Trim(", "'a'", ")") + "='a' OR '1'='"},
      {"alternatives", "x'" + Times(50000, " OR 1=2") + " OR '1'='"},
      {"a chain of sums", "x' OR 1=1" + Times(50000, "+1") + " OR '1'='"},
      {"a chain of texts", "x' OR 'a'='a'" + Times(50000, " & 'a'") + " OR '1'='"},
      {"powers", "x' OR 1=9" + Times(300, "^9") + " OR '1'='"},
      {"a long list", "x' OR KSID IN (0" + Times(100000, ",1") + ") OR '1'='"},
      {"unions", "x'" + Times(5000, " UNION SELECT 1, 1, 1 FROM 仓库设置 WHERE '1'='2'") + " OR '1'='"},
      {"columns that double",
       "x' UNION SELECT * FROM " + Nested(40, "(SELECT *, * FROM ", "仓库设置", ") AS t") + " WHERE '1'='"},
      {"joins that double", "x' OR EXISTS (SELECT 1 FROM " + Times(70, "仓库设置 AS a, ") + "仓库设置) OR '1'='"},
      {"cases that double",
       "x' OR " + Nested(60, "CASE ", "KSID", " WHEN 1 THEN 1 WHEN 2 THEN 2 ELSE 3 END") + "=0 OR '1'='"},
      {"nulls that double", "x' OR " + Nested(60, "NULLIF(", "KSID", ",1)") + "=0 OR '1'='"},
      {"ranges that double", "x' OR " + Nested(60, "IIf(", "KSID=1", ",1,2)=1") + " OR '1'='"},
      {"a long format", "x' OR Format(0,'#,0" + Times(100000, "0") + "')='0' OR '1'='"},
      {"a format that a function makes", "x' OR Format(0, Replace(Space(8000),' ','#.#'))='0' OR '1'='"},
      {"a text filled up", "x' OR CONVERT(char(max), 1)='1' OR '1'='"},
      {"a recursive table",
       "x' UNION WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) SELECT i FROM n WHERE '1'='"},
      {"a table that makes rows", "x' UNION SELECT value FROM generate_series(1,1000000000) WHERE '1'='"},
      {"malformed bytes", "x\xFF\xC0' OR '1'='"},
      {"a zero byte", std::string("x\0' OR '1'='", 12)},
  };
}

// Runs everything that a class code gets into, and keeps all that comes back.
class Victim : public platform::Connection {
 public:
  explicit Victim(std::unique_ptr<platform::Connection> inner) : inner_(std::move(inner)) {}
  std::string ConnectionString() const override { return inner_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    try {
      Hear(inner_->Execute(statement, options));
      return inner_->Execute(statement, options);
    } catch (const platform::Error& error) {
      heard += error.what();
      throw;
    }
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return inner_->ReadAsOfOneMoment(); }

  std::string heard;

 private:
  void Hear(platform::Recordset rows) {
    constexpr size_t kMany = 20000;
    for (size_t row = 0; !rows.AtEnd() && row < kMany; rows.MoveNext(), ++row) heard += RowText(rows) + "\n";
  }

  std::unique_ptr<platform::Connection> inner_;
};

void Use(const std::shared_ptr<Victim>& victim, const std::string& code) {
  const auto moment = victim->ReadAsOfOneMoment();
  ControlOverFakes fakes;
  fakes.control->SetConn(victim);
  for (const auto type : {base::SupplierJournal, base::CustomerJournal, base::ProjectJournal}) {
    fakes.control->SetJournalType(type);
    fakes.control->SetdpCode(code);
    fakes.control->Load(1, 0);
  }
}

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class ClassCodes : public ::testing::TestWithParam<const char*> {
 protected:
  ClassCodes() {
    CreateInventory(file_);
    FillInventory(file_);
    file_.Run(
        "CREATE TABLE 用户(编号 INTEGER, 名称 TEXT, 口令 TEXT); INSERT INTO 用户 VALUES (3, 'admin', 'geheim'); CREATE "
        "VIEW 名册 AS SELECT 口令 FROM 用户;"
        "WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i+1 FROM n WHERE i<2999) INSERT INTO 厂商资料 SELECT i, "
        "'x', '0301' FROM n");
  }
  void Try(const std::vector<Attack>& attacks) {
    const std::string before = BytesOf(file_.path());
    double longest = 0;
    const char* slowest = "";
    for (const Attack& attack : attacks) {
      const auto start = std::chrono::steady_clock::now();
      const auto victim = std::make_shared<Victim>(
          databases::OpenEmbedded("Timeout=0.1;" + std::string(GetParam()) + "Data Source=" + file_.path()));
      Use(victim, attack.code);
      EXPECT_EQ(victim->heard.find(kSecret), std::string::npos) << attack.what;
      EXPECT_EQ(victim->heard.find("CREATE TABLE 用户"), std::string::npos) << attack.what;
      EXPECT_EQ(victim->heard.find("root:"), std::string::npos) << attack.what;
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      if (took.count() > longest) slowest = attack.what;
      longest = std::max(longest, took.count());
    }
    // For the log: no outcome depends on the speed of the machine.
    RecordProperty("longest_ms", static_cast<int>(longest * 1000));
    std::cout << "longest: " << longest << " s, " << slowest << "\n";
    EXPECT_EQ(BytesOf(file_.path()), before);
    EXPECT_FALSE(std::filesystem::exists("attached.db") || std::filesystem::exists("copy.db") ||
                 std::filesystem::exists("written"));
  }

  DatabaseFile file_;
};

TEST_P(ClassCodes, ReadNoOtherTable) { Try(ReadingAttacks()); }
TEST_P(ClassCodes, ChangeNothing) { Try(ChangingAttacks()); }
TEST_P(ClassCodes, CannotKeepTheProgramBusy) { Try(StallingAttacks()); }

INSTANTIATE_TEST_SUITE_P(InBothDialects, ClassCodes, ::testing::Values("", "Dialect=SQL;"));

}  // namespace
}  // namespace stockbook::testing
