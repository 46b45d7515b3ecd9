// SPDX-License-Identifier: MIT
#include "databases/dialect/server_emitter.h"

#include <array>

#include "base/text.h"
#include "databases/dialect/date_words.h"
#include "databases/dialect/like_elements.h"

namespace stockbook::databases {
namespace {

constexpr auto kServerFunctions = std::to_array<FunctionTemplate>({
    {"sb_left", 2, "LEFT($1t, $2n)"},
    {"sb_right", 2, "RIGHT($1t, $2n)"},
    {"sb_mid", 2, "SUBSTRING($1t, $2n, 2147483647)"},
    {"sb_mid", 3, "SUBSTRING($1t, $2n, $3n)"},
    {"sb_len", 1, "CAST(LEN($1t + N'.') - 1 AS bigint)"},
    {"sb_len_server", 1, "CAST(LEN($1t) AS bigint)"},
    {"sb_trim", 1, "LTRIM(RTRIM($1t))"},
    {"sb_ltrim", 1, "LTRIM($1t)"},
    {"sb_rtrim", 1, "RTRIM($1t)"},
    {"sb_ucase", 1, "UPPER($1t)"},
    {"sb_lcase", 1, "LOWER($1t)"},
    {"sb_instr", 2, "CAST(CHARINDEX($2t, $1t) AS bigint)"},
    {"sb_instr", 3, "CAST(CHARINDEX($3t, $2t, $1n) AS bigint)"},
    {"sb_charindex", 2, "CAST(CHARINDEX($1t, $2t) AS bigint)"},
    {"sb_charindex", 3, "CAST(CHARINDEX($1t, $2t, $3n) AS bigint)"},
    {"sb_replace", 3, "REPLACE($1t, $2t, $3t)"},
    {"sb_space", 1, "SPACE($1n)"},
    {"sb_text", 1, "$1t"},
    {"sb_to_date", 1, "$1d"},
    {"sb_to_day", 1, "CAST(CAST($1d AS date) AS datetime2(0))"},
    {"sb_to_integer", 1, "$1i"},
    {"sb_to_integer_server", 1, "CAST(ROUND($1s, 0, 1) AS bigint)"},
    {"sb_to_real", 1, "$1r"},
    {"sb_to_money", 1, "$1m"},
    {"sb_is_numeric", 1, "(CASE WHEN $1r IS NULL THEN 0 ELSE -1 END)"},
    {"sb_is_null", 1, "(CASE WHEN $1t IS NULL THEN -1 ELSE 0 END)"},
    {"sb_abs", 1, "ABS($1s)"},
    {"sb_round_server", 1, "ROUND($1s, 0)"},
    {"sb_round_server", 2, "ROUND($1s, $2n)"},
    {"sb_floor", 1, "FLOOR($1s)"},
    {"sb_fix", 1, "ROUND($1s, 0, 1)"},
    {"sb_ceiling", 1, "CEILING($1s)"},
    {"sb_sign", 1, "CAST(SIGN($1r) AS bigint)"},
    {"sb_sqrt", 1, "(CASE WHEN $1r >= 0 THEN SQRT($1r) END)"},
    {"sb_power", 2, "POWER($1r, $2r)"},
    {"sb_year", 1, "CAST(YEAR($1d) AS bigint)"},
    {"sb_month", 1, "CAST(MONTH($1d) AS bigint)"},
    {"sb_day", 1, "CAST(DAY($1d) AS bigint)"},
    {"sb_hour", 1, "CAST(DATEPART(hour, $1d) AS bigint)"},
    {"sb_minute", 1, "CAST(DATEPART(minute, $1d) AS bigint)"},
    {"sb_second", 1, "CAST(DATEPART(second, $1d) AS bigint)"},
    {"sb_date_serial", 3,
     "DATEADD(day, CAST($3i AS int) - 1, DATEADD(month, CAST($2i AS int) - 1, DATETIME2FROMPARTS(CAST($1i AS int), 1, "
     "1, 0, 0, 0, 0, 0)))"},
    {"sb_now", 0, "CAST(GETDATE() AS datetime2(0))"},
    {"sb_today", 0, "CAST(CAST(GETDATE() AS date) AS datetime2(0))"},
    {"multiply_money", 2, "CAST(CAST($1s AS decimal(19,4)) * CAST($2s AS decimal(19,4)) AS decimal(19,4))"},
    {"add_days", 2, "DATEADD(second, CAST(ROUND($2r * 86400, 0) AS int), $1d)"},
    {"subtract_days", 2, "DATEADD(second, -CAST(ROUND($2r * 86400, 0) AS int), $1d)"},
    {"days_between", 2, "(CAST(DATEDIFF(second, $2d, $1d) AS float) / 86400)"},
    {"date_of_days", 1, "DATEADD(day, CAST(ROUND($1s, 0, 1) AS int), CAST(N'1899-12-30' AS datetime2(0)))"},
    {"days_of_date", 1, "CAST(DATEDIFF(day, CAST(N'1899-12-30' AS datetime2(0)), $1d) AS float)"},
});

constexpr DateWords kServerDateWords = {"yyyy", "MM", "dd", "HH", "mm", "ss"};

}  // namespace

std::string ServerEmitter::Name(std::string_view name) const { return "[" + base::ReplaceAll(name, "]", "]]") + "]"; }

std::string_view ServerEmitter::TypeName(ValueClass cls) const {
  switch (cls) {
    case ValueClass::kInteger:
    case ValueClass::kBoolean:
      return "bigint";
    case ValueClass::kReal:
      return "float";
    case ValueClass::kMoney:
      return "decimal(19,4)";
    case ValueClass::kDate:
      return "datetime2(0)";
    default:
      return "nvarchar(4000)";
  }
}

std::string ServerEmitter::DateLiteral(std::string_view text) const {
  return "CAST(" + TextLiteral(text) + " AS datetime2(0))";
}

std::string ServerEmitter::TextOfReal(const std::string& sql) const { return "FORMAT(" + sql + ", N'G15', N'en-US')"; }

std::string ServerEmitter::TextOfMoney(const std::string& sql) const {
  return "FORMAT(" + sql + ", N'0.####', N'en-US')";
}

std::string ServerEmitter::TextOfDate(const std::string& sql) const {
  const std::string date = "CAST(" + sql + " AS datetime2(0))";
  return "(CASE WHEN CAST(" + date + " AS date) = " + date + " THEN CONVERT(nvarchar(10), " + date +
         ", 23) ELSE CONVERT(nvarchar(19), " + date + ", 120) END)";
}

std::string ServerEmitter::WholeOf(const std::string& sql) const { return "CAST(ROUND(" + sql + ", 0) AS bigint)"; }

std::string ServerEmitter::NumberInText(const std::string& sql) const {
  return "TRY_CAST(NULLIF(LTRIM(" + sql + "), N'') AS float)";
}

std::string ServerEmitter::DateInText(const std::string& sql) const {
  return "TRY_CONVERT(datetime2(0), REPLACE(" + sql + ", N' -', N'-'), 120)";
}

std::string ServerEmitter::SumOf(const AggregateCall& call, const std::string& sql, ValueClass cls) const {
  const std::string function = call.name == "sum" ? "SUM(" : "AVG(";
  const std::string number = cls == ValueClass::kReal ? Cast(sql, cls) : sql;
  const std::string wide = cls == ValueClass::kMoney ? "CAST(" + number + " AS decimal(38,4))" : number;
  return function + (call.distinct ? "DISTINCT " : "") + wide + ")";
}

std::span<const FunctionTemplate> ServerEmitter::Templates() const { return kServerFunctions; }

std::string ServerEmitter::Like(const TypedSql& text, std::string_view pattern, Wildcards wildcards) const {
  const std::string written = BracketPattern(LikeElements(pattern, wildcards));
  return "(" + As(ValueClass::kText, text) + " LIKE " + TextLiteral(written) + ")";
}

std::string ServerEmitter::Format(const TypedSql& value, std::string_view pattern) const {
  std::string engine(pattern);
  if (pattern.find_first_not_of('0') != std::string_view::npos) {
    engine = value.cls == ValueClass::kDate ? EnginePattern(pattern, kServerDateWords) : std::string();
  }
  if (engine.empty()) return {};
  const std::string sql = value.cls == ValueClass::kDate ? value.sql : As(ValueClass::kReal, value);
  return "COALESCE(FORMAT(" + sql + ", " + TextLiteral(engine) + ", N'en-US'), N'')";
}

std::string ServerEmitter::ToText(const TypedSql& value, const TextType& type) const {
  const std::string name = (type.padded ? "nchar(" : "nvarchar(") + std::to_string(type.length) + ")";
  if (value.cls != ValueClass::kDate) return "CAST(" + As(ValueClass::kText, value) + " AS " + name + ")";
  return "CONVERT(" + name + ", " + value.sql + ", " + std::to_string(type.style) + ")";
}

std::string ServerEmitter::OrderedUnion(std::string sql, const std::vector<UnionKey>& keys) const {
  for (const UnionKey& key : keys) {
    sql += &key == &keys.front() ? " ORDER BY " : ", ";
    sql += std::to_string(key.place) + Direction(key.descending);
  }
  return sql;
}

}  // namespace stockbook::databases
