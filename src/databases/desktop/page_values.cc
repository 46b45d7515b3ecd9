// SPDX-License-Identifier: MIT
#include "databases/desktop/page_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "stockbook/base/date.h"
#include "stockbook/base/money.h"

namespace stockbook::databases {
namespace {

constexpr uint32_t kReplacement = 0xFFFD;

void AppendCodePoint(std::string& text, uint32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xF0 | (code >> 18));
    text += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

bool IsFirstHalf(uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsSecondHalf(uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

uint16_t WordAt(std::string_view bytes, size_t at) {
  return static_cast<uint16_t>(static_cast<uint8_t>(bytes[at]) | static_cast<uint8_t>(bytes[at + 1]) << 8);
}

uint32_t LongAt(std::string_view bytes, size_t at) {
  return WordAt(bytes, at) | static_cast<uint32_t>(WordAt(bytes, at + 2)) << 16;
}

uint64_t QuadAt(std::string_view bytes, size_t at) {
  return LongAt(bytes, at) | static_cast<uint64_t>(LongAt(bytes, at + 4)) << 32;
}

double DoubleAt(std::string_view bytes, size_t at) {
  const uint64_t bits = QuadAt(bytes, at);
  double number = 0;
  std::memcpy(&number, &bits, sizeof number);
  return number;
}

std::string WideText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (size_t at = 0; at < bytes.size(); at += 2) {
    if (at + 1 == bytes.size()) {
      AppendCodePoint(text, kReplacement);
      break;
    }
    const uint32_t unit = WordAt(bytes, at);
    if (IsFirstHalf(unit) && at + 3 < bytes.size() && IsSecondHalf(WordAt(bytes, at + 2))) {
      AppendCodePoint(text, 0x10000 + ((unit - 0xD800) << 10) + (WordAt(bytes, at + 2) - 0xDC00U));
      at += 2;
    } else {
      AppendCodePoint(text, IsFirstHalf(unit) || IsSecondHalf(unit) ? kReplacement : unit);
    }
  }
  return text;
}

std::string CompressibleText(std::string_view bytes) {
  if (!bytes.starts_with("\xFF\xFE")) return WideText(bytes);
  // A zero byte switches between characters of one byte and of two.
  std::string wide;
  bool narrow = true;
  for (size_t at = 2; at < bytes.size();) {
    if (bytes[at] == 0) {
      narrow = !narrow;
      ++at;
    } else if (narrow) {
      wide.append(1, bytes[at++]).append(1, '\0');
    } else {
      wide.append(bytes.substr(at, 2));
      at += 2;
    }
  }
  return WideText(wide);
}

std::string MoneyText(int64_t units) { return base::Money::FromUnits(units).Text(); }

std::string DecimalText(std::string_view bytes, int scale) {
  __extension__ using Wide = unsigned __int128;
  Wide number = 0;
  for (size_t word = 0; word < 4; ++word) number = number << 32 | LongAt(bytes, 1 + word * 4);
  std::string digits;
  for (; number != 0 || digits.size() <= static_cast<size_t>(scale); number /= 10) {
    digits += static_cast<char>('0' + static_cast<int>(number % 10));
  }
  std::reverse(digits.begin(), digits.end());
  if (scale > 0) digits.insert(digits.size() - static_cast<size_t>(scale), ".");
  const bool negative = (static_cast<uint8_t>(bytes[0]) & 0x80) != 0;
  return negative ? "-" + digits : digits;
}

std::string DayText(double days) {
  // The years 100 to 9999.
  if (!(days > -657435.0 && days < 2958466.0)) return {};
  // Before the zero date the fraction counts forwards all the same.
  const double whole = std::trunc(days);
  const auto seconds = static_cast<int64_t>(std::llround(std::fabs(days - whole) * base::Date::kSecondsPerDay));
  return base::Date::FromSeconds(static_cast<int64_t>(whole) * base::Date::kSecondsPerDay + seconds).Text();
}

std::string UniqueNumberText(std::string_view bytes) {
  std::array<char, 40> text{};
  const auto byte = [&](size_t at) { return static_cast<unsigned>(static_cast<uint8_t>(bytes[at])); };
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", LongAt(bytes, 0),
                static_cast<unsigned>(WordAt(bytes, 4)), static_cast<unsigned>(WordAt(bytes, 6)), byte(8), byte(9),
                byte(10), byte(11), byte(12), byte(13), byte(14), byte(15));
  return text.data();
}

double FromSingle(float number) {
  std::array<char, 32> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  double result = number;
  std::from_chars(digits.data(), written.ptr, result);
  return result;
}

}  // namespace stockbook::databases
