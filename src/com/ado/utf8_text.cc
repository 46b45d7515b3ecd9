// SPDX-License-Identifier: MIT
#include "com/ado/utf8_text.h"

#include <cstddef>
#include <cstdint>

namespace stockbook::com {
namespace {

constexpr uint32_t kReplacementCode = 0xFFFD;

bool IsLeading(uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsTrailing(uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Writes one code point and returns the place after it.
char* PutCode(uint32_t code, char* out) {
  const auto put = [&out](uint32_t byte) { *out++ = static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else {
    if (code < 0x10000) {
      put(0xE0 | code >> 12);
    } else {
      put(0xF0 | code >> 18);
      put(0x80 | (code >> 12 & 0x3F));
    }
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
  return out;
}

}  // namespace

void AppendCleanUtf8(std::wstring_view wide, std::string& utf8) {
  constexpr size_t kMostBytesOfUnit = 3;
  const size_t begin = utf8.size();
  utf8.resize(begin + wide.size() * kMostBytesOfUnit);
  char* out = utf8.data() + begin;
  for (size_t at = 0; at < wide.size(); ++at) {
    uint32_t code = wide[at];
    if (IsLeading(code) && at + 1 < wide.size() && IsTrailing(wide[at + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<uint32_t>(wide[++at]) - 0xDC00);
    } else if (code == 0 || IsLeading(code) || IsTrailing(code)) {
      code = kReplacementCode;
    }
    out = PutCode(code, out);
  }
  utf8.resize(static_cast<size_t>(out - utf8.data()));
}

}  // namespace stockbook::com
