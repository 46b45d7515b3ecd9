// SPDX-License-Identifier: MIT
#include "databases/dialect/expression_parser.h"

#include <algorithm>
#include <array>

#include "base/number.h"
#include "base/text.h"
#include "databases/dialect/refusal.h"

namespace stockbook::databases {
namespace {

// Chains of operators make deep trees without nesting in the text.
constexpr size_t kMaxTreeDepth = 400;
constexpr size_t kMaxTypeLength = 8000;
constexpr size_t kUnlimitedLength = size_t{1} << 31;
constexpr int64_t kMaxScale = 38;

ExprPtr Make(ExprKind kind, size_t offset, std::string text = {}) {
  auto node = std::make_unique<Expr>(kind, offset);
  node->text = std::move(text);
  return node;
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return text;
}

bool IsComparison(const Token& token) {
  static constexpr std::array<std::string_view, 7> kSigns = {"=", "<>", "!=", "<", ">", "<=", ">="};
  return token.type == TokenType::kSymbol && std::find(kSigns.begin(), kSigns.end(), token.text) != kSigns.end();
}

}  // namespace

NestingGuard::NestingGuard(int& nesting, size_t offset) : nesting_(nesting) {
  if (nesting_ >= kMaxNesting) throw Refusal(offset, "语句的嵌套过深，最多 " + std::to_string(kMaxNesting) + " 层");
  ++nesting_;
}

ExprPtr ExpressionParser::WithChildren(ExprPtr node) {
  for (const ExprPtr& child : node->operands) node->depth = std::max(node->depth, child->depth + 1);
  if (node->depth > kMaxTreeDepth) throw Refusal(node->offset, "表达式过长，请分成几部分");
  return node;
}

ExprPtr ExpressionParser::Join(std::string op, size_t offset, ExprPtr left, ExprPtr right) const {
  if (op == "&" && dialect_ == Dialect::kDesktop) {
    // A chain of & is one node, which joins any number of texts at once.
    if (left->kind != ExprKind::kConcat) {
      auto chain = Make(ExprKind::kConcat, offset, "&");
      chain->operands.push_back(std::move(left));
      left = std::move(chain);
    }
    // The others have been counted: a chain of thousands is not counted again with each of them.
    left->depth = std::max(left->depth, std::max(left->operands.back()->depth, right->depth) + 1);
    left->operands.push_back(std::move(right));
    if (left->depth > kMaxTreeDepth) throw Refusal(left->offset, "表达式过长，请分成几部分");
    return left;
  }
  auto node = Make(ExprKind::kBinary, offset, std::move(op));
  node->operands.push_back(std::move(left));
  node->operands.push_back(std::move(right));
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::Parse() {
  const NestingGuard guard(nesting_, tokens_.offset());
  ExprPtr left = ParseAnd();
  while (tokens_.AtKeyword("OR")) {
    const size_t offset = tokens_.Take().offset;
    left = Join("OR", offset, std::move(left), ParseAnd());
  }
  return left;
}

ExprPtr ExpressionParser::ParseAnd() {
  ExprPtr left = ParseNot();
  while (tokens_.AtKeyword("AND")) {
    const size_t offset = tokens_.Take().offset;
    left = Join("AND", offset, std::move(left), ParseNot());
  }
  return left;
}

ExprPtr ExpressionParser::ParseNot() {
  if (!tokens_.AtKeyword("NOT")) return ParseComparison();
  const NestingGuard guard(nesting_, tokens_.offset());
  auto node = Make(ExprKind::kUnary, tokens_.Take().offset, "NOT");
  node->operands.push_back(ParseNot());
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseComparison() {
  ExprPtr left = ParseOperators(0);
  for (;;) {
    const size_t offset = tokens_.offset();
    if (IsComparison(tokens_.Peek())) {
      std::string op = tokens_.Take().text;
      if (op == "!=" && dialect_ == Dialect::kDesktop) throw Refusal(offset, "桌面方言的不等号是 <>");
      left = Join(op == "!=" ? "<>" : op, offset, std::move(left), ParseOperators(0));
      continue;
    }
    if (tokens_.AtKeyword("IS")) {
      left = ParseIsNull(std::move(left));
      continue;
    }
    if (tokens_.Peek().type != TokenType::kName) return left;
    const size_t ahead = tokens_.AtKeyword("NOT") ? 1 : 0;
    if (tokens_.AtKeyword("IN", ahead)) {
      left = ParseIn(std::move(left));
    } else if (tokens_.AtKeyword("BETWEEN", ahead)) {
      left = ParseBetween(std::move(left));
    } else if (tokens_.AtKeyword("LIKE", ahead)) {
      left = ParseLike(std::move(left));
    } else {
      return left;
    }
  }
}

ExprPtr ExpressionParser::ParseIsNull(ExprPtr left) {
  auto node = Make(ExprKind::kIsNull, tokens_.Take().offset);
  node->negated = tokens_.TakeKeyword("NOT");
  tokens_.ExpectKeyword("NULL");
  node->operands.push_back(std::move(left));
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseIn(ExprPtr left) {
  const bool negated = tokens_.TakeKeyword("NOT");
  auto node = Make(ExprKind::kIn, tokens_.Take().offset);
  node->negated = negated;
  node->operands.push_back(std::move(left));
  tokens_.ExpectSymbol("(");
  if (tokens_.AtKeyword("SELECT")) {
    node->query = parse_query_();
  } else {
    do {
      node->operands.push_back(Parse());
    } while (tokens_.TakeSymbol(","));
  }
  tokens_.ExpectSymbol(")");
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseBetween(ExprPtr left) {
  const bool negated = tokens_.TakeKeyword("NOT");
  auto node = Make(ExprKind::kBetween, tokens_.Take().offset);
  node->negated = negated;
  node->operands.push_back(std::move(left));
  node->operands.push_back(ParseOperators(0));
  tokens_.ExpectKeyword("AND");
  node->operands.push_back(ParseOperators(0));
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseLike(ExprPtr left) {
  const bool negated = tokens_.TakeKeyword("NOT");
  auto node = Make(ExprKind::kLike, tokens_.Take().offset);
  node->negated = negated;
  node->operands.push_back(std::move(left));
  node->operands.push_back(ParseOperators(0));
  return WithChildren(std::move(node));
}

// The rank of a binary operator, 0 for the loosest; -1 for any other word.
int ExpressionParser::RankOf(const Token& token) const {
  const bool desktop = dialect_ == Dialect::kDesktop;
  if (token.type == TokenType::kName && desktop && base::EqualsIgnoringCase(token.text, "MOD")) return 2;
  if (token.type != TokenType::kSymbol) return -1;
  const std::string& sign = token.text;
  if (sign == "&") return desktop ? 0 : 1;
  if (sign == "+" || sign == "-") return 1;
  if (sign == "*" || sign == "/") return 4;
  if (sign == "\\") return desktop ? 3 : -1;
  if (sign == "%") return desktop ? -1 : 4;
  return -1;
}

ExprPtr ExpressionParser::ParseOperators(int loosest) {
  ExprPtr left = ParseSign();
  for (int rank = RankOf(tokens_.Peek()); rank >= loosest; rank = RankOf(tokens_.Peek())) {
    Token token = tokens_.Take();
    left = Join(Upper(std::move(token.text)), token.offset, std::move(left), ParseOperators(rank + 1));
  }
  if (loosest == 0 && tokens_.Peek().type == TokenType::kSymbol) RefuseForeignOperator();
  return left;
}

void ExpressionParser::RefuseForeignOperator() const {
  if (tokens_.AtSymbol("||")) throw Refusal(tokens_.offset(), "不支持运算符“||”，连接文本请用 & 或 +");
  for (const std::string_view sign : {"\\", "%", "^", "|"}) {
    if (tokens_.AtSymbol(sign)) throw Refusal(tokens_.offset(), "此方言不支持运算符“" + std::string(sign) + "”");
  }
}

ExprPtr ExpressionParser::ParseSign() {
  if (!tokens_.AtSymbol("-") && !tokens_.AtSymbol("+")) return ParsePower();
  const NestingGuard guard(nesting_, tokens_.offset());
  Token token = tokens_.Take();
  auto node = Make(ExprKind::kUnary, token.offset, std::move(token.text));
  node->operands.push_back(ParseSign());
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParsePower() {
  ExprPtr left = ParsePrimary();
  while (dialect_ == Dialect::kDesktop && tokens_.AtSymbol("^")) {
    const size_t offset = tokens_.Take().offset;
    const bool signed_power = tokens_.AtSymbol("-") || tokens_.AtSymbol("+");
    left = Join("^", offset, std::move(left), signed_power ? ParseSign() : ParsePrimary());
  }
  return left;
}

ExprPtr ExpressionParser::ParseLiteral() {
  Token token = tokens_.Take();
  const auto kind = token.type == TokenType::kText      ? ExprKind::kText
                    : token.type == TokenType::kInteger ? ExprKind::kInteger
                    : token.type == TokenType::kDecimal ? ExprKind::kDecimal
                                                        : ExprKind::kDate;
  return Make(kind, token.offset, std::move(token.text));
}

ExprPtr ExpressionParser::ParsePrimary() {
  const Token& token = tokens_.Peek();
  switch (token.type) {
    case TokenType::kText:
    case TokenType::kInteger:
    case TokenType::kDecimal:
    case TokenType::kDate:
      return ParseLiteral();
    case TokenType::kSymbol:
      if (token.text == "(") return ParseParenthesis();
      break;
    case TokenType::kName:
      if (tokens_.TakeKeyword("NULL")) return Make(ExprKind::kNull, token.offset);
      if (tokens_.AtKeyword("CASE")) return ParseCase();
      if (tokens_.AtKeyword("EXISTS")) {
        auto node = Make(ExprKind::kExists, tokens_.Take().offset);
        tokens_.ExpectSymbol("(");
        node->query = parse_query_();
        tokens_.ExpectSymbol(")");
        return node;
      }
      // Left and Right are functions where a parenthesis follows.
      if (tokens_.AtName() || ((tokens_.AtKeyword("LEFT") || tokens_.AtKeyword("RIGHT")) && tokens_.AtSymbol("(", 1))) {
        return ParseNameOrCall();
      }
      break;
    case TokenType::kQuotedName:
      return ParseNameOrCall();
    case TokenType::kEnd:
      break;
  }
  tokens_.RefuseHere("此处应为字段、常量、函数或“(”");
}

ExprPtr ExpressionParser::ParseParenthesis() {
  const size_t offset = tokens_.Take().offset;
  ExprPtr inner;
  if (tokens_.AtKeyword("SELECT")) {
    inner = Make(ExprKind::kSubquery, offset);
    inner->query = parse_query_();
  } else {
    inner = Parse();
    // A chain in parentheses is a value of its own: operands that follow must not extend it.
    if (inner->kind == ExprKind::kConcat) {
      auto chain = Make(ExprKind::kConcat, inner->offset, "&");
      chain->operands.push_back(std::move(inner));
      inner = WithChildren(std::move(chain));
    }
  }
  tokens_.ExpectSymbol(")");
  return inner;
}

ExprPtr ExpressionParser::ParseCase() {
  if (dialect_ == Dialect::kDesktop) throw Refusal(tokens_.offset(), "桌面方言没有 CASE，请用 IIf");
  const NestingGuard guard(nesting_, tokens_.offset());
  auto node = Make(ExprKind::kCase, tokens_.Take().offset);
  node->has_subject = !tokens_.AtKeyword("WHEN");
  if (node->has_subject) node->operands.push_back(Parse());
  if (!tokens_.AtKeyword("WHEN")) tokens_.RefuseHere("此处应为 WHEN");
  while (tokens_.TakeKeyword("WHEN")) {
    node->operands.push_back(Parse());
    tokens_.ExpectKeyword("THEN");
    node->operands.push_back(Parse());
  }
  node->has_else = tokens_.TakeKeyword("ELSE");
  if (node->has_else) node->operands.push_back(Parse());
  tokens_.ExpectKeyword("END");
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseNameOrCall() {
  Token token = tokens_.Take();
  if (token.type == TokenType::kName && tokens_.AtSymbol("(")) return ParseCall(token.text, token.offset);
  if (token.type == TokenType::kName && dialect_ == Dialect::kDesktop && !tokens_.AtSymbol(".")) {
    if (base::EqualsIgnoringCase(token.text, "TRUE")) return Make(ExprKind::kBoolean, token.offset, "-1");
    if (base::EqualsIgnoringCase(token.text, "FALSE")) return Make(ExprKind::kBoolean, token.offset, "0");
  }
  auto node = Make(ExprKind::kColumn, token.offset, std::move(token.text));
  while (tokens_.TakeSymbol(".")) {
    node->qualifier = std::move(node->text);
    node->text = tokens_.ExpectName("字段名");
  }
  return node;
}

ExprPtr ExpressionParser::ParseCall(const std::string& name, size_t offset) {
  if (dialect_ == Dialect::kServer && base::EqualsIgnoringCase(name, "CAST")) return ParseCast(offset);
  if (dialect_ == Dialect::kServer && base::EqualsIgnoringCase(name, "CONVERT")) return ParseConvert(offset);
  auto node = Make(ExprKind::kCall, offset, name);
  tokens_.ExpectSymbol("(");
  if (tokens_.TakeSymbol(")")) return node;
  if (tokens_.AtSymbol("*")) {
    node->operands.push_back(Make(ExprKind::kStar, tokens_.Take().offset));
  } else {
    node->distinct = tokens_.TakeKeyword("DISTINCT");
    do {
      node->operands.push_back(Parse());
    } while (tokens_.TakeSymbol(","));
  }
  tokens_.ExpectSymbol(")");
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseCast(size_t offset) {
  auto node = Make(ExprKind::kCast, offset);
  tokens_.ExpectSymbol("(");
  node->operands.push_back(Parse());
  tokens_.ExpectKeyword("AS");
  ParseType(*node);
  tokens_.ExpectSymbol(")");
  return WithChildren(std::move(node));
}

ExprPtr ExpressionParser::ParseConvert(size_t offset) {
  auto node = Make(ExprKind::kCast, offset);
  tokens_.ExpectSymbol("(");
  ParseType(*node);
  tokens_.ExpectSymbol(",");
  node->operands.push_back(Parse());
  if (tokens_.TakeSymbol(",")) node->operands.push_back(Parse());
  tokens_.ExpectSymbol(")");
  return WithChildren(std::move(node));
}

// varchar, varchar(10), decimal(18,4), varchar(max).
void ExpressionParser::ParseType(Expr& cast) {
  cast.type_name = base::AsciiLower(tokens_.ExpectName("类型名"));
  if (!tokens_.TakeSymbol("(")) return;
  if (!tokens_.TakeKeyword("MAX")) {
    if (tokens_.Peek().type != TokenType::kInteger) tokens_.RefuseHere("此处应为类型的长度");
    const auto length = base::ParseInteger(tokens_.Peek().text);
    if (!length || *length < 1 || *length > static_cast<int64_t>(kMaxTypeLength))
      tokens_.RefuseHere("类型的长度应为 1 至 8000");
    cast.type_length = static_cast<size_t>(*length);
    tokens_.Take();
    if (tokens_.TakeSymbol(",")) {
      const auto scale =
          tokens_.Peek().type == TokenType::kInteger ? base::ParseInteger(tokens_.Peek().text) : std::nullopt;
      if (!scale || *scale > kMaxScale) tokens_.RefuseHere("此处应为小数位数");
      cast.type_scale = static_cast<int>(*scale);
      tokens_.Take();
    }
  } else {
    cast.type_length = kUnlimitedLength;
  }
  tokens_.ExpectSymbol(")");
}

}  // namespace stockbook::databases
