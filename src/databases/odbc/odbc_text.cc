// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_text.h"

#include <cstdint>

#include "base/text.h"

namespace stockbook::databases {
namespace {

static_assert(sizeof(SQLWCHAR) == 2 || sizeof(SQLWCHAR) == 4, "a driver's wide character is UTF-16 or UTF-32");
constexpr bool kUtf16 = sizeof(SQLWCHAR) == 2;
constexpr uint32_t kReplacementLetter = 0xFFFD;

bool IsHighSurrogate(uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void AppendCodePoint(uint32_t code, std::string& utf8) {
  const auto put = [&](uint32_t byte) { utf8 += static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

}  // namespace

OdbcWideText Widened(std::string_view utf8) {
  const std::string clean = base::CleanUtf8(utf8);
  OdbcWideText wide;
  wide.reserve(clean.size() + 1);
  for (size_t at = 0; at < clean.size();) {
    const auto first = static_cast<unsigned char>(clean[at]);
    const size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    uint32_t code = length == 1 ? first : first & (0xFFU >> (length + 1));
    for (size_t next = 1; next < length; ++next)
      code = code << 6 | (static_cast<unsigned char>(clean[at + next]) & 0x3FU);
    at += length;
    if (kUtf16 && code >= 0x10000) {
      wide.push_back(static_cast<SQLWCHAR>(0xD800 + ((code - 0x10000) >> 10)));
      wide.push_back(static_cast<SQLWCHAR>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
      wide.push_back(static_cast<SQLWCHAR>(code));
    }
  }
  wide.push_back(0);
  return wide;
}

bool AppendUtf8(const SQLWCHAR* text, size_t length, std::string& utf8) {
  bool clean = true;
  for (size_t at = 0; at < length; ++at) {
    uint32_t code = text[at];
    if (code < 0x80 && code != 0) {
      utf8 += static_cast<char>(code);
      continue;
    }
    if (kUtf16 && IsHighSurrogate(code) && at + 1 < length && IsLowSurrogate(text[at + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++at] - 0xDC00U);
    } else if (code == 0 || IsHighSurrogate(code) || IsLowSurrogate(code) || code > 0x10FFFF) {
      code = kReplacementLetter;
      clean = false;
    }
    AppendCodePoint(code, utf8);
  }
  return clean;
}

}  // namespace stockbook::databases
