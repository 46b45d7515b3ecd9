// SPDX-License-Identifier: MIT
#include "interaction/column_matcher.h"

#include <algorithm>

#include "base/text.h"

namespace stockbook::interaction {
namespace {

using platform::Column;
using platform::RawKind;
using platform::RawRows;

constexpr size_t kBlock = 1024;
// Beyond, the digits of a double's default text are fewer than its integer has.
constexpr int64_t kMostUnits = 1'000'000'000'000'000;
constexpr size_t kMostDigits = 40;

// The default text of raw / 10^decimals, written up to `end`.
std::string_view WriteDecimal(int64_t raw, int decimals, char* end) {
  const bool negative = raw < 0;
  auto rest = static_cast<uint64_t>(negative ? -raw : raw);
  for (; decimals > 0 && rest % 10 == 0; --decimals) rest /= 10;
  char* at = end;
  if (decimals > 0) {
    for (; decimals > 0; --decimals, rest /= 10) *--at = static_cast<char>('0' + rest % 10);
    *--at = '.';
  }
  do {
    *--at = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest > 0);
  if (negative) *--at = '-';
  return {at, static_cast<size_t>(end - at)};
}

}  // namespace

ColumnMatcher::ColumnMatcher(const Column& column, const TermGroup& terms) : column_(&column), terms_(&terms) {
  if (column.HasTextCodes()) {
    FindTexts();
  } else {
    possible_ = column.MayHoldTexts() ? terms.all() : terms.in_numbers();
    if (possible_ != 0) known_.resize(kKnown);
  }
}

void ColumnMatcher::FindTexts() {
  found_by_code_.assign(column_->TextCodeCount(), 0);
  uint8_t patterns = 0;
  for (size_t at = 0; at < terms_->terms().size(); ++at) {
    const auto bit = static_cast<uint8_t>(1U << at);
    if (const base::Substring* part = terms_->terms()[at].Contained()) {
      column_->MarkTextsContaining(*part, bit, found_by_code_);
    } else {
      patterns |= bit;
    }
  }
  if (patterns != 0) {
    for (uint32_t code = 1; code < found_by_code_.size(); ++code) {
      found_by_code_[code] |= terms_->FoundIn(column_->TextOfCode(code), patterns);
    }
  }
  for (const uint8_t found : found_by_code_) possible_ |= found;
}

void ColumnMatcher::AddFound(size_t first, uint8_t reachable, std::span<uint8_t> found) {
  if (possible_ == 0) return;
  if (HasCodes()) return AddFoundByCode(first, found);
  std::array<int64_t, kBlock> raw;
  while (!found.empty()) {
    const RawRows rows = column_->ReadRaw(first, std::span(raw).first(std::min(kBlock, found.size())));
    if (rows.count == 0) return;
    AddFoundByValue(first, rows, std::span(raw).first(rows.count), reachable, found.first(rows.count));
    first += rows.count;
    found = found.subspan(rows.count);
  }
}

void ColumnMatcher::AddFoundByCode(size_t first, std::span<uint8_t> found) {
  std::array<uint32_t, kBlock> codes;
  while (!found.empty()) {
    const size_t count = std::min(kBlock, found.size());
    column_->ReadTextCodes(first, std::span(codes).first(count));
    for (size_t at = 0; at < count; ++at) found[at] |= found_by_code_[codes[at]];
    first += count;
    found = found.subspan(count);
  }
}

void ColumnMatcher::AddFoundByValue(size_t first, const RawRows& rows, std::span<const int64_t> raw, uint8_t reachable,
                                    std::span<uint8_t> found) {
  const uint8_t all = terms_->all();
  const bool numbers = rows.kind == RawKind::kDecimal || rows.kind == RawKind::kDouble;
  const uint8_t wanted = numbers ? terms_->in_numbers() : all;
  if (wanted == 0) return;
  const size_t chunk = first / Column::kChunkRows;
  // What tells other values apart than numbers does so in its chunk alone.
  if (rows.kind != known_kind_.kind || rows.decimals != known_kind_.decimals || (!numbers && chunk != known_chunk_)) {
    std::fill(known_.begin(), known_.end(), Known());
    known_kind_ = rows;
    known_chunk_ = chunk;
  }
  for (size_t at = 0; at < raw.size(); ++at) {
    if (found[at] == all || (found[at] | reachable) != all) continue;
    // 0 stands for null too.
    if (raw[at] == 0 && column_->IsNull(first + at)) continue;
    const auto hash = (static_cast<uint64_t>(raw[at]) * 0x9E3779B97F4A7C15U) >> 54;
    Known& known = known_[hash];
    if (!known.is_set || known.raw != raw[at]) {
      known = {raw[at], FoundInValue(first + at, raw[at], rows, wanted), true};
    }
    found[at] |= known.found;
  }
}

uint8_t ColumnMatcher::FoundInValue(size_t record, int64_t raw, const RawRows& rows, uint8_t wanted) {
  if (rows.kind == RawKind::kDecimal && raw < kMostUnits && raw > -kMostUnits) {
    std::array<char, kMostDigits> digits;
    return terms_->FoundIn(WriteDecimal(raw, rows.decimals, digits.data() + digits.size()), wanted);
  }
  text_.clear();
  column_->AppendText(record, text_);
  return terms_->FoundIn(text_, wanted);
}

}  // namespace stockbook::interaction
