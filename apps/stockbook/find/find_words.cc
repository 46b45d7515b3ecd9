// SPDX-License-Identifier: MIT
#include "stockbook/find/find_words.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "stockbook/find/letter_case.h"

namespace stockbook::app {
namespace {

constexpr size_t kUsualText = 256;
constexpr size_t kRolledText = 64;
constexpr std::string_view kSigns = "*?#[";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// What characters make up: within a run of one kind there is no end of a word.
enum class Kind { kOther, kLetters, kIdeographs };

Kind KindOf(char32_t character) {
  const bool digit = character >= '0' && character <= '9';
  const bool latin = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  if (digit || latin || character == '_' || (character >= 0xC0 && character < 0x2000)) return Kind::kLetters;
  const bool ideograph = (character >= 0x3400 && character < 0xA000) || (character >= 0x20000 && character < 0x40000);
  return ideograph ? Kind::kIdeographs : Kind::kOther;
}

char32_t FirstCharacter(std::string_view text) { return TakeCharacter(text); }

char32_t LastCharacter(std::string_view text) {
  size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) --at;
  return FirstCharacter(text.substr(at));
}

// Whether a number goes on after a digit: by decimals, unless they are all zeros, or by another group of digits.
bool NumberGoesOn(std::string_view after, bool has_point) {
  size_t at = 0;
  if (!has_point) {
    if (after.size() < 2 || (after[0] != '.' && after[0] != ',') || !IsDigit(after[1])) return false;
    if (after[0] == ',') return true;
    at = 1;
  }
  while (at < after.size() && after[at] == '0') ++at;
  return at < after.size() && IsDigit(after[at]);
}

bool EndsBefore(std::string_view word, std::string_view after) {
  if (after.empty()) return true;
  const bool number = IsDigit(word.back());
  const bool has_point = word.find('.') != std::string_view::npos;
  if (number && (has_point ? after[0] == '0' : after[0] == '.' || after[0] == ','))
    return !NumberGoesOn(after, has_point);
  const Kind kind = KindOf(LastCharacter(word));
  return kind == Kind::kOther || kind != KindOf(FirstCharacter(after));
}

bool BeginsAfter(std::string_view before, std::string_view word) {
  if (before.empty()) return true;
  const bool inside_number = IsDigit(word.front()) && before.size() > 1 && IsDigit(before[before.size() - 2]) &&
                             (before.back() == '.' || before.back() == ',');
  if (inside_number) return false;
  const Kind kind = KindOf(FirstCharacter(word));
  return kind == Kind::kOther || kind != KindOf(LastCharacter(before));
}

// Writes the text without the commas between two digits to `out`, which has room for all of it; returns the length.
size_t WriteWithoutGrouping(std::string_view text, char* out) {
  size_t size = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    out[size] = text[at];
    const bool between =
        text[at] == ',' && at > 0 && at + 1 < text.size() && IsDigit(text[at - 1]) && IsDigit(text[at + 1]);
    size += between ? 0 : 1;
  }
  return size;
}

// Calls `test` with the text as `write` writes it, which is not longer.
template <typename Write, typename Test>
bool TestWritten(std::string_view text, Write write, Test test) {
  if (text.size() > kUsualText) {
    std::string written(text.size(), '\0');
    written.resize(write(text, written.data()));
    return test(std::string_view(written));
  }
  std::array<char, kUsualText> written;
  return test(std::string_view(written.data(), write(text, written.data())));
}

}  // namespace

std::string WithoutGrouping(std::string_view text) {
  std::string plain(text.size(), '\0');
  plain.resize(WriteWithoutGrouping(text, plain.data()));
  return plain;
}

std::vector<std::string> SplitWords(std::string_view text) {
  std::string plain = base::ReplaceAll(text, "\xE3\x80\x80", " ");
  std::replace(plain.begin(), plain.end(), '\t', ' ');
  std::vector<std::string> words;
  for (const std::string_view word : base::Split(plain, ' ')) {
    if (!word.empty() && std::find(words.begin(), words.end(), word) == words.end()) words.emplace_back(word);
  }
  return words;
}

