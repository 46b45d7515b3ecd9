// SPDX-License-Identifier: MIT
#include "databases/dialect/token_stream.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

constexpr std::array<std::string_view, 31> kReserved = {
    "SELECT", "FROM", "WHERE", "GROUP", "ORDER", "BY",   "HAVING", "UNION",  "ALL",    "DISTINCT", "TOP",
    "AS",     "ON",   "INNER", "LEFT",  "RIGHT", "JOIN", "OUTER",  "CROSS",  "FULL",   "AND",      "OR",
    "NOT",    "IN",   "IS",    "NULL",  "LIKE",  "CASE", "WHEN",   "EXISTS", "BETWEEN"};

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
  if (static_cast<unsigned char>(token.text.front()) > 'z') return true;  // Chinese, as most names are
  return std::none_of(kReserved.begin(), kReserved.end(),
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
