// SPDX-License-Identifier: MIT
#include "interaction/find/wildcard.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/platform/error.h"

namespace stockbook::interaction {
namespace {

bool Match(std::string_view pattern, std::string_view text) { return Wildcard(pattern).Matches(text); }

std::string Refusal(std::string_view pattern) {
  try {
    const Wildcard refused(pattern);
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.native_code(), 93);
    return error.what();
  }
  return {};
}

TEST(Wildcard, MatchesPlainTextsExactly) {
  EXPECT_TRUE(Match("螺丝 M3", "螺丝 M3"));
  EXPECT_FALSE(Match("螺丝 M3", "螺丝 m3"));
  EXPECT_FALSE(Match("螺丝", "螺丝 M3"));
  EXPECT_FALSE(Match("螺丝", "六角螺丝"));
  EXPECT_TRUE(Match("", ""));
  EXPECT_FALSE(Match("", "a"));
}

TEST(Wildcard, TakesAStarForAnyRunOfCharacters) {
  EXPECT_TRUE(Match("*", ""));
  EXPECT_TRUE(Match("*", "螺丝"));
  EXPECT_TRUE(Match("a*c", "ac"));
  EXPECT_TRUE(Match("a*c", "abcbc"));
  EXPECT_FALSE(Match("a*c", "abcb"));
  EXPECT_TRUE(Match("*b*", "abc"));
  EXPECT_TRUE(Match("***b***", "b"));
  EXPECT_FALSE(Match("*b*", "acd"));
}

TEST(Wildcard, TakesAQuestionMarkForOneCharacterOfAnyLength) {
  EXPECT_TRUE(Match("?", "a"));
  EXPECT_TRUE(Match("?", "螺"));
  EXPECT_TRUE(Match("?", "\xF0\x9F\x94\xA9"));
  EXPECT_FALSE(Match("?", ""));
  EXPECT_FALSE(Match("?", "螺丝"));
  EXPECT_TRUE(Match("*1?*", "12"));
  EXPECT_FALSE(Match("*1?*", "21"));
}

TEST(Wildcard, TakesANumberSignForOneAsciiDigit) {
  EXPECT_TRUE(Match("M#", "M3"));
  EXPECT_FALSE(Match("M#", "M"));
  EXPECT_FALSE(Match("M#", "Mx"));
  EXPECT_FALSE(Match("M#", "M３")) << "a full-width digit";
  EXPECT_TRUE(Match("[#]", "#"));
  EXPECT_FALSE(Match("[#]", "3"));
}

TEST(Wildcard, TakesAListForOneOfItsCharacters) {
  EXPECT_TRUE(Match("[abc]", "b"));
  EXPECT_FALSE(Match("[abc]", "d"));
  EXPECT_FALSE(Match("[abc]", ""));
  EXPECT_TRUE(Match("[螺丝]母", "丝母"));
  EXPECT_TRUE(Match("[a-c]", "b"));
  EXPECT_FALSE(Match("[a-c]", "B"));
  EXPECT_TRUE(Match("[a-cx-z]", "y"));
  EXPECT_TRUE(Match("[一-龥]", "螺"));
  EXPECT_FALSE(Match("[一-龥]", "x"));
  EXPECT_TRUE(Match("[*?[]", "*"));
  EXPECT_TRUE(Match("[*?[]", "["));
  EXPECT_FALSE(Match("[*?[]", "x"));
}

TEST(Wildcard, TakesANegatedListForOneOtherCharacter) {
  EXPECT_FALSE(Match("[!abc]", "b"));
  EXPECT_TRUE(Match("[!abc]", "d"));
  EXPECT_TRUE(Match("[!a-z]", "螺"));
  EXPECT_FALSE(Match("[!a-z]", ""));
  EXPECT_FALSE(Match("[!一-龥]", "螺"));
  EXPECT_TRUE(Match("[!一-龥]", "x"));
}

TEST(Wildcard, TakesAnEmptyListForNothing) {
  EXPECT_TRUE(Match("[]", ""));
  EXPECT_TRUE(Match("a[]b", "ab"));
  EXPECT_FALSE(Match("a[]b", "a[]b"));
}

TEST(Wildcard, TakesHyphensAtTheEndsOfAListForThemselves) {
  EXPECT_TRUE(Match("[-a]", "-"));
  EXPECT_TRUE(Match("[a-]", "-"));
  EXPECT_TRUE(Match("[a-]", "a"));
  EXPECT_FALSE(Match("[a-]", "b"));
  EXPECT_FALSE(Match("[!-a]", "-"));
  EXPECT_TRUE(Match("[!-a]", "b"));
  EXPECT_TRUE(Match("a-z", "a-z"));
  EXPECT_FALSE(Match("a-z", "m"));
}

TEST(Wildcard, TakesBracketsAndExclamationMarksElsewhereForThemselves) {
  EXPECT_TRUE(Match("a]", "a]"));
  EXPECT_TRUE(Match("!a", "!a"));
  EXPECT_TRUE(Match("[!]", "!"));
  EXPECT_FALSE(Match("[!]", "a"));
  EXPECT_TRUE(Match("[a!]", "!"));
}

TEST(Wildcard, RefusesAListThatIsNotClosed) {
  EXPECT_EQ(Refusal("*[ab*"), "通配符“*[ab*”中的“[”没有配对的“]”：请补上“]”；要查找“[”本身，请写成“[[]”。");
  EXPECT_FALSE(Refusal("[").empty());
  EXPECT_FALSE(Refusal("[!").empty());
  EXPECT_FALSE(Refusal("[a][b").empty());
}

TEST(Wildcard, RefusesARangeThatGoesDown) {
  EXPECT_EQ(Refusal("x[0-9z-a]"), "通配符“x[0-9z-a]”中的范围“z-a”次序颠倒：请把小的字符写在前面。");
  EXPECT_FALSE(Refusal("[!丝-一]").empty());
  EXPECT_TRUE(Refusal("[a-a]").empty());
}

TEST(Wildcard, RefusesPatternsBeyondItsLimitAndNoPlainTexts) {
  const std::string most(Wildcard::kMostCharacters - 1, 'a');
  EXPECT_TRUE(Match("?" + most, "b" + most));
  EXPECT_FALSE(Refusal("??" + most).empty());
  EXPECT_TRUE(Match("*aa" + most + "*", "xaa" + most + "y"));
}

TEST(Wildcard, SaysWhichTextItAsksFor) {
  EXPECT_EQ(Wildcard("*螺丝*").Contained()->text(), "螺丝");
  EXPECT_EQ(Wildcard("**a]!-**").Contained()->text(), "a]!-");
  for (const char* other : {"*", "a*", "*a", "*a*b*", "*a?*", "*[a]*", "*#*", "a"})
    EXPECT_EQ(Wildcard(other).Contained(), nullptr) << other;
}

TEST(Wildcard, SaysWhetherTextsOfSomeCharactersCanMatch) {
  const std::string_view digits = "0123456789.-";
  for (const char* can : {"*12*", "*1?*", "*#*", "*[a-z0]*", "*[!1]*", "*"})
    EXPECT_TRUE(Wildcard(can).CanMatchTextsOf(digits)) << can;
  for (const char* cannot : {"*M3*", "*螺?*", "*[a-z]#*", "*[!0-9.-]*", "*1E*"})
    EXPECT_FALSE(Wildcard(cannot).CanMatchTextsOf(digits)) << cannot;
}

// Matches by brute force, for patterns and texts with one byte per character.
bool SlowMatch(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return text.empty();
  if (pattern.front() == '*') {
    for (size_t taken = 0; taken <= text.size(); ++taken) {
      if (SlowMatch(pattern.substr(1), text.substr(taken))) return true;
    }
    return false;
  }
  if (pattern.front() == '[') {
    const size_t end = pattern.find(']');
    std::string list(pattern.substr(1, end - 1));
    if (list.empty()) return SlowMatch(pattern.substr(end + 1), text);
    if (text.empty()) return false;
    const bool negated = list.size() > 1 && list[0] == '!';
    if (negated) list.erase(0, 1);
    bool listed = false;
    for (size_t at = 0; at < list.size(); ++at) {
      if (at + 2 < list.size() && list[at + 1] == '-') {
        listed = listed || (list[at] <= text[0] && text[0] <= list[at + 2]);
        at += 2;
      } else {
        listed = listed || list[at] == text[0];
      }
    }
    return listed != negated && SlowMatch(pattern.substr(end + 1), text.substr(1));
  }
  if (text.empty()) return false;
  const char c = pattern.front();
  const bool same = c == '?' || (c == '#' ? text[0] >= '0' && text[0] <= '9' : c == text[0]);
  return same && SlowMatch(pattern.substr(1), text.substr(1));
}

std::string RandomOf(std::mt19937& random, const std::vector<std::string>& pieces, size_t most) {
  std::string text;
  for (size_t left = random() % (most + 1); left > 0; --left) text += pieces[random() % pieces.size()];
  return text;
}

TEST(Wildcard, AgreesWithTryingEverythingOnRandomPatterns) {
  std::mt19937 random(20040305);
  const std::vector<std::string> pattern_pieces{"a",      "b",    "1",    "-",    "]",    "!",     "*",
                                                "*",      "?",    "#",    "[]",   "[ab]", "[!a]",  "[a-b]",
                                                "[!0-9]", "[-1]", "[b-]", "[!-]", "[!]",  "[0-1b]"};
  const std::vector<std::string> text_pieces{"a", "b", "1", "-", "]", "!", "c"};
  int matched = 0;
  for (int round = 0; round < 60000; ++round) {
    const std::string pattern = RandomOf(random, pattern_pieces, 7);
    const std::string text = RandomOf(random, text_pieces, 8);
    const bool expected = SlowMatch(pattern, text);
    matched += expected ? 1 : 0;
    ASSERT_EQ(Match(pattern, text), expected) << pattern << " / " << text;
    // The states of long patterns take several words.
    const std::string before(70, 'x');
    ASSERT_EQ(Match(before + pattern, before + text), expected) << pattern << " / " << text;
  }
  EXPECT_GT(matched, 3000);
  EXPECT_LT(matched, 57000);
}

TEST(Wildcard, AgreesWithItselfOnWiderCharacters) {
  // The same pattern and text with every letter replaced by a character of two to four bytes.
  const auto widened = [](const std::string& text) {
    std::string wide;
    for (const char c : text) {
      wide += c == 'a' ? "é" : c == 'b' ? "螺" : c == 'c' ? "\xF0\x9F\x94\xA9" : std::string(1, c);
    }
    return wide;
  };
  std::mt19937 random(7);
  const std::vector<std::string> pattern_pieces{"a", "b", "c", "*", "?", "[ab]", "[!a]", "[a-b]", "[!a-b]", "[]"};
  const std::vector<std::string> text_pieces{"a", "b", "c"};
  for (int round = 0; round < 20000; ++round) {
    const std::string pattern = RandomOf(random, pattern_pieces, 6);
    const std::string text = RandomOf(random, text_pieces, 6);
    ASSERT_EQ(Match(widened(pattern), widened(text)), SlowMatch(pattern, text)) << pattern << " / " << text;
  }
}

TEST(Wildcard, FinishesPatternsThatTryingEverythingNeverWould) {
  const std::string text(1000000, 'a');
  std::string stars;
  for (int star = 0; star < 30; ++star) stars += "*a";
  EXPECT_FALSE(Match(stars + "*b", text));
  EXPECT_TRUE(Match(stars + "*", text));
  std::string long_stars;
  for (int star = 0; star < 300; ++star) long_stars += "*?a";
  EXPECT_FALSE(Match(long_stars + "b", text));
  // A literal that almost occurs everywhere.
  EXPECT_FALSE(Match("*" + std::string(100000, 'a') + "b*", text));
  EXPECT_FALSE(Match("*b" + std::string(100000, 'a') + "*", text));
  EXPECT_TRUE(Match("*" + std::string(100000, 'a') + "b*", text + "b"));
}

TEST(Wildcard, ReadsBrokenUtf8WithoutHarm) {
  for (const char* text : {"\xE8", "\xE8\x9E", "\x80\x80", "a\xFF", "\xF0\x9F"}) {
    EXPECT_TRUE(Match("*", text));
    EXPECT_FALSE(Match("*[一-龥]*", text));
    EXPECT_FALSE(Match(text, "螺"));
  }
}

}  // namespace
}  // namespace stockbook::interaction
