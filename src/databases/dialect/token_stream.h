// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "databases/dialect/lexer.h"

namespace stockbook::databases {

// The parser's place among the words of a statement. Keywords compare ignoring ASCII case; a quoted name is never one.
class TokenStream {
 public:
  explicit TokenStream(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

  const Token& Peek(size_t ahead = 0) const;
  // The word is handed over; the last one stays.
  Token Take();
  size_t offset() const { return Peek().offset; }

  bool AtKeyword(std::string_view keyword, size_t ahead = 0) const;
  bool AtSymbol(std::string_view symbol, size_t ahead = 0) const;
  bool AtEnd() const { return Peek().type == TokenType::kEnd; }
  // A name that may stand for a column, table or alias: quoted, or no reserved word.
  bool AtName(size_t ahead = 0) const;

  bool TakeKeyword(std::string_view keyword);
  bool TakeSymbol(std::string_view symbol);
  void ExpectKeyword(std::string_view keyword);
  void ExpectSymbol(std::string_view symbol);
  std::string ExpectName(std::string_view what);

  // Refuses the word at the current place: "“And”处有语法错误：" + what should stand there.
  [[noreturn]] void RefuseHere(const std::string& expected) const;

 private:
  std::vector<Token> tokens_;
  size_t at_ = 0;
};

}  // namespace stockbook::databases
