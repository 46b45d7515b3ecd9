// SPDX-License-Identifier: MIT
#include "stockbook/import/encoding_guess.h"

#include <cstddef>

namespace stockbook::app {
namespace {

unsigned ByteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }
bool IsLead(unsigned byte) { return byte >= 0x81 && byte <= 0xFE; }
bool IsIn(unsigned byte, unsigned least, unsigned most) { return byte >= least && byte <= most; }

// The bytes of the character at the place; 0 if there is none, 5 if the text ends within it.
constexpr size_t kMalformed = 0;
constexpr size_t kUnfinished = 5;

size_t Gb18030Length(std::string_view text, size_t at) {
  const unsigned lead = ByteAt(text, at);
  if (lead < 0x80) return 1;
  if (!IsLead(lead)) return kMalformed;
  if (at + 1 == text.size()) return kUnfinished;
  const unsigned second = ByteAt(text, at + 1);
  if (IsIn(second, 0x40, 0x7E) || IsIn(second, 0x80, 0xFE)) return 2;
  if (!IsIn(second, 0x30, 0x39)) return kMalformed;
  if (at + 3 >= text.size()) return at + 2 < text.size() && !IsLead(ByteAt(text, at + 2)) ? kMalformed : kUnfinished;
  return IsLead(ByteAt(text, at + 2)) && IsIn(ByteAt(text, at + 3), 0x30, 0x39) ? 4 : kMalformed;
}

size_t Utf8Length(std::string_view text, size_t at) {
  const unsigned lead = ByteAt(text, at);
  if (lead < 0x80) return 1;
  const size_t length = IsIn(lead, 0xC2, 0xDF) ? 2 : IsIn(lead, 0xE0, 0xEF) ? 3 : IsIn(lead, 0xF0, 0xF4) ? 4 : 0;
  for (size_t index = 1; index < length; ++index) {
    if (at + index >= text.size()) return kUnfinished;
    if (!IsIn(ByteAt(text, at + index), 0x80, 0xBF)) return kMalformed;
  }
  return length;
}

// How many bytes are part of no character.
template <typename LengthAt>
size_t MalformedBytes(std::string_view sample, SampleEnd end, LengthAt length_at) {
  size_t malformed = 0;
  for (size_t at = 0; at < sample.size();) {
    const size_t length = length_at(sample, at);
    const bool is_lost = length == kMalformed || length == kUnfinished;
    if (length == kUnfinished && end == SampleEnd::kCutOff) break;
    if (is_lost) ++malformed;
    at += is_lost ? 1 : length;
  }
  return malformed;
}

// Both bytes of the punctuation, the wide letters and the 6,763 common characters are high, which those of western
// letters before a small one are not. Programs with fields of so many bytes cut characters in two, one a field at most.
bool ReadsLikeChinese(std::string_view sample, size_t malformed) {
  size_t characters = 0;
  size_t common = 0;
  for (size_t at = 0; at < sample.size();) {
    const size_t length = Gb18030Length(sample, at);
    const bool is_lost = length == kMalformed || length == kUnfinished;
    if (!is_lost && length > 1) ++characters;
    if (length == 2 && IsIn(ByteAt(sample, at), 0xA1, 0xF7) && ByteAt(sample, at + 1) >= 0xA1) ++common;
    at += is_lost ? 1 : length;
  }
  constexpr size_t kLeastPerLost = 2;
  return common * 3 >= characters * 2 && malformed * kLeastPerLost <= characters;
}

}  // namespace

TextEncoding GuessEncoding(std::string_view sample, SampleEnd end) {
  const size_t lost_as_utf8 = MalformedBytes(sample, end, Utf8Length);
  if (lost_as_utf8 == 0) return TextEncoding::kUtf8;
  const size_t lost_as_gbk = MalformedBytes(sample, end, Gb18030Length);
  const bool chinese = lost_as_gbk < lost_as_utf8 && ReadsLikeChinese(sample, lost_as_gbk);
  return chinese ? TextEncoding::kGb18030 : TextEncoding::kUtf8;
}

bool HasFourByteCharacters(std::string_view text) {
  for (size_t at = 0; at < text.size();) {
    const size_t length = Gb18030Length(text, at);
    if (length == 4) return true;
    at += length == kMalformed || length == kUnfinished ? 1 : length;
  }
  return false;
}

}  // namespace stockbook::app
