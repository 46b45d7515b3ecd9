// SPDX-License-Identifier: MIT
#include "databases/dialect/text_functions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/text.h"
#include "databases/dialect/format_value.h"
#include "databases/dialect/operators.h"
#include "stockbook/base/money.h"
#include "stockbook/base/substring.h"

namespace stockbook::databases {
namespace {

using base::Value;

// A count of characters: negative numbers count as zero.
std::optional<size_t> CountOf(const Value& value) {
  const auto number = value.AsInteger();
  if (!number) return std::nullopt;
  return static_cast<size_t>(std::max<int64_t>(*number, 0));
}

template <std::string_view (*Cut)(std::string_view, size_t)>
Value CutText(Arguments values) {
  if (AnyNull(values)) return Value();
  const auto count = CountOf(values[1]);
  return count ? Value(std::string(Cut(values[0].Text(), *count))) : Value();
}

// text, first character (from 1), [count].
Value Middle(Arguments values) {
  if (AnyNull(values)) return Value();
  auto first = values[1].AsInteger();
  auto count = values.size() > 2 ? values[2].AsInteger() : std::optional<int64_t>(INT64_MAX);
  if (!first || !count) return Value();
  if (*first < 1) {
    // Positions before the first character count, but have no characters.
    *count = *count == INT64_MAX ? *count : *count - std::min(*count, 1 - std::max(*first, -INT32_MAX - int64_t{1}));
    first = 1;
  }
  const std::string text = values[0].Text();
  return Value(std::string(
      base::MidCharacters(text, static_cast<size_t>(*first), static_cast<size_t>(std::max<int64_t>(*count, 0)))));
}

Value Length(Arguments values) {
  return values[0].IsNull() ? Value() : Value(static_cast<int64_t>(base::CharacterCount(values[0].Text())));
}

std::string_view TrimLeft(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}
std::string_view TrimRight(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

// The server does not count trailing blanks.
Value LengthServer(Arguments values) {
  return values[0].IsNull() ? Value() : Value(static_cast<int64_t>(base::CharacterCount(TrimRight(values[0].Text()))));
}

template <std::string_view (*Cut)(std::string_view)>
Value Trimmed(Arguments values) {
  return values[0].IsNull() ? Value() : Value(std::string(Cut(values[0].Text())));
}

std::string AsciiUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return upper;
}

template <std::string (*Turn)(std::string_view)>
Value Turned(Arguments values) {
  return values[0].IsNull() ? Value() : Value(Turn(values[0].Text()));
}

// Looks for a text: a short one as it comes, and a long one so that no text makes it slow.
class TextSearch {
 public:
  explicit TextSearch(std::string what) : what_(std::move(what)) {
    constexpr size_t kShort = 16;
    if (what_.size() > kShort) steady_.emplace(what_);
  }
  size_t FindIn(const std::string& text, size_t from) const {
    return steady_ ? steady_->FindIn(text, from) : text.find(what_, from);
  }

 private:
  std::string what_;
  std::optional<base::Substring> steady_;
};

// The first character (from 1) at which `what` occurs, from the `start`-th on; 0 when it does not. ASCII case is
// ignored.
Value Position(const Value& start, const Value& text_value, const Value& what_value) {
  if (text_value.IsNull() || what_value.IsNull()) return Value();
  const auto first = start.AsInteger();
  if (!first) return Value();
  const std::string text = base::AsciiLower(text_value.Text());
  const TextSearch what(base::AsciiLower(what_value.Text()));
  const size_t from = base::LeftCharacters(text, static_cast<size_t>(std::max<int64_t>(*first, 1) - 1)).size();
  if (from >= text.size()) return Value(int64_t{0});
  const size_t at = what.FindIn(text, from);
  if (at == std::string::npos) return Value(int64_t{0});
  return Value(static_cast<int64_t>(base::CharacterCount(std::string_view(text).substr(0, at)) + 1));
}

// InStr([start,] text, what)
Value InText(Arguments values) {
  return values.size() > 2 ? Position(values[0], values[1], values[2])
                           : Position(Value(int64_t{1}), values[0], values[1]);
}

// CHARINDEX(what, text[, start])
Value CharIndex(Arguments values) {
  return Position(values.size() > 2 ? values[2] : Value(int64_t{1}), values[1], values[0]);
}

Value Replace(Arguments values) {
  if (AnyNull(values)) return Value();
  const std::string text = values[0].Text();
  const std::string lower = base::AsciiLower(text);
  const std::string what = base::AsciiLower(values[1].Text());
  const std::string by = values[2].Text();
  if (what.empty()) return Value(text);
  const TextSearch wanted(what);
  const size_t most = std::max(kMostTextBytes, text.size());
  std::string result;
  size_t from = 0;
  for (size_t at = wanted.FindIn(lower, 0); at != std::string::npos; at = wanted.FindIn(lower, from)) {
    result.append(text, from, at - from).append(by);
    from = at + what.size();
    if (result.size() > most) ThrowTextTooLong();
  }
  return Value(result.append(text, from));
}

Value Space(Arguments values) {
  constexpr size_t kMost = 8000;
  const auto count = CountOf(values[0]);
  return count ? Value(std::string(std::min(*count, kMost), ' ')) : Value();
}

Value Format(Arguments values) {
  constexpr size_t kLongestPattern = 8000;
  if (values.size() < 2) return Value(values[0].Text());
  if (values[1].Text().size() > kLongestPattern) throw base::ArithmeticError("格式太长：最多 8000 个字节，请缩短。");
  return Value(FormatValue(values[0], values[1].Text()));
}

constexpr std::array<ScalarFunction, 16> kTextFunctions = {{
    {"sb_left", CutText<base::LeftCharacters>, 2},
    {"sb_right", CutText<base::RightCharacters>, 2},
    {"sb_mid", Middle, 2, 3},
    {"sb_len", Length},
    {"sb_len_server", LengthServer},
    {"sb_trim", Trimmed<base::TrimBlanks>},
    {"sb_ltrim", Trimmed<TrimLeft>},
    {"sb_rtrim", Trimmed<TrimRight>},
    {"sb_ucase", Turned<AsciiUpper>},
    {"sb_lcase", Turned<base::AsciiLower>},
    {"sb_instr", InText, 2, 3},
    {"sb_charindex", CharIndex, 2, 3},
    {"sb_replace", Replace, 3},
    {"sb_space", Space},
    {"sb_format", Format, 1, 2},
    {"sb_is_numeric",
     [](Arguments values) { return Value(static_cast<int64_t>(!values[0].IsNull() && values[0].Number() ? -1 : 0)); }},
}};

}  // namespace

std::span<const ScalarFunction> TextFunctions() { return kTextFunctions; }

}  // namespace stockbook::databases
