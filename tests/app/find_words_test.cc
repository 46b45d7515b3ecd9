// SPDX-License-Identifier: MIT
#include "stockbook/find/find_words.h"

#include <gtest/gtest.h>

#include "stockbook/find/letter_case.h"
#include "stockbook/platform/error.h"

namespace stockbook::app {
namespace {

constexpr FindOptions kCase{true, false, false};
constexpr FindOptions kWholeWords{false, true, false};
constexpr FindOptions kPatterns{false, false, true};
constexpr FindOptions kWholePatterns{false, true, true};

bool HasWord(std::string_view text, std::string_view word, FindOptions options = {}) {
  return FindWord(word, options).IsIn(text);
}

TEST(FindWords, ANumberIsFoundAsShownWithOrWithoutItsCommas) {
  for (const char* word : {"10,032.68", "10032.68", "0,032", "0032.6", "2.68", "10", "68"})
    EXPECT_TRUE(HasWord("10,032.68", word)) << word;
  for (const char* word : {"10032.6789", "1,0032", "100,32", "10,032.7", ",,"})
    EXPECT_FALSE(HasWord("10,032.68", word)) << word;
  EXPECT_TRUE(HasWord("-1,234,567.00", "-1234567"));
}

TEST(FindWords, ACommaBetweenOtherCharactersIsOneOfThem) {
  EXPECT_TRUE(HasWord("螺栓,螺母", "栓,螺"));
  EXPECT_FALSE(HasWord("螺栓,螺母", "栓螺"));
  EXPECT_TRUE(HasWord("M8,10", "M810")) << "between two digits it may group";
  EXPECT_FALSE(HasWord("1, 2", "12"));
}

TEST(FindWords, ATotalOfTwoLinesHasTheWordsOfEach) {
  EXPECT_TRUE(HasWord("1,234.00\n5,678.00", "1234.00"));
  EXPECT_TRUE(HasWord("1,234.00\n5,678.00", "5,678"));
  EXPECT_FALSE(HasWord("1,234.00\n5,678.00", "005"));
}

TEST(FindWords, CapitalsCountOnlyWhereTheyAreAskedFor) {
  EXPECT_TRUE(HasWord("CG-00012", "cg-"));
  EXPECT_TRUE(HasWord("Φ20 ЁЖ Äö", "φ20"));
  EXPECT_TRUE(HasWord("Φ20 ЁЖ Äö", "ёж"));
  EXPECT_TRUE(HasWord("Φ20 ЁЖ Äö", "äÖ"));
  EXPECT_FALSE(HasWord("CG-00012", "cg-", kCase));
  EXPECT_TRUE(HasWord("CG-00012", "CG-", kCase));
}

TEST(FindWords, SignsOfPatternsStandForThemselvesUnlessPatternsAreChosen) {
  EXPECT_FALSE(HasWord("M8", "M?"));
  EXPECT_TRUE(HasWord("要不要?", "要?"));
  EXPECT_TRUE(HasWord("A#1 [急]", "[急]"));
  EXPECT_TRUE(HasWord("M8", "m?", kPatterns));
  EXPECT_TRUE(HasWord("销售单 0042", "单*42", kPatterns));
  EXPECT_TRUE(HasWord("10,032.68", "1##32.6[0-9]", kPatterns)) << "without its comma";
  EXPECT_FALSE(HasWord("M8", "m[!0-9]", kPatterns));
  EXPECT_TRUE(HasWord("普通的字", "的", kPatterns));
}

TEST(FindWords, AMalformedPatternIsRefusedWithASentence) {
  try {
    FindWord("[a", kPatterns);
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("[a"), std::string::npos) << error.what();
  }
  EXPECT_TRUE(HasWord("[a", "[a"));
}

TEST(FindWords, AWholeNumberIsNotPartOfAnother) {
  for (const char* text : {"12", "12.00", "-12", "共 12 件", "12,", "入12", "12.", "A-12", "12、13"})
    EXPECT_TRUE(HasWord(text, "12", kWholeWords)) << text;
  for (const char* text : {"112", "121", "12.50", "12,500", "3.12", "1,312", "M12", "12.01"})
    EXPECT_FALSE(HasWord(text, "12", kWholeWords)) << text;
  EXPECT_TRUE(HasWord("10,032.50", "10032.5", kWholeWords));
  EXPECT_TRUE(HasWord("10,032.50", "10,032.50", kWholeWords));
  EXPECT_FALSE(HasWord("10,032.55", "10032.5", kWholeWords));
}

TEST(FindWords, AWholeWordEndsWhereOtherCharactersBegin) {
  EXPECT_TRUE(HasWord("2025-01-03 销售单 0001", "销售单", kWholeWords));
  EXPECT_TRUE(HasWord("销售单0001", "销售单", kWholeWords));
  EXPECT_FALSE(HasWord("销售单", "销售", kWholeWords));
  EXPECT_FALSE(HasWord("bolts", "bolt", kWholeWords));
  EXPECT_TRUE(HasWord("bolts bolt", "Bolt", kWholeWords)) << "the second one";
}

TEST(FindWords, AWholePatternFitsTheWholeCell) {
  EXPECT_TRUE(HasWord("M8", "M?", kWholePatterns));
  EXPECT_FALSE(HasWord("M8x30", "M?", kWholePatterns));
  EXPECT_TRUE(HasWord("M8x30", "M?x*", kWholePatterns));
}

TEST(FindWords, NothingIsInAnEmptyCell) {
  EXPECT_FALSE(HasWord("", "a"));
  EXPECT_FALSE(HasWord("", "*", kPatterns));
}

TEST(FindWords, BlanksOfBothWidthsSeparateAndCommasDoNot) {
  EXPECT_EQ(SplitWords(" 销售单　急用\t10,032.68 急用 "), (std::vector<std::string>{"销售单", "急用", "10,032.68"}));
  EXPECT_TRUE(SplitWords(" 　 ").empty());
}

TEST(FindWords, LongTextsAreSearchedLikeShortOnes) {
  const std::string filling(500, 'x');
  EXPECT_TRUE(HasWord(filling + "1,234" + filling, "1234"));
  EXPECT_TRUE(HasWord(filling + "Needle" + filling, "nEEDLE"));
  EXPECT_TRUE(HasWord(filling + "abcdefghijkl", "abcdefghijkl"));
  EXPECT_FALSE(HasWord(filling, "1234"));
}

TEST(LetterCase, SmallLettersTakeTheSamePlaces) {
  EXPECT_EQ(InSmallLetters("AzÀÞ×Ως ЯЁ 单Ａ"), "azàþ×ως яё 单Ａ");
  EXPECT_EQ(InSmallLetters("\xC3"), "\xC3") << "a cut-off character stays";
  EXPECT_TRUE(HasCase("单a"));
  EXPECT_FALSE(HasCase("单 12.5-"));
}

}  // namespace
}  // namespace stockbook::app
