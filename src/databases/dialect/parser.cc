// SPDX-License-Identifier: MIT
#include "databases/dialect/parser.h"

#include "base/number.h"
#include "databases/dialect/expression_parser.h"
#include "databases/dialect/lexer.h"
#include "databases/dialect/refusal.h"
#include "databases/dialect/token_stream.h"

namespace stockbook::databases {
namespace {

class StatementParser {
 public:
  StatementParser(std::string_view statement, Dialect dialect)
      : dialect_(dialect),
        tokens_(Tokenize(statement, dialect)),
        expressions_(tokens_, dialect, nesting_, [this] { return ParseQuery(); }) {}

  Query Run() {
    if (!tokens_.AtKeyword("SELECT") && !tokens_.AtSymbol("(")) {
      tokens_.RefuseHere("连接是只读的，每次只执行一条 SELECT 语句");
    }
    auto query = ParseQuery();
    while (tokens_.TakeSymbol(";")) {
      if (!tokens_.AtEnd()) tokens_.RefuseHere("每次只执行一条语句");
    }
    if (!tokens_.AtEnd()) tokens_.RefuseHere(expected_after_source_);
    return std::move(*query);
  }

 private:
  std::unique_ptr<Query> ParseQuery() {
    const NestingGuard guard(nesting_, tokens_.offset());
    auto query = std::make_unique<Query>();
    query->arms.push_back(ParseArm());
    while (tokens_.TakeKeyword("UNION")) {
      query->union_all.push_back(tokens_.TakeKeyword("ALL"));
      query->arms.push_back(ParseArm());
    }
    if (tokens_.TakeKeyword("ORDER")) {
      tokens_.ExpectKeyword("BY");
      do {
        OrderItem item;
        item.expr = expressions_.Parse();
        item.descending = tokens_.TakeKeyword("DESC");
        if (!item.descending) tokens_.TakeKeyword("ASC");
        query->order.push_back(std::move(item));
      } while (tokens_.TakeSymbol(","));
    }
    return query;
  }

  // A SELECT, or a whole query in parentheses, which then is read as SELECT * FROM it.
  SelectCore ParseArm() {
    if (!tokens_.AtSymbol("(")) return ParseSelect();
    SelectCore core;
    core.offset = tokens_.Take().offset;
    auto source = std::make_unique<TableRef>();
    source->offset = core.offset;
    source->query = ParseQuery();
    tokens_.ExpectSymbol(")");
    core.from.push_back(std::move(source));
    core.items.emplace_back().offset = core.offset;
    return core;
  }

  SelectCore ParseSelect() {
    SelectCore core;
    core.offset = tokens_.offset();
    tokens_.ExpectKeyword("SELECT");
    if (tokens_.TakeKeyword("DISTINCT")) {
      core.distinct = true;
    } else {
      tokens_.TakeKeyword("ALL");
    }
    if (tokens_.TakeKeyword("TOP")) core.top = ParseTop();
    do {
      core.items.push_back(ParseItem());
    } while (tokens_.TakeSymbol(","));
    if (tokens_.TakeKeyword("FROM")) {
      do {
        core.from.push_back(ParseJoins());
      } while (tokens_.TakeSymbol(","));
    }
    if (tokens_.TakeKeyword("WHERE")) core.where = expressions_.Parse();
    if (tokens_.TakeKeyword("GROUP")) {
      tokens_.ExpectKeyword("BY");
      do {
        core.group_by.push_back(expressions_.Parse());
      } while (tokens_.TakeSymbol(","));
    }
    if (tokens_.TakeKeyword("HAVING")) core.having = expressions_.Parse();
    return core;
  }

  uint64_t ParseTop() {
    const bool parenthesis = dialect_ == Dialect::kServer && tokens_.TakeSymbol("(");
    const auto count =
        tokens_.Peek().type == TokenType::kInteger ? base::ParseInteger(tokens_.Peek().text) : std::nullopt;
    if (!count) tokens_.RefuseHere("TOP 之后应为行数");
    tokens_.Take();
    if (parenthesis) tokens_.ExpectSymbol(")");
    if (tokens_.AtKeyword("PERCENT")) tokens_.RefuseHere("不支持 TOP … PERCENT");
    return static_cast<uint64_t>(*count);
  }

