// SPDX-License-Identifier: MIT
#include "stockbook/find/symbol_index.h"

#include <algorithm>

#include "stockbook/find/letter_case.h"

namespace stockbook::app {
namespace {

constexpr uint8_t kNoSymbol = 0xFF;
constexpr uint8_t kFirstNoDigit = 10;
constexpr uint8_t kPoint = kFirstNoDigit;

constexpr std::array<uint8_t, 256> Symbols() {
  std::array<uint8_t, 256> symbols{};
  symbols.fill(kNoSymbol);
  for (uint8_t digit = 0; digit < kFirstNoDigit; ++digit) symbols[static_cast<size_t>('0' + digit)] = digit;
  symbols['.'] = kPoint;
  symbols['-'] = kFirstNoDigit + 1;
  return symbols;
}
constexpr std::array kSymbolOf = Symbols();

uint8_t SymbolOf(char c) { return kSymbolOf[static_cast<unsigned char>(c)]; }

size_t HashOf(uint32_t number, size_t classes) {
  return static_cast<size_t>(uint64_t{number * 2654435761U} * classes >> 32);
}

size_t OtherClass(char32_t character, size_t classes) { return HashOf(character, classes); }

// Groups with a point or a minus have bits of their own, because many texts hold the same few of them.
uint32_t SignatureBit(size_t first, size_t second, size_t third) {
  constexpr size_t kOfDigits = 24;
  const auto triple = static_cast<uint32_t>((first * 16 + second) * 16 + third);
  if (std::max({first, second, third}) < kFirstNoDigit) return uint32_t{1} << HashOf(triple, kOfDigits);
  return uint32_t{1} << (kOfDigits + HashOf(triple, 32 - kOfDigits));
}

// Bit j of word i becomes bit i of word j.
void Transpose(std::array<uint64_t, 64>& words) {
  uint64_t mask = 0x00000000FFFFFFFF;
  for (size_t step = 32; step != 0; step /= 2, mask ^= mask << step) {
    for (size_t at = 0; at < 64; at = (at + step + 1) & ~step) {
      const uint64_t swapped = ((words[at] >> step) ^ words[at + step]) & mask;
      words[at] ^= swapped << step;
      words[at + step] ^= swapped;
    }
  }
}

}  // namespace

SymbolIndex::SymbolIndex(size_t records, size_t columns)
    : records_(records), columns_(columns), planes_(kPlanes), signatures_(records * columns) {}

template <typename Visitor>
void SymbolIndex::Walk(std::string_view text, Visitor& visitor) {
  size_t before = kSymbols;       // the symbol before this character, kSymbols for none
  size_t pair_before = kSymbols;  // the one before that
  for (size_t at = 0; at < text.size();) {
    const size_t symbol = SymbolOf(text[at]);
    if (symbol < kSymbols) {
      visitor.See(symbol);
      if (before < kSymbols) visitor.See(kPairs + before * kSymbols + symbol);
      if (pair_before < kSymbols) {
        const size_t triple = (pair_before * kSymbols + before) * kSymbols + symbol;
        visitor.See(kTriples + HashOf(static_cast<uint32_t>(triple), kTripleClasses));
        visitor.Sign(SignatureBit(pair_before, before, symbol));
        if (before == kPoint && pair_before < kFirstNoDigit && symbol < kFirstNoDigit)
          visitor.See(kAroundPoint + pair_before * kFirstNoDigit + symbol);
      }
      pair_before = before;
      before = symbol;
      ++at;
      continue;
    }
    if (text[at] == ',' && before < kFirstNoDigit && at + 1 < text.size() && SymbolOf(text[at + 1]) < kFirstNoDigit) {
      ++at;
      continue;
    }
    before = pair_before = kSymbols;
    std::string_view rest = text.substr(at);
    const char32_t character = SmallLetter(TakeCharacter(rest));
    at = text.size() - rest.size();
    if (character == ' ' || character == ',') continue;
    const size_t other = OtherClass(character, kOtherClasses);
    visitor.Meet(other, character);
    visitor.See(kOthers + other);
  }
}

bool SymbolIndex::AddTo(Row& row, uint32_t& signature, std::string_view text) {
  struct Adder {
    Row& row;
    std::array<char32_t, kOtherClasses>& owners;
    uint32_t signature = 0;
    bool met = false;
    void See(size_t plane) { row[plane / 64] |= uint64_t{1} << plane % 64; }
    void Sign(uint32_t bit) { signature |= bit; }
    void Meet(size_t other, char32_t character) {
      char32_t& owner = owners[other];
      if (owner != character) owner = owner == 0 ? character : kShared;
      met = true;
    }
  };
  Adder adder{row, owners_};
  Walk(text, adder);
  signature = adder.signature;
  return adder.met;
}

uint32_t SymbolIndex::SignatureOf(std::string_view part) {
  struct Signer {
    uint32_t signature = 0;
    void See(size_t /*plane*/) {}
    void Sign(uint32_t bit) { signature |= bit; }
    void Meet(size_t /*other*/, char32_t /*character*/) {}
  };
  Signer signer;
  Walk(part, signer);
  return signer.signature;
}

void SymbolIndex::Flush(size_t next_block) {
  std::array<uint64_t, 64> words;
  for (size_t word = 0; word < kWords; ++word) {
    uint64_t any = 0;
    for (size_t row = 0; row < rows_.size(); ++row) any |= words[row] = rows_[row][word];
    if (any == 0) continue;
    Transpose(words);
    for (size_t bit = 0; bit < 64; ++bit) {
      if (words[bit] == 0) continue;
      std::vector<uint64_t>& plane = planes_[word * 64 + bit];
      if (plane.empty()) plane.resize((records_ + RowBits::kWordRows - 1) / RowBits::kWordRows);
      plane[block_] |= words[bit];
    }
  }
  rows_.fill(Row{});
  block_ = next_block;
}

SymbolIndex::Answer SymbolIndex::Narrow(std::string_view part, RowBits& rows) const {
  struct Reader {
    const std::array<char32_t, kOtherClasses>& owners;
    std::vector<size_t> wanted;
    bool exact = true;
    void See(size_t plane) { wanted.push_back(plane); }
    void Sign(uint32_t /*bit*/) {}
    void Meet(size_t other, char32_t character) { exact &= owners[other] == 0 || owners[other] == character; }
  };
  Reader reader{owners_, {}};
  Walk(part, reader);
  for (const size_t plane : reader.wanted) {
    if (planes_[plane].empty()) {
      rows = RowBits(rows.size());
    } else {
      rows.KeepOnly(planes_[plane]);
    }
  }
  // One character, or a pair or digits around a point with all that they are made of.
  std::string_view rest = part;
  if (!rest.empty()) TakeCharacter(rest);
  const bool one = reader.wanted.size() == 1 && rest.empty();
  const bool pair = reader.wanted.size() == 3 && part.size() == 2;
  const bool around_point = reader.wanted.size() == 7 && part.size() == 3;
  return reader.exact && (one || pair || around_point) ? Answer::kHoldIt : Answer::kMayHoldIt;
}

size_t SymbolIndex::MemoryBytes() const {
  size_t bytes =
      sizeof(*this) + planes_.capacity() * sizeof(planes_[0]) + signatures_.capacity() * sizeof(signatures_[0]);
  for (const auto& plane : planes_) bytes += plane.capacity() * sizeof(uint64_t);
  return bytes;
}

}  // namespace stockbook::app
