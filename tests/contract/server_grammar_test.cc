// SPDX-License-Identifier: MIT
// There is no SQL Server to ask, so an independent grammar of its language, which tools/install-grammar puts into
// build/grammar, reads what is written for it.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "contract/contract_statements.h"
#include "databases/dialect/server_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/sqlite/catalog.h"
#include "stockbook/platform/error.h"
#include "support/test_folder.h"

namespace stockbook::testing {
namespace {

using databases::Ampersand;
using databases::Dialect;

// Every function and operator that the emitter has words for.
constexpr const char* kServerExpressions[] = {
    "Left(t,2) + Right(t,1) + SUBSTRING(t,2,3)",
    "Len(t) + CHARINDEX('a',t) + CHARINDEX('a',t,2)",
    "LTRIM(RTRIM(t)) + UPPER(t) + LOWER(t) + Replace(t,'a','b') + Space(3)",
    "ABS(r) + FLOOR(r) + CEILING(r) + SIGN(r)",
    "Round(r,2) + SQRT(r) + POWER(r,2)",
    "YEAR(d) * 10000 + MONTH(d) * 100 + DAY(d)",
    "GETDATE()",
    "Convert(Char(10),d,23) + CAST(k AS varchar(4)) + Convert(varchar(10),CAST('2005-03-08' AS datetime),121)",
    "m * 2 - m / 3 + r % 2",
    "k & 3",
    "-m",
    "CASE WHEN k BETWEEN 1 AND 3 THEN m ELSE 0 END",
    "ISNULL(t,'') + COALESCE(t,'x')",
    "NULLIF(k,0)",
    "(SELECT Max(d) FROM v)",
    "CASE k WHEN 1 THEN 'a' WHEN 2 THEN 'b' END",
    "d - 30",
    "d - d",
    "CAST(t AS int) + CAST(t AS float) + CAST(r AS decimal(10,2))"};
constexpr const char* kServerConditions[] = {"t LIKE 'a[^b-c]%_'",
                                             "t IN ('a','b')",
                                             "k NOT IN (1,2)",
                                             "t IS NOT NULL",
                                             "EXISTS (SELECT * FROM v WHERE k=1)",
                                             "k IN (SELECT k FROM v)",
                                             "NOT (m > 1.5 OR d <= '2005-01-01')",
                                             "t = 5",
                                             "t = k",
                                             "d BETWEEN '2005-01-01' AND d"};
constexpr const char* kDesktopExpressions[] = {"IIf(k>1,'a','b')",
                                               "Nz(t) & Nz(k)",
                                               "Mid(t,2) & Format(k,'00') & Format(d,'yyyy-mm-dd')",
                                               "CDate(t) - 1",
                                               "k \\ 2 + k MOD 2",
                                               "CStr(r) & m & d",
                                               "DateSerial(2005,1,k)",
                                               "k=1",
                                               "InStr(t,'x')",
                                               "r ^ 2"};

std::vector<std::string> ServerStatements() {
  DatabaseFile file;
  CreateInventory(file);
  file.Run("CREATE TABLE v(k INTEGER PRIMARY KEY, r REAL, m MONEY, t TEXT, d DATETIME)");
  databases::Database database(file.path());
  databases::Catalog catalog(database);
  catalog.Refresh();
  const databases::ServerEmitter emitter;
  std::vector<std::string> written;
  const auto write = [&](const std::string& statement, Dialect dialect) {
    databases::Translation translation(statement, {dialect, emitter, Ampersand::kJoinsTexts},
                                       [&](std::string_view name) { return catalog.FindTable(name); });
    written.push_back(translation.Whole().sql);
    if (!translation.plan()) return;
    for (const auto& arm : translation.plan()->arms) written.push_back(arm.sql);
  };
  for (const Dialect dialect : {Dialect::kServer, Dialect::kDesktop}) {
    for (const std::string& statement : ControlStatements(dialect)) {
      try {
        write(statement, dialect);
      } catch (const platform::Error&) {
        // The few that are malformed on purpose, or name a column that the table has not.
      }
    }
  }
  for (const char* expression : kServerExpressions)
    write(std::string("SELECT TOP 3 ") + expression + " AS x FROM v ORDER BY k DESC", Dialect::kServer);
  for (const char* condition : kServerConditions)
    write(std::string("SELECT DISTINCT t, Sum(m) AS s, Avg(r) AS a FROM v WHERE ") + condition +
              " GROUP BY t HAVING Count(*)>1",
          Dialect::kServer);
  for (const char* expression : kDesktopExpressions)
    write(std::string("SELECT ") + expression + " AS x FROM v", Dialect::kDesktop);
  std::sort(written.begin(), written.end());
  written.erase(std::unique(written.begin(), written.end()), written.end());
  return written;
}

TEST(ServerGrammar, ReadsWhatIsWrittenForTheServer) {
  const std::filesystem::path root = STOCKBOOK_SOURCE_DIR;
  const std::filesystem::path packages = root / "build/grammar/node_modules";
  if (!std::filesystem::exists(packages / "@dbml/core") || system("node --version >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "tools/install-grammar was not run, or there is no node";
  const std::vector<std::string> statements = ServerStatements();
  EXPECT_GT(statements.size(), 80U);
  std::string lines;
  for (const std::string& statement : statements) lines += statement + "\n";
  const TestFolder folder;
  const std::string file = folder.Write("statements.sql", lines + "SELECT [a] FROM [t] LIMIT 2\n");
  const std::string command = "node '" + (root / "tests/contract/server_grammar.js").string() + "' '" +
                              packages.string() + "' '" + file + "' > '" + folder.PathOf("read.txt") + "'";
  ASSERT_EQ(system(command.c_str()), 0);
  const std::string said = TestFolder::ReadAll(folder.PathOf("read.txt"));
  EXPECT_TRUE(base::TrimBlanks(said).ends_with("read " + std::to_string(statements.size()) + "\n")) << said;
  EXPECT_NE(said.find("LIMIT 2"), std::string::npos) << "another engine's word was read";
}

}  // namespace
}  // namespace stockbook::testing
