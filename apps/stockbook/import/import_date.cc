// SPDX-License-Identifier: MIT
#include "stockbook/import/import_date.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/digits.h"
#include "base/text.h"
#include "stockbook/import/import_number.h"

namespace stockbook::app {
namespace {

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;

// Reads up to `most` digits; -1 if there is none.
int TakeDateDigits(std::string_view& text, size_t most) {
  size_t count = 0;
  int number = 0;
  while (count < std::min(most, text.size()) && base::IsDigit(text[count]))
    number = number * 10 + (text[count++] - '0');
  text.remove_prefix(count);
  return count == 0 ? -1 : number;
}

bool TakeWord(std::string_view& text, std::string_view word) {
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

// Year, month and day with their marks; false if the text does not begin with them.
bool TakeDay(std::string_view& text, base::DateParts& parts) {
  const auto digits = static_cast<size_t>(std::find_if_not(text.begin(), text.end(), base::IsDigit) - text.begin());
  const bool packed = digits == 8 || digits == 14;
  parts.year = TakeDateDigits(text, 4);
  if (digits < 4 || (digits > 4 && !packed)) return false;
  if (packed) {
    parts.month = TakeDateDigits(text, 2);
    parts.day = TakeDateDigits(text, 2);
    return true;
  }
  text = TrimWideBlanks(text);
  constexpr std::array<std::array<std::string_view, 3>, 4> kMarks{
      {{"-", "-", ""}, {"/", "/", ""}, {".", ".", ""}, {"年", "月", "日"}}};
  for (const auto& marks : kMarks) {
    if (!TakeWord(text, marks[0])) continue;
    text = TrimWideBlanks(text);
    parts.month = TakeDateDigits(text, 2);
    text = TrimWideBlanks(text);
    if (!TakeWord(text, marks[1])) return false;
    text = TrimWideBlanks(text);
    parts.day = TakeDateDigits(text, 2);
    text = TrimWideBlanks(text);
    if (!TakeWord(text, marks[2])) TakeWord(text, "号");
    return parts.month >= 0 && parts.day >= 0;
  }
  return false;
}

// The time behind a day: nothing, 8:26, 8:26:00.5, 8时26分, 082600; false for anything else.
bool TakeTime(std::string_view text, base::DateParts& parts) {
  TakeWord(text, "T");
  text = TrimWideBlanks(text);
  if (text.empty()) return true;
  const bool afternoon = TakeWord(text, "下午");
  if (!afternoon) TakeWord(text, "上午");
  text = TrimWideBlanks(text);
  parts.hour = TakeDateDigits(text, 2);
  if (afternoon && parts.hour >= 0 && parts.hour < 12) parts.hour += 12;
  if (!TakeWord(text, ":") && !TakeWord(text, "时") && !TakeWord(text, "点") && text.size() != 2 && text.size() != 4)
    return false;
  parts.minute = TakeDateDigits(text, 2);
  TakeWord(text, "分");
  const bool has_second = TakeWord(text, ":") || (!text.empty() && base::IsDigit(text.front()));
  if (has_second) parts.second = TakeDateDigits(text, 2);
  TakeWord(text, "秒");
  if (has_second && TakeWord(text, ".")) TakeDateDigits(text, 9);
  TakeWord(text, "Z");
  return text.empty() && parts.hour >= 0 && parts.minute >= 0 && parts.second >= 0;
}

std::string InQuotes(std::string_view text) {
  constexpr size_t kMost = 40;
  const std::string_view front = base::LeftCharacters(text, kMost);
  return std::string(front) + (front.size() < text.size() ? "..." : "");
}

bool LooksLikeDayFirst(std::string_view text) {
  const int first = TakeDateDigits(text, 2);
  return first >= 0 && !text.empty() && (text.front() == '/' || text.front() == '-' || text.front() == '.');
}

int DaysOf(int year, int month) {
  for (int day = 31; day > 28; --day) {
    if (base::Date::FromParts({year, month, day, 0, 0, 0})) return day;
  }
  return 28;
}

ImportSentence NoSuchDay(const std::string& text, const base::DateParts& parts) {
  if (parts.month < 1 || parts.month > 12 || parts.day < 1)
    return {"the date '" + text + "' does not exist: there is no such month or day",
            "日期“" + text + "”不存在：没有这样的月或日"};
  const std::string days = std::to_string(DaysOf(parts.year, parts.month));
  if (parts.day <= DaysOf(parts.year, parts.month))
    return {"the date '" + text + "' has a time that does not exist", "日期“" + text + "”中的时间不存在"};
  return {"the date '" + text + "' does not exist: that month has only " + days + " days",
          "日期“" + text + "”不存在：" + std::to_string(parts.year) + "年" + std::to_string(parts.month) + "月只有 " +
              days + " 天"};
}

ImportSentence NoDate(std::string_view given) {
  const std::string text = InQuotes(given);
  if (given.empty()) return {"the date is empty", "没有日期"};
  if (LooksLikeDayFirst(given)) {
    return {"the date '" + text + "' may be read in two ways; write it with the year first: yyyy-MM-dd",
            "日期“" + text + "”有两种读法，请把年份写在前面，如 2025-02-09"};
  }
  return {"the date '" + text + "' is none of the years 1900 to 2199, written yyyy-MM-dd or yyyy-MM-dd HH:mm:ss",
          "日期“" + text + "”无法识别，应为 1900 至 2199 年的日期，如 2025-02-09"};
}

}  // namespace

std::optional<base::Date> ReadImportDate(std::string_view text, ImportSentence& why) {
  std::optional<base::Date> date = base::Date::Parse(text);
  if (!date) {
    const std::string narrow = NarrowText(text);
    std::string_view rest = TrimWideBlanks(narrow);
    base::DateParts parts;
    if (!TakeDay(rest, parts) || !TakeTime(rest, parts)) {
      why = NoDate(TrimWideBlanks(text));
      return std::nullopt;
    }
    date = base::Date::FromParts(parts);
    if (!date && parts.year >= kFirstYear && parts.year <= kLastYear) {
      why = NoSuchDay(InQuotes(text), parts);
      return std::nullopt;
    }
  }
  const int year = date ? date->parts().year : 0;
  if (year >= kFirstYear && year <= kLastYear) return date;
  why = NoDate(TrimWideBlanks(text));
  return std::nullopt;
}

}  // namespace stockbook::app
