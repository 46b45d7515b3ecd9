// SPDX-License-Identifier: MIT
#include "interaction/column_matcher.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/number.h"

namespace stockbook::interaction {
namespace {

using platform::Column;
using platform::RawKind;
using platform::RawRows;

constexpr size_t kBlock = 1024;
// Fewer than this part of a block's records are read one by one.
constexpr size_t kFew = 8;

// Marks the records that lack terms but would have all with the `reachable` ones; returns how many.
size_t MarkUndecided(std::span<const uint8_t> found, uint8_t all, uint8_t reachable, uint8_t* undecided) {
  for (size_t at = 0; at < found.size(); ++at) {
    undecided[at] = static_cast<uint8_t>((found[at] != all) & ((found[at] | reachable) == all));
  }
  return static_cast<size_t>(std::count(undecided, undecided + found.size(), uint8_t{1}));
}

// Calls visit(at) for the marked records.
template <typename Visit>
void ForEachMarked(const uint8_t* marks, size_t count, Visit visit) {
  const uint8_t* const end = marks + count;
  for (const uint8_t* at = marks; at != end;) {
    at = static_cast<const uint8_t*>(std::memchr(at, 1, static_cast<size_t>(end - at)));
    if (at == nullptr) return;
    visit(static_cast<size_t>(at - marks));
    ++at;
  }
}

}  // namespace

ColumnMatcher::ColumnMatcher(const Column& column, const TermGroup& terms, const NumberMatcher& numbers)
    : column_(&column), terms_(&terms), numbers_(&numbers) {
  if (!column.HasTextCodes()) {
    possible_ = column.HoldsNumbersOnly() ? terms.in_numbers() : terms.all();
    if (possible_ != 0) known_.resize(kKnown);
    return;
  }
  found_by_code_.assign(column.TextCodeCount(), 0);
  open_ = terms.all();
  if (found_by_code_.size() < kManyTexts) {
    while (open_ != 0) FindInTexts(static_cast<uint8_t>(open_ & -open_));
  } else {
    FindInTexts(RarestTerm());
  }
}

uint8_t ColumnMatcher::RarestTerm() const {
  constexpr size_t kSamples = 512;
  const size_t step = found_by_code_.size() / kSamples + 1;
  std::array<size_t, TermGroup::kMostTerms> counts{};
  for (size_t code = step / 2; code < found_by_code_.size(); code += step) {
    const uint8_t found = terms_->FoundIn(column_->TextOfCode(static_cast<uint32_t>(code)), terms_->all());
    for (size_t at = 0; at < counts.size(); ++at) counts[at] += (found >> at) & 1U;
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
  for (const uint8_t found : found_by_code_) any_by_code_ |= found;
  possible_ = any_by_code_ | open_;
}

void ColumnMatcher::AddFound(size_t first, uint8_t rest, std::span<uint8_t> found) {
  if (possible_ == 0) return;
  if (HasCodes()) return AddFoundByCode(first, rest, found);
  std::array<int64_t, kBlock> raw;
  std::array<uint8_t, kBlock> undecided;
  const auto reachable = static_cast<uint8_t>(possible_ | rest);
  while (!found.empty()) {
    const size_t count = std::min(kBlock, found.size());
    const size_t open = MarkUndecided(found.first(count), terms_->all(), reachable, undecided.data());
    size_t done = count;
    if (open > 0 && open < count / kFew) {
      ForEachMarked(undecided.data(), count, [&](size_t at) {
        const RawRows row = column_->ReadRaw(first + at, std::span(raw).first(1));
        AddFoundByValue(first + at, row, std::span(raw).first(row.count), rest, found.subspan(at, 1));
      });
    } else if (open > 0) {
      const RawRows rows = column_->ReadRaw(first, std::span(raw).first(count));
      if (rows.count == 0) return;
      AddFoundByValue(first, rows, std::span(raw).first(rows.count), rest, found.first(rows.count));
      done = rows.count;
    }
    first += done;
    found = found.subspan(done);
  }
}

void ColumnMatcher::AddFoundByCode(size_t first, uint8_t rest, std::span<uint8_t> found) {
  std::array<uint32_t, kBlock> codes;
  std::array<uint8_t, kBlock> undecided;
  const uint8_t all = terms_->all();
  while (!found.empty()) {
    const size_t count = std::min(kBlock, found.size());
    const auto block = found.first(count);
    if (any_by_code_ != 0) {
      column_->ReadTextCodes(first, std::span(codes).first(count));
      for (size_t at = 0; at < count; ++at) block[at] |= found_by_code_[codes[at]];
    }
    if (open_ != 0 && MarkUndecided(block, all, static_cast<uint8_t>(open_ | rest), undecided.data()) > 0) {
      ForEachMarked(undecided.data(), count, [&](size_t at) {
        column_->ReadTextCodes(first + at, std::span(codes).first(1));
        block[at] |= FoundInText(codes[0], block[at], rest);
      });
      // Meanwhile the terms may have been looked for in all texts: once more by code.
      if (open_ == 0) continue;
    }
    first += count;
    found = found.subspan(count);
  }
}

uint8_t ColumnMatcher::FoundInText(uint32_t code, uint8_t found, uint8_t rest) {
  // Looking for a term in all texts costs about as much as in so many, one by one.
  if (++tried_ > found_by_code_.size() / 8) {
    while (open_ != 0) FindInTexts(static_cast<uint8_t>(open_ & -open_));
    return found_by_code_[code];
  }
  const auto wanted = static_cast<uint8_t>(open_ & ~found);
  return terms_->FoundIn(column_->TextOfCode(code), wanted, static_cast<uint8_t>(wanted & ~rest));
}

void ColumnMatcher::AddFoundByValue(size_t first, const RawRows& rows, std::span<const int64_t> raw, uint8_t rest,
                                    std::span<uint8_t> found) {
  const uint8_t all = terms_->all();
  const bool numbers = rows.kind == RawKind::kDecimal || rows.kind == RawKind::kDouble;
  const uint8_t wanted = numbers ? terms_->in_numbers() : all;
  const auto reachable = static_cast<uint8_t>(wanted | rest);
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
  if (rows.kind == RawKind::kDecimal && raw < NumberMatcher::kMostUnits && raw > -NumberMatcher::kMostUnits) {
    return numbers_->FoundIn(raw, rows.decimals, wanted);
  }
  if (rows.kind == RawKind::kDouble) {
    if (const auto digits = base::QuickDigits(std::bit_cast<double>(raw)))
      return numbers_->FoundIn(digits->units, digits->decimals, wanted);
  }
  text_.clear();
  column_->AppendText(record, text_);
  return terms_->FoundIn(text_, wanted);
}

}  // namespace stockbook::interaction
