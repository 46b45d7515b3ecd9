// SPDX-License-Identifier: MIT
#include "databases/dialect/token_stream.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/text.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

// In alphabetical order.
constexpr std::array<std::string_view, 31> kReserved = {
    "ALL",   "AND",    "AS",    "BETWEEN", "BY",     "CASE", "CROSS", "DISTINCT", "EXISTS", "FROM", "FULL",
    "GROUP", "HAVING", "IN",    "INNER",   "IS",     "JOIN", "LEFT",  "LIKE",     "NOT",    "NULL", "ON",
    "OR",    "ORDER",  "OUTER", "RIGHT",   "SELECT", "TOP",  "UNION", "WHEN",     "WHERE"};
static_assert(std::is_sorted(kReserved.begin(), kReserved.end()));

// Where the words of each letter begin; those of the next letter end them.
constexpr std::array<uint8_t, 27> kReservedOfLetter = [] {
  std::array<uint8_t, 27> first{};
  for (size_t letter = 0; letter < first.size(); ++letter) {
    while (first[letter] < kReserved.size() && kReserved[first[letter]].front() < static_cast<char>('A' + letter))
      ++first[letter];
  }
  return first;
}();

constexpr size_t kShownCharacters = 30;

// The length and the first letter, of which there are two, tell nearly all words apart.
bool SameWord(std::string_view text, std::string_view keyword) {
  return text.size() == keyword.size() && ((text.front() ^ keyword.front()) & ~0x20) == 0 &&
         base::EqualsIgnoringCase(text, keyword);
}

}  // namespace

const Token& TokenStream::Peek(size_t ahead) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }

Token TokenStream::Take() {
  if (at_ + 1 < tokens_.size()) return std::move(tokens_[at_++]);
  return tokens_[at_];
}

bool TokenStream::AtKeyword(std::string_view keyword, size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.type == TokenType::kName && SameWord(token.text, keyword);
}

bool TokenStream::AtSymbol(std::string_view symbol, size_t ahead) const {
  const Token& token = Peek(ahead);
  return token.type == TokenType::kSymbol && token.text == symbol;
}

bool TokenStream::AtName(size_t ahead) const {
  const Token& token = Peek(ahead);
  if (token.type == TokenType::kQuotedName) return true;
  if (token.type != TokenType::kName) return false;
  const int letter = (token.text.front() & ~0x20) - 'A';
  if (letter < 0 || letter >= 26) return true;  // Chinese, as most names are
  const auto at = static_cast<size_t>(letter);
  return std::none_of(kReserved.begin() + kReservedOfLetter[at], kReserved.begin() + kReservedOfLetter[at + 1],
                      [&](std::string_view word) { return SameWord(token.text, word); });
}

bool TokenStream::TakeKeyword(std::string_view keyword) {
  if (!AtKeyword(keyword)) return false;
  Take();
  return true;
}

bool TokenStream::TakeSymbol(std::string_view symbol) {
  if (!AtSymbol(symbol)) return false;
  Take();
  return true;
}

void TokenStream::ExpectKeyword(std::string_view keyword) {
  if (!TakeKeyword(keyword)) RefuseHere("此处应为 " + std::string(keyword));
}

void TokenStream::ExpectSymbol(std::string_view symbol) {
  if (!TakeSymbol(symbol)) RefuseHere("此处应为“" + std::string(symbol) + "”");
}

std::string TokenStream::ExpectName(std::string_view what) {
  if (!AtName()) RefuseHere("此处应为" + std::string(what));
  return Take().text;
}

void TokenStream::RefuseHere(const std::string& expected) const {
  const Token& token = Peek();
  if (token.type == TokenType::kEnd) throw Refusal(token.offset, "语法错误：语句不完整，" + expected);
  std::string shown(base::LeftCharacters(token.text, kShownCharacters));
  if (shown.size() < token.text.size()) shown += "…";
  throw Refusal(token.offset, "“" + shown + "”处有语法错误：" + expected);
}

}  // namespace stockbook::databases
