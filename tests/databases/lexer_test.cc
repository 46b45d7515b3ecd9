// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "databases/dialect/lexer.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

std::vector<std::string> Words(std::string_view statement, Dialect dialect = Dialect::kDesktop) {
  std::vector<std::string> words;
  for (const Token& token : Tokenize(statement, dialect)) words.push_back(token.text);
  words.pop_back();
  return words;
}

size_t RefusedAtByte(std::string_view statement, Dialect dialect = Dialect::kDesktop) {
  try {
    Tokenize(statement, dialect);
  } catch (const Refusal& refusal) {
    return refusal.offset();
  }
  return SIZE_MAX;
}

using List = std::vector<std::string>;

TEST(Lexer, ReadsNamesOfAnyScriptAndSigns) {
  EXPECT_EQ(Words("Select Recs.除税金额,-a<=b<>c"),
            (List{"Select", "Recs", ".", "除税金额", ",", "-", "a", "<=", "b", "<>", "c"}));
}

TEST(Lexer, UndoesDoubledQuotesInTextsAndNames) {
  EXPECT_EQ(Words("'it''s' [a ]]b] \"c\"\"d\" `e`"), (List{"it's", "a ]b", "c\"d", "e"}));
}

TEST(Lexer, KeepsAnEmptyText) { EXPECT_EQ(Words("''"), List{""}); }

TEST(Lexer, ReadsDateLiteralsOfTheDesktopDialect) {
  EXPECT_EQ(Words("#2005-03-08# #3/8/2005# #2005-3-8 14:05#"),
            (List{"2005-03-08", "2005-03-08", "2005-03-08 14:05:00"}));
  EXPECT_EQ(RefusedAtByte("a = #2005-02-30#"), 4U);
  EXPECT_EQ(RefusedAtByte("a = #2005-02-03"), 4U);
  EXPECT_EQ(RefusedAtByte("#2005-02-03#", Dialect::kServer), 0U);
}

TEST(Lexer, ReadsNumbersAndMakesLongWholeNumbersDecimals) {
  const auto tokens = Tokenize("12 1.5 .5 1e3 99999999999999999999", Dialect::kDesktop);
  EXPECT_EQ(tokens[0].type, TokenType::kInteger);
  for (size_t index = 1; index < 5; ++index) EXPECT_EQ(tokens[index].type, TokenType::kDecimal) << index;
  EXPECT_EQ(RefusedAtByte("a 12b"), 2U);
  EXPECT_EQ(RefusedAtByte("1e999"), 0U);
}

TEST(Lexer, TakesTwoMinusSignsApartInTheDesktopDialectAndRefusesCommentsInTheOther) {
  EXPECT_EQ(Words("5--3"), (List{"5", "-", "-", "3"}));
  EXPECT_EQ(RefusedAtByte("5--3", Dialect::kServer), 1U);
  EXPECT_EQ(RefusedAtByte("5/*3*/"), 1U);
}

TEST(Lexer, ReadsNationalTextsOfTheServerDialect) {
  EXPECT_EQ(Words("N'库' n", Dialect::kServer), (List{"库", "n"}));
  EXPECT_EQ(Words("N'库'"), (List{"N", "库"}));
}

TEST(Lexer, RefusesWhatHasNoEndAndWhatIsNoWord) {
  EXPECT_EQ(RefusedAtByte("a 'b"), 2U);
  EXPECT_EQ(RefusedAtByte("a [b"), 2U);
  EXPECT_EQ(RefusedAtByte("a [] b"), 2U);
  EXPECT_EQ(RefusedAtByte("a ? b"), 2U);
  EXPECT_EQ(RefusedAtByte(std::string_view("a\0b", 3)), 1U);
  EXPECT_EQ(RefusedAtByte("库\xFF"), 3U);
}

}  // namespace
}  // namespace stockbook::databases
