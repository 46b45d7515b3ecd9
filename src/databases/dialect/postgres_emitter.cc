// SPDX-License-Identifier: MIT
#include "databases/dialect/postgres_emitter.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "databases/dialect/date_words.h"
#include "databases/dialect/like_elements.h"

namespace stockbook::databases {
namespace {

// Whole days since 1899-12-30, the zero date, are what dates are as numbers.
constexpr auto kPostgresFunctions = std::to_array<FunctionTemplate>({
    {"sb_left", 2, "left($1t, greatest($2n, 0))"},
    {"sb_right", 2, "right($1t, greatest($2n, 0))"},
    {"sb_mid", 2, "substring($1t from $2n)"},
    {"sb_mid", 3, "substring($1t from $2n for greatest($3n, 0))"},
    {"sb_len", 1, "CAST(char_length($1t) AS bigint)"},
    {"sb_len_server", 1, "CAST(char_length(rtrim($1t, ' ')) AS bigint)"},
    {"sb_trim", 1, "btrim($1t, ' ')"},
    {"sb_ltrim", 1, "ltrim($1t, ' ')"},
    {"sb_rtrim", 1, "rtrim($1t, ' ')"},
    {"sb_ucase", 1, "upper($1t COLLATE \"C\")"},
    {"sb_lcase", 1, "lower($1t COLLATE \"C\")"},
    {"sb_instr", 2,
     "CAST(CASE WHEN $1t = '' THEN 0 ELSE strpos(lower($1t COLLATE \"C\"), lower($2t COLLATE \"C\")) END AS bigint)"},
    {"sb_charindex", 2,
     "CAST(CASE WHEN $2t = '' THEN 0 ELSE strpos(lower($2t COLLATE \"C\"), lower($1t COLLATE \"C\")) END AS bigint)"},
    {"sb_space", 1, "repeat(' ', least(greatest($1n, 0), 8000))"},
    {"sb_text", 1, "$1t"},
    {"sb_to_date", 1, "$1d"},
    {"sb_to_day", 1, "date_trunc('day', $1d)"},
    {"sb_to_integer", 1, "$1i"},
    {"sb_to_integer_server", 1, "CAST(trunc(CAST($1s AS numeric)) AS bigint)"},
    {"sb_to_real", 1, "$1r"},
    {"sb_to_money", 1, "$1m"},
    {"sb_val", 1,
     "(CASE WHEN $1t IS NOT NULL THEN coalesce(CAST(substring($1t from '^ *[-+]?[0-9]+[.]?[0-9]*') AS double "
     "precision), 0) END)"},
    {"sb_is_numeric", 1, "(CASE WHEN $1r IS NULL THEN 0 ELSE -1 END)"},
    {"sb_is_null", 1, "(CASE WHEN $1t IS NULL THEN -1 ELSE 0 END)"},
    {"sb_abs", 1, "abs($1s)"},
    {"sb_round", 1, "round($1r)"},
    {"sb_round_server", 1, "CAST(round(CAST($1s AS numeric)) AS double precision)"},
    {"sb_round_server", 2, "CAST(round(CAST($1s AS numeric), $2n) AS double precision)"},
    {"sb_floor", 1, "floor($1s)"},
    {"sb_fix", 1, "trunc($1s)"},
    {"sb_ceiling", 1, "ceiling($1s)"},
    {"sb_sign", 1, "CAST(sign($1r) AS bigint)"},
    {"sb_sqrt", 1, "(CASE WHEN $1r >= 0 THEN sqrt($1r) END)"},
    {"sb_power", 2, "power($1r, $2r)"},
    {"sb_year", 1, "CAST(date_part('year', $1d) AS bigint)"},
    {"sb_month", 1, "CAST(date_part('month', $1d) AS bigint)"},
    {"sb_day", 1, "CAST(date_part('day', $1d) AS bigint)"},
    {"sb_hour", 1, "CAST(date_part('hour', $1d) AS bigint)"},
    {"sb_minute", 1, "CAST(date_part('minute', $1d) AS bigint)"},
    {"sb_second", 1, "CAST(floor(date_part('second', $1d)) AS bigint)"},
    {"sb_date_serial", 3,
     "(make_timestamp(CAST($1i AS int), 1, 1, 0, 0, 0) + ($2i - 1) * interval '1 month' + ($3i - 1) * interval '1 "
     "day')"},
    {"sb_now", 0, "date_trunc('second', CAST(now() AS timestamp))"},
    {"sb_today", 0, "CAST(CAST(now() AS date) AS timestamp)"},
    // Half to even, as money is rounded everywhere: the server's round() goes away from zero.
    {"multiply_money", 2,
     "CAST(CASE WHEN mod(abs(CAST($1s AS numeric) * CAST($2s AS numeric) * 10000), 1) = 0.5 THEN round(CAST($1s AS "
     "numeric) * CAST($2s AS numeric) * 5000) * 2 / 10000 ELSE round(CAST($1s AS numeric) * CAST($2s AS numeric), 4) "
     "END AS numeric(19,4))"},
    {"add_days", 2, "($1d + $2r * interval '1 day')"},
    {"subtract_days", 2, "($1d - $2r * interval '1 day')"},
    {"days_between", 2, "CAST(date_part('epoch', $1d - $2d) / 86400 AS double precision)"},
    {"date_of_days", 1, "(TIMESTAMP '1899-12-30' + CAST($1s AS double precision) * interval '1 day')"},
    {"days_of_date", 1, "CAST(date_part('epoch', $1d - TIMESTAMP '1899-12-30') / 86400 AS double precision)"},
});

// What spells a number, as POSIX regular expressions have it.
constexpr std::string_view kNumberPattern = "'^ *[-+]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][-+]?[0-9]{1,2})? *$'";
constexpr std::string_view kDatePattern =
    "'^ *[0-9]{4}[-/](0?[1-9]|1[0-2])[-/](0?[1-9]|[12][0-9]|3[01])( [0-9]{1,2}:[0-9]{2}(:[0-9]{2})?)? *$'";

constexpr DateWords kPostgresDateWords = {"YYYY", "MM", "DD", "HH24", "MI", "SS"};

}  // namespace

std::string_view PostgresEmitter::TypeName(ValueClass cls) const {
  switch (cls) {
    case ValueClass::kInteger:
    case ValueClass::kBoolean:
      return "bigint";
    case ValueClass::kReal:
      return "double precision";
    case ValueClass::kMoney:
      return "numeric(19,4)";
    case ValueClass::kDate:
      return "timestamp";
    default:
      return "text";
  }
}

std::string PostgresEmitter::DateLiteral(std::string_view text) const { return "TIMESTAMP " + QuotedText(text); }

// A numeric of a double has the fifteen digits that it shows.
std::string PostgresEmitter::TextOfReal(const std::string& sql) const {
  return "CAST(CAST(" + sql + " AS numeric) AS text)";
}

std::string PostgresEmitter::TextOfMoney(const std::string& sql) const {
  return "rtrim(rtrim(CAST(CAST(" + sql + " AS numeric(19,4)) AS text), '0'), '.')";
}

std::string PostgresEmitter::TextOfDate(const std::string& sql) const {
  const std::string time = "CAST(" + sql + " AS timestamp)";
  return "(CASE WHEN " + time + " = date_trunc('day', " + time + ") THEN to_char(" + time +
         ", 'YYYY-MM-DD') ELSE to_char(" + time + ", 'YYYY-MM-DD HH24:MI:SS') END)";
}

std::string PostgresEmitter::NumberInText(const std::string& sql) const {
  return "(CASE WHEN " + sql + " ~ " + std::string(kNumberPattern) + " THEN CAST(" + sql + " AS double precision) END)";
}

std::string PostgresEmitter::DateInText(const std::string& sql) const {
  const std::string tight = "replace(" + sql + ", ' -', '-')";
  return "(CASE WHEN " + tight + " ~ " + std::string(kDatePattern) + " THEN CAST(" + tight + " AS timestamp) END)";
}

std::string PostgresEmitter::Folded(const TypedSql& text) const {
  if (text.constant) return TextLiteral(base::AsciiLower(text.constant->Text()));
  return "lower(" + As(ValueClass::kText, text) + " COLLATE \"C\")";
}

std::string PostgresEmitter::SumOf(const AggregateCall& call, const std::string& sql, ValueClass cls) const {
  const std::string name(call.name);
  const std::string distinct = call.distinct ? "DISTINCT " : "";
  // Doubles are summed as the decimals that they show, in whatever order they come.
  if (cls == ValueClass::kMoney) return name + "(" + distinct + "CAST(" + sql + " AS numeric))";
  return Cast(name + "(" + distinct + "CAST(" + sql + " AS numeric))", cls);
}

std::span<const FunctionTemplate> PostgresEmitter::Templates() const { return kPostgresFunctions; }

std::string PostgresEmitter::Like(const TypedSql& text, std::string_view pattern, Wildcards wildcards) const {
  const std::string lower = "lower(" + As(ValueClass::kText, text) + " COLLATE \"C\")";
  const auto elements = LikeElements(base::AsciiLower(pattern), wildcards);
  const bool simple = std::all_of(elements.begin(), elements.end(),
                                  [](const LikeElement& element) { return element.kind != LikeElement::Kind::kClass; });
  if (simple) return "(" + lower + " LIKE " + TextLiteral(SimplePattern(elements)) + ")";
  return "(" + lower + " ~ " + TextLiteral(RegularExpression(elements)) + ")";
}

std::string PostgresEmitter::Format(const TypedSql& value, std::string_view pattern) const {
  if (pattern.find_first_not_of('0') == std::string_view::npos) {
    const std::string digits = "CAST(CAST(round(abs(" + As(ValueClass::kReal, value) + ")) AS bigint) AS text)";
    const std::string length = std::to_string(pattern.size());
    const std::string sign = "CASE WHEN " + As(ValueClass::kReal, value) + " <= -0.5 THEN '-' ELSE '' END";
    return "coalesce(" + sign + " || CASE WHEN char_length(" + digits + ") >= " + length + " THEN " + digits +
           " ELSE lpad(" + digits + ", " + length + ", '0') END, '')";
  }
  const std::string engine = EnginePattern(pattern, kPostgresDateWords);
  if (engine.empty() || value.cls != ValueClass::kDate) return {};
  return "coalesce(to_char(" + value.sql + ", " + TextLiteral(engine) + "), '')";
}

std::string PostgresEmitter::ToText(const TypedSql& value, const TextType& type) const {
  const std::string_view pattern = DesktopPatternOfStyle(type.style);
  std::string text;
  if (value.cls != ValueClass::kDate) {
    text = As(ValueClass::kText, value);
  } else if (!pattern.empty()) {
    text = "to_char(" + value.sql + ", " + TextLiteral(EnginePattern(pattern, kPostgresDateWords)) + ")";
  } else {
    return {};
  }
  const std::string length = std::to_string(type.length);
  return (type.padded ? "rpad(" : "left(") + text + ", " + length + ")";
}

std::string PostgresEmitter::OrderKey(const TypedSql& key, size_t) const {
  const bool text = key.cls == ValueClass::kText || key.cls == ValueClass::kAny;
  return text ? ByBytes(As(ValueClass::kText, key)) : key.sql;
}

const char* PostgresEmitter::Direction(bool descending) const {
  return descending ? " DESC NULLS LAST" : " NULLS FIRST";
}

std::string PostgresEmitter::OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const {
  std::string order;
  for (const UnionKey& key : keys) {
    const std::string column = "u.c" + std::to_string(key.place - 1);
    const bool text = key.cls == ValueClass::kText || key.cls == ValueClass::kAny;
    order.append(order.empty() ? " ORDER BY " : ", ").append(text ? ByBytes(column) : column);
    order += Direction(key.descending);
  }
  return "SELECT u.* FROM (" + std::move(sql) + ") AS u" + order;
}

}  // namespace stockbook::databases
