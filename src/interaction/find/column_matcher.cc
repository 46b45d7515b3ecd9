// SPDX-License-Identifier: MIT
#include "interaction/find/column_matcher.h"

#include <algorithm>
#include <bit>

#include "base/number.h"

namespace stockbook::interaction {
namespace {

using columns::Column;
using columns::RawKind;
using columns::RawRows;

constexpr size_t kBlock = 1024;
// Up to this range, values are looked up by their distance from the least.
constexpr uint64_t kNarrow = UINT16_MAX;
constexpr uint16_t kTested = 0x100;
constexpr int kHashBits = 10;

}  // namespace

ColumnMatcher::ColumnMatcher(const Column& column, const TermGroup& terms, const NumberMatcher& numbers)
    : column_(&column), terms_(&terms), numbers_(&numbers) {
  if (!column.HasTextCodes()) {
    open_ = column.HoldsNumbersOnly() ? terms.in_numbers() : terms.all();
    return;
  }
  found_by_code_.assign(column.TextCodeCount(), 0);
  open_ = terms.all();
  if (HasManyTexts())
    FindInTexts(RarestTerm());
  else
    FindInAllTexts();
}

uint8_t ColumnMatcher::RarestTerm() const {
  constexpr size_t kSamples = 512;
  const size_t step = found_by_code_.size() / kSamples + 1;
  std::array<size_t, TermGroup::kMostTerms> counts{};
  for (size_t code = step / 2; code < found_by_code_.size(); code += step) {
    const uint8_t found = terms_->FoundIn(column_->TextOfCode(static_cast<uint32_t>(code)), terms_->all());
    for (size_t at = 0; at < counts.size(); ++at) counts[at] += (found >> at) & 1U;
  }
  // A term that could also occur in a number excludes no record before all numbers have been tested.
  const unsigned in_numbers = terms_->in_numbers();
  for (size_t at = 0; at < counts.size(); ++at) {
    if (((in_numbers >> at) & 1U) != 0) counts[at] += kSamples * 2;
  }
  const auto end = counts.begin() + static_cast<std::ptrdiff_t>(terms_->terms().size());
  return static_cast<uint8_t>(1U << (std::min_element(counts.begin(), end) - counts.begin()));
}

void ColumnMatcher::FindInTexts(uint8_t bit) {
  const Wildcard& term = terms_->terms()[static_cast<size_t>(std::countr_zero(bit))];
  open_ &= static_cast<uint8_t>(~bit);
  if (const base::Substring* part = term.Contained()) {
    column_->MarkTextsContaining(*part, bit, found_by_code_);
  } else {
    for (uint32_t code = 1; code < found_by_code_.size(); ++code) {
      found_by_code_[code] |= terms_->FoundIn(column_->TextOfCode(code), bit);
    }
  }
  for (const uint8_t found : found_by_code_) known_ |= found;
}

void ColumnMatcher::FindInAllTexts() {
  while (open_ != 0) FindInTexts(static_cast<uint8_t>(open_ & -open_));
}

void ColumnMatcher::AddKnown(size_t first, std::span<uint8_t> found) const {
  if (known_ == 0) return;
  std::array<uint32_t, kBlock> codes;
  while (!found.empty()) {
    const size_t count = std::min(kBlock, found.size());
    column_->ReadTextCodes(first, std::span(codes).first(count));
    for (size_t at = 0; at < count; ++at) found[at] |= found_by_code_[codes[at]];
    first += count;
    found = found.subspan(count);
  }
}

void ColumnMatcher::AddOpen(size_t first, std::span<const uint16_t> at, uint8_t rest, std::span<uint8_t> found) {
  std::array<int64_t, kBlock> raw;
  if (open_ == 0) return;
  // The open terms may run out on the way; FoundInText handles that.
  while (!at.empty()) {
    const RawRows rows = column_->ReadRawAt(first, at, raw);
    if (rows.count == 0) return;
    if (column_->HasTextCodes()) {
      if (open_ != 0) column_->PrefetchTexts(std::span(raw).first(rows.count));
      for (size_t row = 0; row < rows.count; ++row) {
        uint8_t& mark = found[at[row]];
        mark |= FoundInText(static_cast<uint32_t>(raw[row]), mark, rest);
      }
    } else {
      Prepare(rows, (first + at.front()) / Column::kChunkRows);
      const bool by_digits = rows.kind == RawKind::kDecimal && tested_by_distance_.empty();
      for (size_t row = 0; row < rows.count; ++row) {
        const int64_t number = raw[row];
        // 0 stands for null too.
        if (number == 0 && column_->IsNull(first + at[row])) continue;
        const bool shows_digits = number < NumberMatcher::kMostUnits && number > -NumberMatcher::kMostUnits;
        found[at[row]] |= by_digits && shows_digits ? numbers_->FoundIn(number, rows.decimals)
                                                    : FoundInRepeated(first + at[row], number, rows);
      }
    }
    at = at.subspan(rows.count);
  }
}

uint8_t ColumnMatcher::FoundInText(uint32_t code, uint8_t found, uint8_t rest) {
  if (open_ == 0) return found_by_code_[code];
  // Searching all texts in memory order for a term costs about as much as searching this many texts at random.
  if (++tried_ > found_by_code_.size() / 16) {
    FindInAllTexts();
    return found_by_code_[code];
  }
  const auto wanted = static_cast<uint8_t>(open_ & ~found);
  return terms_->FoundIn(column_->TextOfCode(code), wanted, static_cast<uint8_t>(wanted & ~rest));
}

void ColumnMatcher::Prepare(const RawRows& rows, size_t chunk) {
  const bool same = rows.kind == prepared_.kind && rows.decimals == prepared_.decimals && chunk == prepared_chunk_;
  if (same) return;
  prepared_ = rows;
  prepared_chunk_ = chunk;
  tested_by_distance_.clear();
  tested_by_hash_.clear();
  if (rows.range <= kNarrow)
    tested_by_distance_.resize(static_cast<size_t>(rows.range) + 1);
  else if (rows.kind == RawKind::kOther)
    tested_by_hash_.resize(size_t{1} << kHashBits);
}

uint8_t ColumnMatcher::FoundInRepeated(size_t record, int64_t raw, const RawRows& rows) {
  if (!tested_by_distance_.empty()) {
    uint16_t& tested =
        tested_by_distance_[static_cast<size_t>(static_cast<uint64_t>(raw) - static_cast<uint64_t>(rows.least))];
    if (tested == 0) tested = kTested | FoundInValue(record, raw, rows);
    return static_cast<uint8_t>(tested);
  }
  if (tested_by_hash_.empty()) return FoundInValue(record, raw, rows);
  const uint64_t hash = static_cast<uint64_t>(raw) * 0x9E3779B97F4A7C15U;
  Tested& tested = tested_by_hash_[static_cast<size_t>(hash >> (64 - kHashBits))];
  if (!tested.is_set || tested.raw != raw) tested = {raw, FoundInValue(record, raw, rows), true};
  return tested.found;
}

uint8_t ColumnMatcher::FoundInValue(size_t record, int64_t raw, const RawRows& rows) {
  if (rows.kind == RawKind::kDecimal && raw < NumberMatcher::kMostUnits && raw > -NumberMatcher::kMostUnits) {
    return numbers_->FoundIn(raw, rows.decimals);
  }
  if (rows.kind == RawKind::kDouble) {
    if (const auto digits = base::QuickDigits(std::bit_cast<double>(raw)))
      return numbers_->FoundIn(digits->units, digits->decimals);
  }
  text_.clear();
  column_->AppendText(record, text_);
  return terms_->FoundIn(text_, open_);
}

}  // namespace stockbook::interaction
