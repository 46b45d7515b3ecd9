// SPDX-License-Identifier: MIT
// Statements cut up, doubled and shuffled: each gives rows or an Error, and never anything
// else.
#include <gtest/gtest.h>

#include <random>

#include "databases/database_file.h"
#include "databases/dialect/format_value.h"
#include "databases/dialect/like_pattern.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;

std::vector<std::string> Seeds() {
  return {MaterialJournal(Dialect::kDesktop, "1)", "2005-03"),
          SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 5)", "2005-03"),
          ProjectJournal(Dialect::kServer, "1", "2005-03"),
          DepotBalance("1", "", "2004-12"),
          PartnerBalance("tqSuppBalance", " Where bn.ksID=5", "2004-12"),
          "SELECT CASE WHEN a.dpID>1 THEN 'x' ELSE CAST(5 AS char(4)) END, Convert(varchar(10), #2005-01-01#, 121) "
          "FROM 仓库设置 a ORDER BY 1 DESC",
          "SELECT IIf(k.KSID In (1,2,3), Format(5,'#,##0.00;(0)'), Nz(Null,'x')) & Mid('abc',2) FROM 厂商资料 AS k "
          "WHERE ClassCode Like '0[1-9]*' And Not KSID Between 2 And 3",
          "SELECT DISTINCT TOP 5 * FROM (SELECT 1 AS a UNION ALL SELECT 2.5) AS u, 仓库设置 WHERE Exists (SELECT 1) "
          "GROUP BY a, dpID, 仓库名称 HAVING Count(*)>0"};
}

class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::string Mutate(std::string text, const std::vector<std::string>& seeds) {
    for (size_t change = Below(3) + 1; change > 0; --change) Change(text, seeds);
    return text;
  }

 private:
  size_t Below(size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  void Change(std::string& text, const std::vector<std::string>& seeds) {
    static const std::vector<std::string> kPieces = {"(",          ")",
                                                     "'",          "''",
                                                     "\"",         "[",
                                                     "]",          "#",
                                                     ",",          ".",
                                                     "*",          "-",
                                                     " & ",        " + ",
                                                     " UNION ",    " SELECT ",
                                                     " FROM ",     " WHERE ",
                                                     " AND ",      " NOT ",
                                                     " IN (",      " LIKE ",
                                                     " NULL ",     "0",
                                                     "1e999",      "99999999999999999999",
                                                     ";",          "--",
                                                     "\\",         "^",
                                                     "\xFF",       "库",
                                                     " AS ",       " ORDER BY ",
                                                     " GROUP BY ", "Sum(",
                                                     "Left(",      "Format(",
                                                     " BETWEEN ",  " CASE ",
                                                     " TOP 1 ",    " JOIN ",
                                                     " ON ",       "=",
                                                     "<>",         std::string(1, '\0')};
    const size_t at = Below(text.size() + 1);
    switch (Below(5)) {
      case 0:
        text.insert(at, kPieces[Below(kPieces.size())]);
        break;
      case 1:
        text.erase(at, Below(30));
        break;
      case 2:
        text.insert(at, text.substr(Below(text.size() + 1), Below(60)));
        break;
      case 3: {
        const std::string& other = seeds[Below(seeds.size())];
        text = text.substr(0, at) + other.substr(Below(other.size()));
        break;
      }
      default:
        if (at < text.size()) text[at] = static_cast<char>(Below(256));
    }
  }

  std::mt19937 random_;
};

TEST(StatementFuzz, EveryStatementGivesRowsOrAnError) {
  DatabaseFile file;
  CreateInventory(file);
  FillInventory(file);
  EmbeddedConnection desktop(file.DesktopString());
  EmbeddedConnection server(file.ServerString());
  EmbeddedConnection whole_desktop(file.DesktopString(), databases::Strategy::kStatement);
  EmbeddedConnection whole_server(file.ServerString(), databases::Strategy::kStatement);
  const std::vector<std::string> seeds = Seeds();
  size_t executed = 0;
  size_t refused = 0;
  for (unsigned seed = 0; seed < 6000; ++seed) {
    const std::string statement = Mutator(seed).Mutate(seeds[seed % seeds.size()], seeds);
    try {
      const auto rows = ExactRows((seed % 2 == 0 ? desktop : server).Execute(statement));
      EXPECT_EQ(rows, ExactRows((seed % 2 == 0 ? whole_desktop : whole_server).Execute(statement))) << statement;
      ++executed;
    } catch (const platform::Error& error) {
      EXPECT_NE(std::string(error.what()), "") << statement;
      // Whatever the parser accepts, SQLite must accept.
      EXPECT_EQ(std::string(error.what()).find("syntax error"), std::string::npos) << statement << "\n" << error.what();
      EXPECT_EQ(std::string(error.what()).find("no such"), std::string::npos) << statement << "\n" << error.what();
      ++refused;
    }
  }
  EXPECT_GT(executed, 50U);
  EXPECT_GT(refused, 1000U);
}

TEST(StatementFuzz, FormatsAndPatternsTakeAnyText) {
  std::mt19937 random(7);
  const std::string signs = "0#,.;%yMdhns\"\\[]!*?_-aé 月";
  const std::vector<base::Value> values = {base::Value(),
                                           base::Value(int64_t{-5}),
                                           base::Value(1234.5678),
                                           base::Value(base::Money::FromUnits(-1)),
                                           base::Value(base::Date()),
                                           base::Value(std::string("2005-1-2")),
                                           base::Value(1e300),
                                           base::Value(std::string("x"))};
  size_t total = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string pattern;
    for (auto length = random() % 12; length > 0; --length) pattern += signs[random() % signs.size()];
    for (const base::Value& value : values) total += databases::FormatValue(value, pattern).size();
    std::string text;
    for (auto length = random() % 12; length > 0; --length) text += signs[random() % signs.size()];
    total += MatchesLike(text, pattern, databases::Wildcards::kDesktop) ? 1U : 0U;
    total += MatchesLike(text, pattern, databases::Wildcards::kServer) ? 1U : 0U;
  }
  EXPECT_GT(total, 0U);
}

}  // namespace
}  // namespace stockbook::testing
