// SPDX-License-Identifier: MIT
#include "stockbook/base/substring.h"

#include <algorithm>
#include <cstring>

namespace stockbook::base {
namespace {

// Texts up to this length are compared directly at each candidate place, so that a comparison stays short.
constexpr size_t kShort = 16;
constexpr size_t kStep = 64;

// How often a byte is expected in a journal's texts: lead bytes of Chinese characters and the digits of years are
// everywhere, while the bytes that follow a lead byte tell characters apart.
int Commonness(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0xC0) return 5;
  if (byte == '0' || byte == '-' || byte == ' ') return 4;
  if (byte == '1' || byte == '2') return 3;
  if (byte >= '0' && byte <= '9') return 2;
  return byte == 0x80 || byte == 0xBC ? 2 : 1;
}

}  // namespace

Substring::Substring(std::string_view text) : text_(text) {
  const auto rarer = [&](size_t left, size_t right) { return Commonness(text_[left]) < Commonness(text_[right]); };
  for (size_t at = 1; at < text_.size(); ++at) first_ = rarer(at, first_) ? at : first_;
  second_ = first_ == 0 && text_.size() > 1 ? 1 : 0;
  for (size_t at = second_ + 1; at < text_.size(); ++at) {
    if (at != first_ && rarer(at, second_)) second_ = at;
  }
  if (text_.size() <= kShort) return;
  borders_.assign(text_.size() + 1, 0);
  for (size_t length = 2; length <= text_.size(); ++length) {
    uint32_t border = borders_[length - 1];
    while (border > 0 && text_[border] != text_[length - 1]) border = borders_[border];
    borders_[length] = border + (text_[border] == text_[length - 1] ? 1 : 0);
  }
}

size_t Substring::FindSteadily(std::string_view text, size_t from) const {
  uint32_t matched = 0;
  for (size_t at = from; at < text.size(); ++at) {
    while (matched > 0 && text_[matched] != text[at]) matched = borders_[matched];
    if (text_[matched] == text[at]) ++matched;
    if (matched == text_.size()) return at + 1 - matched;
  }
  return kNone;
}

size_t Substring::FindIn(std::string_view text, size_t from) const {
  const size_t size = text_.size();
  if (from > text.size() || text.size() - from < size) return kNone;
  if (size == 0) return from;
  const char first = text_[first_];
  const char second = text_[second_];
  const size_t places = text.size() - size + 1;
  size_t compared = 0;
  for (size_t at = from; at < places;) {
    const char* const firsts = text.data() + at + first_;
    const char* const seconds = text.data() + at + second_;
    const size_t count = std::min(kStep, places - at);
    if (count == kStep) {
      unsigned char any = 0;
      for (size_t place = 0; place < kStep; ++place) {
        any |= static_cast<unsigned char>((firsts[place] == first) & (seconds[place] == second));
      }
      if (any == 0) {
        at += kStep;
        continue;
      }
    }
    for (size_t place = 0; place < count; ++place) {
      const void* const found = std::memchr(firsts + place, first, count - place);
      if (found == nullptr) break;
      place = static_cast<size_t>(static_cast<const char*>(found) - firsts);
      if (seconds[place] != second) continue;
      if (std::memcmp(text.data() + at + place, text_.data(), size) == 0) return at + place;
      compared += size;
    }
    at += count;
    if (size > kShort && compared > 1024 + 8 * (at - from)) return FindSteadily(text, at);
  }
  return kNone;
}

}  // namespace stockbook::base
