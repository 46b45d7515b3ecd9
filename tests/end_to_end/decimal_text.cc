// SPDX-License-Identifier: MIT
#include "end_to_end/decimal_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <regex>

namespace stockbook::end_to_end {
namespace {

constexpr int kMoneyDecimals = 4;

// 0.digits x 10^point
struct Digits {
  bool negative = false;
  std::string digits;
  int point = 0;
};

std::optional<Digits> Split(std::string_view text) {
  static const std::regex number(R"( *([+-]?)(\d(?:,?\d)*)?(?:\.(\d*))?(?:[eE]([+-]?\d{1,4}))? *)");
  std::cmatch match;
  if (text.size() > 400 || !std::regex_match(text.data(), text.data() + text.size(), match, number))
    return std::nullopt;
  if (match[2].length() + match[3].length() == 0) return std::nullopt;
  std::string whole = match[2].str();
  std::erase(whole, ',');
  Digits split{match[1] == "-", whole + match[3].str(), static_cast<int>(whole.size())};
  if (match[4].matched) split.point += std::stoi(match[4].str());
  const size_t zeros = std::min(split.digits.find_first_not_of('0'), split.digits.size());
  split.digits.erase(0, zeros);
  split.point -= static_cast<int>(zeros);
  if (split.digits.empty()) split.point = 0;
  return split;
}

enum class Half { kToEven, kAway };

// The digits of the number times 10^decimals as a whole number, at least "0".
std::string Whole(const Digits& number, int decimals, Half half) {
  const int kept = number.point + decimals;
  if (kept < 0 || number.digits.empty()) return "0";
  const auto count = static_cast<size_t>(kept);
  std::string whole = "0" + number.digits.substr(0, count);
  whole.resize(count + 1, '0');
  const std::string rest = count < number.digits.size() ? number.digits.substr(count) : "0";
  const bool odd = (whole.back() - '0') % 2 != 0;
  const bool more = rest.find_first_not_of('0', 1) != std::string::npos;
  const bool up = rest[0] > '5' || (rest[0] == '5' && (more || odd || half == Half::kAway));
  if (up) {
    size_t at = whole.size() - 1;
    for (; whole[at] == '9'; --at) whole[at] = '0';
    ++whole[at];
  }
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
  return whole;
}

std::string Grouped(const std::string& whole) {
  std::string grouped;
  for (size_t at = 0; at < whole.size(); ++at) {
    if (at > 0 && (whole.size() - at) % 3 == 0) grouped += ',';
    grouped += whole[at];
  }
  return grouped;
}

// With two decimals, half away from zero.
std::string TwoDecimals(const Digits& number, bool grouped) {
  std::string whole = Whole(number, 2, Half::kAway);
  const bool zero = whole == "0";
  whole.insert(0, whole.size() < 3 ? 3 - whole.size() : 0, '0');
  const std::string units = whole.substr(0, whole.size() - 2);
  return (number.negative && !zero ? "-" : "") + (grouped ? Grouped(units) : units) + "." +
         whole.substr(whole.size() - 2);
}

// Of a text that spells a number; infinite beyond the range of doubles.
double NearestDouble(std::string_view text) {
  std::string plain(text);
  std::erase(plain, ',');
  return std::strtod(plain.c_str(), nullptr);
}

}  // namespace

const Amount kBeyondMoney = Amount{1000000000000000} * 1000000000000000;

std::optional<Amount> AmountOf(std::string_view text) {
  const auto number = Split(text);
  if (!number) return std::nullopt;
  const std::string whole = Whole(*number, kMoneyDecimals, Half::kToEven);
  if (!std::isfinite(NearestDouble(text))) return std::nullopt;  // beyond every number
  if (whole.size() > 30) return number->negative ? -kBeyondMoney : kBeyondMoney;
  Amount amount = 0;
  for (const char digit : whole) amount = amount * 10 + (digit - '0');
  return number->negative ? -amount : amount;
}

std::string AmountText(Amount amount) {
  std::string digits;
  for (Amount rest = amount < 0 ? -amount : amount; rest != 0; rest /= 10)
    digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
  if (digits.size() < 5) digits.insert(0, 5 - digits.size(), '0');
  digits.insert(digits.size() - kMoneyDecimals, ".");
  digits.erase(digits.find_last_not_of('0') + 1);
  if (digits.back() == '.') digits.pop_back();
  return (amount < 0 ? "-" : "") + digits;
}

bool FitsMoney(Amount amount) {
  return amount >= std::numeric_limits<int64_t>::min() && amount <= std::numeric_limits<int64_t>::max();
}

double AsDouble(Amount amount) { return static_cast<double>(amount) / 10000.0; }

std::string NumberText(double number) {
  if (!std::isfinite(number)) return {};
  char scientific[40];
  std::snprintf(scientific, sizeof scientific, "%.14e", number);
  Digits digits = *Split(scientific);
  digits.digits.erase(digits.digits.find_last_not_of('0') + 1);
  if (digits.digits.empty()) return "0";
  const int count = static_cast<int>(digits.digits.size());
  const int exponent = digits.point - 1;
  const std::string sign = digits.negative ? "-" : "";
  if (exponent >= 15 || count - digits.point > 15) {
    char power[16];
    std::snprintf(power, sizeof power, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
    return sign + digits.digits.substr(0, 1) + (count > 1 ? "." + digits.digits.substr(1) : "") + power;
  }
  if (digits.point <= 0) return sign + "0." + std::string(static_cast<size_t>(-digits.point), '0') + digits.digits;
  const auto whole = static_cast<size_t>(digits.point);
  if (digits.digits.size() <= whole) return sign + digits.digits + std::string(whole - digits.digits.size(), '0');
  return sign + digits.digits.substr(0, whole) + "." + digits.digits.substr(whole);
}

// Beyond the numbers are also those that are nearer to zero than any but zero.
std::optional<double> NumberOf(std::string_view text) {
  const auto digits = Split(text);
  if (!digits) return std::nullopt;
  const double number = NearestDouble(text);
  const bool vanished = number == 0 && !digits->digits.empty();
  return std::isfinite(number) && !vanished ? std::optional(number) : std::nullopt;
}

std::string Shown(std::string_view text, std::string_view format) {
  if (format == "yyyy-MM-dd") {
    const std::string date = DateText(text);
    return date.empty() ? std::string(text) : date.substr(0, 10);
  }
  auto number = format.empty() ? std::nullopt : Split(text);
  if (!number || !NumberOf(text)) return std::string(text);
  if (format == "#,##0.00") return TwoDecimals(*number, true);
  if (!number->digits.empty()) number->point += 2;
  return TwoDecimals(*number, false) + "%";
}

std::string DateText(std::string_view stored) {
  static const std::regex date(
      R"( *(\d{4})([-/])(\d{1,2})\2(\d{1,2})(?:[ T](\d{1,2}):(\d{1,2})(?::(\d{1,2})(?:\.\d+)?)?)? *)");
  std::cmatch match;
  if (!std::regex_match(stored.data(), stored.data() + stored.size(), match, date)) return {};
  const auto part = [&](size_t group) { return match[group].matched ? std::stoi(match[group]) : 0; };
  const int year = part(1);
  const int month = part(3);
  const int day = part(4);
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  const int days[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > days[month - 1]) return {};
  if (part(5) > 23 || part(6) > 59 || part(7) > 59) return {};
  char text[40];
  const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
  if (part(5) + part(6) + part(7) != 0)
    std::snprintf(text + length, sizeof text - static_cast<size_t>(length), " %02d:%02d:%02d", part(5), part(6),
                  part(7));
  return text;
}

}  // namespace stockbook::end_to_end
