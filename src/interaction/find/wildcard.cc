// SPDX-License-Identifier: MIT
#include "interaction/find/wildcard.h"

#include <algorithm>

#include "base/text.h"
#include "stockbook/platform/error.h"

namespace stockbook::interaction {
namespace {

constexpr int kInvalidPattern = 93;
constexpr size_t kWordBits = 64;
constexpr char32_t kAsciiEnd = 0x80;

[[noreturn]] void Refuse(const std::string& message) { throw platform::Error("match", message, kInvalidPattern); }

// Removes the first character from the text and returns it. A malformed byte counts as one character above all others.
char32_t TakeCharacter(std::string_view& text) {
  const auto byte = [&](size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byte(0);
  const size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (lead < kAsciiEnd || length == 1 || text.size() < length) {
    text.remove_prefix(1);
    return lead < kAsciiEnd ? lead : 0x110000u + lead;
  }
  char32_t character = lead & (0xFFu >> (length + 1));
  for (size_t at = 1; at < length; ++at) character = character << 6 | (byte(at) & 0x3Fu);
  text.remove_prefix(length);
  return character;
}

}  // namespace

bool Wildcard::Place::Accepts(char32_t character) const {
  const bool listed = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
    return range.first <= character && character <= range.last;
  });
  return listed != accepts_others;
}

Wildcard::Wildcard(std::string_view pattern) {
  const bool literal = Parse(pattern);
  const bool anywhere = loops_.size() >= 2 && loops_.front() == 0 && loops_.back() == places_.size();
  const bool in_one_piece =
      std::all_of(loops_.begin(), loops_.end(), [&](size_t at) { return at == 0 || at == places_.size(); });
  if (literal && anywhere && in_one_piece && !places_.empty()) {
    const size_t begin = pattern.find_first_not_of('*');
    contained_.emplace(pattern.substr(begin, pattern.find_last_not_of('*') + 1 - begin));
    return;
  }
  if (places_.size() > kMostCharacters) {
    Refuse("通配符“" + std::string(base::LeftCharacters(pattern, 20)) + "…”太长：最多 " +
           std::to_string(kMostCharacters) + " 个字符，请缩短后再查找。");
  }
  MakeMasks();
}

bool Wildcard::Parse(std::string_view pattern) {
  bool literal = true;
  for (std::string_view rest = pattern; !rest.empty();) {
    const char32_t character = TakeCharacter(rest);
    literal = literal && character != '?' && character != '#' && character != '[';
    switch (character) {
      case '*':
        loops_.push_back(places_.size());
        break;
      case '?':
        places_.push_back({{}, true});
        break;
      case '#':
        places_.push_back({{{'0', '9'}}, false});
        break;
      case '[':
        rest = ParseList(rest, pattern);
        break;
      default:
        places_.push_back({{{character, character}}, false});
    }
  }
  return literal;
}

std::string_view Wildcard::ParseList(std::string_view rest, std::string_view pattern) {
  const size_t end = rest.find(']');
  if (end == std::string_view::npos) {
    Refuse("通配符“" + std::string(pattern) + "”中的“[”没有配对的“]”：请补上“]”；要查找“[”本身，请写成“[[]”。");
  }
  std::string_view list = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  if (list.empty()) return rest;
  Place place;
  place.accepts_others = list.size() > 1 && list.front() == '!';
  if (place.accepts_others) list.remove_prefix(1);
  while (!list.empty()) {
    const std::string_view from_here = list;
    Range range;
    range.first = range.last = TakeCharacter(list);
    if (list.size() > 1 && list.front() == '-') {
      list.remove_prefix(1);
      range.last = TakeCharacter(list);
    }
    if (range.last < range.first) {
      Refuse("通配符“" + std::string(pattern) + "”中的范围“" +
             std::string(from_here.substr(0, from_here.size() - list.size())) + "”次序颠倒：请把小的字符写在前面。");
    }
    place.ranges.push_back(range);
  }
  places_.push_back(std::move(place));
  return rest;
}