FindWord::FindWord(std::string_view word, FindOptions options) : text_(word), options_(options) {
  if (options.patterns && text_.find_first_of(kSigns) == std::string::npos) options_.patterns = false;
  small_letters_ = !options.match_case && (options_.patterns || HasCase(text_));
  if (small_letters_) text_ = InSmallLetters(text_);
  has_commas_ = text_.find(',') != std::string::npos;
  spans_groups_ = options_.patterns;
  for (size_t at = 1; at < text_.size(); ++at)
    spans_groups_ |= IsDigit(text_[at - 1]) && (IsDigit(text_[at]) || text_[at] == '.');
  ReadLiterals(options_);
  if (!options_.patterns) {
    part_.emplace(text_);
    if (!options_.whole_words && !has_commas_ && text_.size() <= sizeof bytes_) {
      for (const char c : text_) bytes_ = bytes_ << 8 | static_cast<unsigned char>(c);
      mask_ = UINT64_MAX >> (64 - 8 * text_.size());
    }
  } else {
    pattern_.emplace(text_);  // which speaks of the user's own signs if it is malformed
    if (!options_.whole_words) pattern_.emplace("*" + text_ + "*");
  }
}

void FindWord::ReadLiterals(FindOptions options) {
  const std::string small = InSmallLetters(text_);
  if (!options.patterns) {
    literals_.push_back(small);
    is_its_literal_ = !options.whole_words && (small_letters_ || !HasCase(text_)) && !has_commas_;
    return;
  }
  for (size_t at = 0; at < small.size();) {
    const size_t end = std::min(small.find_first_of(kSigns, at), small.size());
    if (end > at) literals_.push_back(small.substr(at, end - at));
    at = end + 1;
    if (end < small.size() && small[end] == '[') at = std::min(small.find(']', end), small.size() - 1) + 1;
  }
}

bool FindWord::IsIn(std::string_view text) const {
  if (text.empty()) return false;
  if (!small_letters_) return IsInEither(text);
  return TestWritten(text, WriteSmallLetters, [this](std::string_view small) { return IsInEither(small); });
}

// Compares the last bytes at each place, which takes less time than anything else where texts are as short as those of
// cells, and skips grouping commas on the way.
bool FindWord::RollsThrough(std::string_view text) const {
  uint64_t last = 0;
  size_t read = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c == ',' && spans_groups_ && at > 0 && at + 1 < text.size() && IsDigit(text[at - 1]) && IsDigit(text[at + 1]))
      continue;
    last = last << 8 | static_cast<unsigned char>(c);
    ++read;
    if (((last ^ bytes_) & mask_) == 0 && read >= text_.size()) return true;
  }
  return false;
}

bool FindWord::IsInEither(std::string_view text) const {
  if (mask_ != 0 && text.size() <= kRolledText) return RollsThrough(text);
  if (!spans_groups_ || text.find(',') == std::string_view::npos) return IsInAsItIs(text);
  // A word without commas that is in the text is also in it without commas.
  if ((has_commas_ || !part_ || options_.whole_words) && IsInAsItIs(text)) return true;
  return TestWritten(text, WriteWithoutGrouping, [this](std::string_view plain) { return IsInAsItIs(plain); });
}

bool FindWord::IsInAsItIs(std::string_view text) const {
  if (pattern_) return pattern_->Matches(text);
  return options_.whole_words ? IsWholeIn(text) : part_->IsIn(text);
}

bool FindWord::IsWholeIn(std::string_view text) const {
  for (size_t at = part_->FindIn(text, 0); at != base::Substring::kNone; at = part_->FindIn(text, at + 1)) {
    if (BeginsAfter(text.substr(0, at), text_) && EndsBefore(text_, text.substr(at + text_.size()))) return true;
  }
  return false;
}

}  // namespace stockbook::app
