// SPDX-License-Identifier: MIT
// Columns whose rows change between kinds of values, in runs that just fill the places that numbers are held in.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "databases/database_file.h"
#include "databases/sqlite/embedded_connection.h"

namespace stockbook::testing {
namespace {

using databases::Dialect;
using databases::EmbeddedConnection;

TEST(ValueFeed, KeepsEachValueOfRunsOfAnyLength) {
  DatabaseFile file;
  file.Run("CREATE TABLE mixed (id INTEGER PRIMARY KEY, held)");
  std::vector<std::string> expected;
  std::string insert = "INSERT INTO mixed (held) VALUES ";
  const auto add = [&](const std::string& sql, const std::string& shown) {
    insert += (expected.empty() ? "(" : ",(") + sql + ")";
    expected.push_back(shown);
  };
  for (const int length : {1, 31, 32, 33, 5, 511, 512, 513, 544, 545, 2, 1025}) {
    for (int at = 0; at < length; ++at) add(std::to_string(at) + ".5", "2:" + std::to_string(at) + ".5|");
    for (int at = 0; at < length; ++at) add(std::to_string(-at), "1:" + std::to_string(-at) + "|");
    for (int at = 0; at < length; ++at) add("'t" + std::to_string(at) + "'", "5:t" + std::to_string(at) + "|");
    add("NULL", "0:|");
  }
  file.Run(insert);
  EmbeddedConnection connection(file.DesktopString());
  const std::vector<std::string> rows = ExactRows(connection.Execute("SELECT held FROM mixed ORDER BY id"));
  ASSERT_EQ(rows.size(), expected.size());
  for (size_t at = 0; at < rows.size(); ++at) ASSERT_EQ(rows[at], expected[at]) << "row " << at;
}

}  // namespace
}  // namespace stockbook::testing