  SelectItem ParseItem() {
    SelectItem item;
    item.offset = tokens_.offset();
    if (tokens_.TakeSymbol("*")) return item;
    if (tokens_.AtName() && tokens_.AtSymbol(".", 1) && tokens_.AtSymbol("*", 2)) {
      item.all_of = tokens_.Take().text;
      tokens_.Take();
      tokens_.Take();
      return item;
    }
    item.expr = expressions_.Parse();
    if (tokens_.TakeKeyword("AS")) {
      item.alias = tokens_.Peek().type == TokenType::kText && dialect_ == Dialect::kServer
                       ? tokens_.Take().text
                       : tokens_.ExpectName("字段的别名");
    } else if (tokens_.AtName()) {
      item.alias = tokens_.Take().text;
    }
    return item;
  }

  std::unique_ptr<TableRef> ParseJoins() {
    const NestingGuard guard(nesting_, tokens_.offset());
    auto left = ParseSource();
    while (auto join = TakeJoin()) {
      if (++joins_ > kMaxJoins) throw Refusal(tokens_.offset(), "联接的表过多");
      auto node = std::make_unique<TableRef>();
      node->offset = tokens_.offset();
      node->join = *join;
      node->left = std::move(left);
      node->right = ParseSource();
      if (!cross_) {
        if (!tokens_.AtKeyword("ON")) tokens_.RefuseHere("联接缺少 ON 条件");
        tokens_.Take();
        node->on = expressions_.Parse();
      }
      left = std::move(node);
    }
    return left;
  }

  std::optional<JoinType> TakeJoin() {
    cross_ = false;
    if (tokens_.TakeKeyword("JOIN")) return JoinType::kInner;
    if (tokens_.TakeKeyword("INNER")) {
      tokens_.ExpectKeyword("JOIN");
      return JoinType::kInner;
    }
    if (tokens_.AtKeyword("CROSS") && dialect_ == Dialect::kServer) {
      tokens_.Take();
      tokens_.ExpectKeyword("JOIN");
      cross_ = true;
      return JoinType::kInner;
    }
    if (tokens_.AtKeyword("FULL") || tokens_.AtKeyword("CROSS")) tokens_.RefuseHere("只支持 INNER、LEFT 和 RIGHT JOIN");
    if (!tokens_.AtKeyword("LEFT") && !tokens_.AtKeyword("RIGHT")) return std::nullopt;
    const JoinType type = tokens_.AtKeyword("LEFT") ? JoinType::kLeft : JoinType::kRight;
    tokens_.Take();
    tokens_.TakeKeyword("OUTER");
    tokens_.ExpectKeyword("JOIN");
    return type;
  }

  std::unique_ptr<TableRef> ParseSource() {
    const NestingGuard guard(nesting_, tokens_.offset());
    auto source = std::make_unique<TableRef>();
    source->offset = tokens_.offset();
    if (tokens_.TakeSymbol("(")) {
      if (!tokens_.AtKeyword("SELECT")) {
        auto joins = ParseJoins();
        tokens_.ExpectSymbol(")");
        return joins;
      }
      source->query = ParseQuery();
      tokens_.ExpectSymbol(")");
    } else {
      source->name = tokens_.ExpectName("表名");
      while (tokens_.TakeSymbol(".")) source->name = tokens_.ExpectName("表名");
    }
    if (tokens_.TakeKeyword("AS")) {
      source->alias = tokens_.ExpectName("表的别名");
    } else if (tokens_.AtName()) {
      source->alias = tokens_.Take().text;
    }
    return source;
  }

  static constexpr const char* expected_after_source_ = "此处应为 WHERE、GROUP BY、ORDER BY、UNION 或语句的结尾";

  static constexpr int kMaxJoins = 200;  // of one statement, so that the tree of joins stays shallow

  Dialect dialect_;
  int nesting_ = 0;
  int joins_ = 0;
  bool cross_ = false;
  TokenStream tokens_;
  ExpressionParser expressions_;
};

}  // namespace

Query ParseStatement(std::string_view statement, Dialect dialect) { return StatementParser(statement, dialect).Run(); }

}  // namespace stockbook::databases