void Wildcard::MakeMasks() {
  words_ = places_.size() / kWordBits + 1;
  loop_mask_.assign(words_, 0);
  for (const size_t loop : loops_) loop_mask_[loop / kWordBits] |= uint64_t{1} << (loop % kWordBits);
  class_begins_ = {0};
  for (const Place& place : places_) {
    for (const Range& range : place.ranges) {
      class_begins_.push_back(range.first);
      class_begins_.push_back(range.last + 1);
    }
  }
  std::sort(class_begins_.begin(), class_begins_.end());
  class_begins_.erase(std::unique(class_begins_.begin(), class_begins_.end()), class_begins_.end());
  masks_.assign(class_begins_.size() * words_, 0);
  const auto class_of = [&](char32_t character) {
    return static_cast<size_t>(std::lower_bound(class_begins_.begin(), class_begins_.end(), character) -
                               class_begins_.begin());
  };
  for (size_t at = 0; at < places_.size(); ++at) {
    const uint64_t bit = uint64_t{1} << (at % kWordBits);
    uint64_t* const masks = masks_.data() + at / kWordBits;
    if (places_[at].accepts_others) {
      for (size_t which = 0; which < class_begins_.size(); ++which) masks[which * words_] |= bit;
    }
    for (const Range& range : places_[at].ranges) {
      for (size_t which = class_of(range.first); which < class_of(range.last + 1); ++which) {
        uint64_t& mask = masks[which * words_];
        mask = places_[at].accepts_others ? mask & ~bit : mask | bit;
      }
    }
  }
  for (char32_t character = 0; character < kAsciiEnd; ++character) {
    const auto next = std::upper_bound(class_begins_.begin(), class_begins_.end(), character);
    ascii_classes_.push_back(static_cast<uint32_t>(next - class_begins_.begin() - 1));
  }
}

const uint64_t* Wildcard::MaskOf(char32_t character) const {
  if (character < kAsciiEnd) return masks_.data() + ascii_classes_[character] * words_;
  const auto next = std::upper_bound(class_begins_.begin(), class_begins_.end(), character);
  return masks_.data() + static_cast<size_t>(next - class_begins_.begin() - 1) * words_;
}

bool Wildcard::Matches(std::string_view text) const {
  if (contained_) return contained_->IsIn(text);
  return words_ == 1 ? MatchesShort(text) : MatchesLong(text);
}

bool Wildcard::MatchesShort(std::string_view text) const {
  const uint64_t loops = loop_mask_[0];
  const uint64_t all_matched = uint64_t{1} << places_.size();
  const uint64_t settled = loops & all_matched;  // once reached, any rest of the text matches
  uint64_t states = 1;
  while (!text.empty() && states != 0 && (states & settled) == 0) {
    const uint64_t mask = *MaskOf(TakeCharacter(text));
    states = ((states & mask) << 1) | (states & loops);
  }
  return (states & all_matched) != 0;
}

bool Wildcard::MatchesLong(std::string_view text) const {
  const size_t last_word = places_.size() / kWordBits;
  const uint64_t all_matched = uint64_t{1} << (places_.size() % kWordBits);
  const uint64_t settled = loop_mask_[last_word] & all_matched;
  std::vector<uint64_t> states(words_, 0);
  states[0] = 1;
  while (!text.empty() && (states[last_word] & settled) == 0) {
    const uint64_t* const mask = MaskOf(TakeCharacter(text));
    uint64_t carry = 0;
    uint64_t any = 0;
    for (size_t word = 0; word < words_; ++word) {
      const uint64_t moved = states[word] & mask[word];
      states[word] = (moved << 1) | carry | (states[word] & loop_mask_[word]);
      carry = moved >> (kWordBits - 1);
      any |= states[word];
    }
    if (any == 0) return false;
  }
  return (states[last_word] & all_matched) != 0;
}

bool Wildcard::CanMatchTextsOf(std::string_view characters) const {
  if (contained_) return contained_->text().find_first_not_of(characters) == std::string::npos;
  return std::all_of(places_.begin(), places_.end(), [&](const Place& place) {
    return std::any_of(characters.begin(), characters.end(),
                       [&](char c) { return place.Accepts(static_cast<unsigned char>(c)); });
  });
}

}  // namespace stockbook::interaction
