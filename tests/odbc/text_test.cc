// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_text.h"

#include <gtest/gtest.h>

namespace stockbook::databases {
namespace {

std::string ThereAndBack(const std::string& utf8) {
  const OdbcWideText wide = Widened(utf8);
  EXPECT_EQ(wide.back(), 0);
  std::string text;
  EXPECT_TRUE(AppendUtf8(wide.data(), wide.size() - 1, text));
  return text;
}

TEST(OdbcText, ComesBackAsItWas) {
  for (const char* text : {"", "abc", "é", "螺丝 M4", "\xF0\x9F\x94\xA9 \xF0\xA0\x80\x80!"})
    EXPECT_EQ(ThereAndBack(text), text);
}

TEST(OdbcText, TakesTwoUnitsForACharacterBeyondTheFirstPlane) {
  if (sizeof(SQLWCHAR) != 2) GTEST_SKIP() << "the driver manager's characters have four bytes";
  EXPECT_EQ(Widened("\xF0\x9F\x94\xA9"), (OdbcWideText{0xD83D, 0xDD29, 0}));
}

TEST(OdbcText, MendsHalvesOfPairsAndZeros) {
  const OdbcWideText wide = {'a', 0xD83D, 'b', 0xDD29, 0, 0xD83D};
  std::string text = "x";
  EXPECT_FALSE(AppendUtf8(wide.data(), wide.size(), text));
  EXPECT_EQ(text,
            "xa\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace stockbook::databases
