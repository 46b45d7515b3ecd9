// SPDX-License-Identifier: MIT
#include "databases/dialect/lexer.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/digits.h"
#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/refusal.h"
#include "stockbook/base/date.h"

namespace stockbook::databases {
namespace {

using base::IsDigit;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c) || c == '$' || c == '@'; }

// yyyy-M-d as base::Date reads it, or the desktop's own M/d/yyyy; with a time or without.
std::optional<base::Date> ReadDate(std::string_view text) {
  if (const auto date = base::Date::Parse(text)) return date;
  text = base::TrimBlanks(text);
  const size_t blank = std::min(text.find(' '), text.size());
  const auto pieces = base::Split(text.substr(0, blank), '/');
  if (pieces.size() != 3) return std::nullopt;
  std::string turned(pieces[2]);
  turned.append("-").append(pieces[0]).append("-").append(pieces[1]).append(text.substr(blank));
  return base::Date::Parse(turned);
}

class Lexer {
 public:
  Lexer(std::string_view statement, Dialect dialect) : statement_(statement), dialect_(dialect) {}

  std::vector<Token> Run() {
    std::vector<Token> tokens;
    tokens.reserve(statement_.size() / 6 + 8);  // about what a journal has
    while (SkipBlanks()) tokens.push_back(Next());
    tokens.push_back({TokenType::kEnd, {}, statement_.size()});
    return tokens;
  }

 private:
  char Peek(size_t ahead = 0) const { return at_ + ahead < statement_.size() ? statement_[at_ + ahead] : '\0'; }

  bool SkipBlanks() {
    while (at_ < statement_.size() && IsBlank(statement_[at_])) ++at_;
    return at_ < statement_.size();
  }

  Token Next() {
    const char c = Peek();
    if (c == '\'') return Quoted(TokenType::kText, '\'', at_);
    if (c == '"' || c == '`') return Quoted(TokenType::kQuotedName, c, at_);
    if (c == '[') return Quoted(TokenType::kQuotedName, ']', at_);
    if (c == '#') return DateLiteral();
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) return Number();
    if (dialect_ == Dialect::kServer && (c == 'N' || c == 'n') && Peek(1) == '\'') {
      const size_t start = at_++;
      return Quoted(TokenType::kText, '\'', start);
    }
    if (IsNameStart(c)) return Name();
    return Symbol();
  }

  // From the opening quote to `closing`; a doubled closing quote stands for itself.
  Token Quoted(TokenType type, char closing, size_t start) {
    std::string text;
    for (++at_; at_ < statement_.size(); ++at_) {
      if (statement_[at_] != closing) {
        text += statement_[at_];
      } else if (Peek(1) == closing) {
        text += statement_[at_++];
      } else {
        ++at_;
        if (type == TokenType::kQuotedName && text.empty()) throw Refusal(start, "括号或引号内的名称为空");
        return {type, std::move(text), start};
      }
    }
    throw Refusal(start,
                  type == TokenType::kText ? "文本缺少结尾的单引号" : std::string("名称缺少结尾的“") + closing + "”");
  }

  Token DateLiteral() {
    const size_t start = at_;
    if (dialect_ == Dialect::kServer) throw Refusal(start, "服务器方言不支持以 # 书写的日期");
    const size_t end = statement_.find('#', start + 1);
    if (end == std::string_view::npos) throw Refusal(start, "日期缺少结尾的 #");
    const std::string_view text = statement_.substr(start + 1, end - start - 1);
    const auto date = ReadDate(text);
    if (!date) throw Refusal(start, "“" + std::string(text) + "”不是有效的日期");
    at_ = end + 1;
    return {TokenType::kDate, date->Text(), start};
  }

  Token Number() {
    const size_t start = at_;
    TokenType type = TokenType::kInteger;
    while (IsDigit(Peek())) ++at_;
    if (Peek() == '.') {
      type = TokenType::kDecimal;
      for (++at_; IsDigit(Peek());) ++at_;
    }
    const size_t digits = Peek(1) == '+' || Peek(1) == '-' ? 2 : 1;
    if ((Peek() == 'e' || Peek() == 'E') && IsDigit(Peek(digits))) {
      type = TokenType::kDecimal;
      for (at_ += digits; IsDigit(Peek());) ++at_;
    }
    std::string text(statement_.substr(start, at_ - start));
    if (IsNameStart(Peek())) throw Refusal(start, "数字“" + text + "”之后紧接着名称");
    if (type == TokenType::kInteger && !base::ParseInteger(text)) type = TokenType::kDecimal;
    if (!base::ParseNumber(text)) throw Refusal(start, "数字“" + text + "”超出范围");
    return {type, std::move(text), start};
  }

  Token Name() {
    const size_t start = at_;
    while (at_ < statement_.size() && IsNamePart(statement_[at_])) ++at_;
    return {TokenType::kName, std::string(statement_.substr(start, at_ - start)), start};
  }

  Token Symbol() {
    static constexpr std::array<std::string_view, 7> kPairs = {"<>", "<=", ">=", "!=", "||", "--", "/*"};
    const std::string_view pair = statement_.substr(at_, 2);
    for (const std::string_view known : kPairs) {
      if (pair.front() != known.front() || pair != known) continue;
      if (known == "/*" || (known == "--" && dialect_ == Dialect::kServer)) throw Refusal(at_, "语句中不支持注释");
      if (known == "--") break;  // the desktop dialect has no comments: two minus signs
      const size_t start = at_;
      at_ += 2;
      return {TokenType::kSymbol, std::string(known), start};
    }
    static constexpr std::string_view kSingles = "(),.;+-*/&\\^=<>%|";
    const char c = Peek();
    if (kSingles.find(c) == std::string_view::npos) {
      throw Refusal(at_, c > ' ' ? std::string("不认识的字符“") + c + "”" : std::string("语句中有控制字符"));
    }
    return {TokenType::kSymbol, std::string(1, c), at_++};
  }

  std::string_view statement_;
  Dialect dialect_;
  size_t at_ = 0;
};

size_t FirstMalformed(std::string_view statement) {
  const std::string clean = base::CleanUtf8(statement);
  return static_cast<size_t>(std::mismatch(statement.begin(), statement.end(), clean.begin(), clean.end()).first -
                             statement.begin());
}

}  // namespace

std::vector<Token> Tokenize(std::string_view statement, Dialect dialect) {
  if (!base::IsCleanUtf8(statement))
    throw Refusal(FirstMalformed(statement), "语句中有无法识别的字节（不是有效的 UTF-8 文本）");
  return Lexer(statement, dialect).Run();
}

}  // namespace stockbook::databases
