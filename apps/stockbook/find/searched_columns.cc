// SPDX-License-Identifier: MIT
#include "stockbook/find/searched_columns.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

#include "sheet/store/store.h"

namespace stockbook::app {
namespace {

using columns::Column;
using sheet::ColumnTexts;

constexpr size_t kSearchedBlock = ColumnTexts::kMostRecords;
constexpr size_t kSearchedWords = kSearchedBlock / RowBits::kWordRows;

// Up to so many distinct texts a column is searched text by text.
size_t MostCodes(size_t records) { return std::max<size_t>(4096, records / 16); }

bool IsOfNumber(char c) { return (c >= '0' && c <= '9') || c == '.' || c == ',' || c == '-'; }

bool IsOfNumbers(std::string_view text) { return std::all_of(text.begin(), text.end(), IsOfNumber); }

}  // namespace

SearchedColumns::SearchedColumns(const sheet::Sheet& sheet) : sheet_(sheet) {
  for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
    const sheet::SheetColumn& searched = sheet.store().columns().At(column);
    const Column* loaded = searched.LoadedText();
    if (searched.hidden || (loaded == nullptr && !searched.HasRecordTexts())) continue;
    const bool coded =
        loaded != nullptr && loaded->HasTextCodes() && searched.format().IsEmpty() && !searched.HasRecordTexts();
    if (coded && loaded->TextCodeCount() <= MostCodes(sheet.RecordCount())) {
      coded_.push_back(loaded);
    } else {
      indexed_.push_back({&searched, coded ? loaded : nullptr, true});
    }
  }
  Index();
}

void SearchedColumns::Index() {
  std::vector<std::unique_ptr<ColumnTexts>> readers;
  for (const Indexed& indexed : indexed_)
    readers.push_back(std::make_unique<ColumnTexts>(sheet_.store(), *indexed.column));
  std::vector<std::span<const std::string_view>> texts(readers.size());
  const size_t records = sheet_.RecordCount();
  index_ = std::make_unique<SymbolIndex>(records, indexed_.size());
  for (size_t first = 0; first < records; first += kSearchedBlock) {
    const size_t count = std::min(kSearchedBlock, records - first);
    for (size_t at = 0; at < readers.size(); ++at) texts[at] = readers[at]->Read(static_cast<int64_t>(first), count);
    for (size_t record = 0; record < count; ++record) {
      for (size_t at = 0; at < texts.size(); ++at) {
        if (index_->Add(first + record, at, texts[at][record])) indexed_[at].shows_numbers_only = false;
      }
    }
  }
  index_->Finish();
}

void SearchedColumns::FindByCode(const Column& column, const FindWord& word, RowBits& found) const {
  std::vector<uint8_t> has(column.TextCodeCount());
  bool any = false;
  for (uint32_t code = 1; code < has.size(); ++code) {
    has[code] = word.IsIn(column.TextOfCode(code)) ? 1 : 0;
    any |= has[code] != 0;
  }
  if (!any) return;
  std::array<uint32_t, RowBits::kWordRows> codes;
  for (size_t at = 0; at < found.words().size(); ++at) {
    const size_t first = at * RowBits::kWordRows;
    const size_t count = std::min(RowBits::kWordRows, found.size() - first);
    column.ReadTextCodes(first, std::span(codes).first(count));
    uint64_t bits = 0;
    for (size_t row = 0; row < count; ++row) bits |= uint64_t{has[codes[row]]} << row;
    found.words()[at] |= bits;
  }
}

SearchedColumns::Search SearchedColumns::Begin(const FindWord& word, const RowBits& rows) const {
  Search search{&word, RowBits(rows.size()), rows};
  for (const Column* column : coded_) FindByCode(*column, word, search.found);
  auto answer = SymbolIndex::Answer::kMayHoldIt;
  for (const std::string& literal : word.literals()) {
    answer = index_->Narrow(literal, search.open);
    search.signature |= SymbolIndex::SignatureOf(literal);
  }
  search.open.Drop(search.found);
  if (answer == SymbolIndex::Answer::kHoldIt && word.IsItsLiteral()) {
    search.found.Join(search.open);
    search.open = RowBits(rows.size());
  }
  RowBits most = search.found;
  most.Join(search.open);
  search.most = most.Count();
  return search;
}

std::vector<SearchedColumns::Reader> SearchedColumns::ReadersFor(const FindWord& word) const {
  const bool in_numbers = std::all_of(word.literals().begin(), word.literals().end(), IsOfNumbers);
  std::vector<Reader> readers;
  for (size_t at = 0; at < indexed_.size(); ++at) {
    const Indexed& indexed = indexed_[at];
    if (indexed.shows_numbers_only && !in_numbers) continue;
    Reader& reader = readers.emplace_back();
    reader.column = at;
    reader.coded = indexed.coded;
    if (reader.coded == nullptr) reader.texts = std::make_unique<ColumnTexts>(sheet_.store(), *indexed.column);
  }
  return readers;
}

RowBits SearchedColumns::Finish(Search& search, const RowBits& rows) const {
  search.open.KeepOnly(rows.words());
  const std::vector<Reader> readers = ReadersFor(*search.word);
  for (size_t first = 0; first < rows.size(); first += kSearchedBlock) CompareBlock(first, search, readers);
  search.found.KeepOnly(rows.words());
  return std::move(search.found);
}

void SearchedColumns::CompareBlock(size_t first, Search& search, const std::vector<Reader>& readers) const {
  std::array<uint16_t, kSearchedBlock> open;
  size_t count = 0;
  const size_t begin = first / RowBits::kWordRows;
  const size_t end = std::min(begin + kSearchedWords, search.open.words().size());
  for (size_t word = begin; word < end; ++word) {
    for (uint64_t bits = search.open.words()[word]; bits != 0; bits &= bits - 1)
      open[count++] =
          static_cast<uint16_t>((word - begin) * RowBits::kWordRows + static_cast<size_t>(std::countr_zero(bits)));
  }
  // Texts that are only looked up cost little, and many open records usually have the word there.
  if (count > kSearchedBlock / 2) {
    for (const Reader& reader : readers) {
      if (reader.coded != nullptr) Compare(reader, first, std::span(open).first(count), search);
    }
  }
  std::array<uint64_t, kSearchedBlock> columns;  // where they can have the word
  size_t left = 0;
  for (size_t at = 0; at < count; ++at) {
    if (search.found.Has(first + open[at])) continue;
    columns[left] = search.signature == 0 ? UINT64_MAX : index_->ColumnsThatCanHold(first + open[at], search.signature);
    open[left] = open[at];
    left += static_cast<size_t>(columns[left] != 0);
  }
  std::array<uint16_t, kSearchedBlock> likely;
  for (const Reader& reader : readers) {
    if (reader.coded != nullptr && count > kSearchedBlock / 2) continue;
    const uint64_t bit = uint64_t{1} << std::min<size_t>(reader.column, 63);
    size_t likely_count = 0;
    for (size_t at = 0; at < left; ++at) {
      likely[likely_count] = open[at];
      likely_count += static_cast<size_t>((columns[at] & bit) != 0 && !search.found.Has(first + open[at]));
    }
    Compare(reader, first, std::span(likely).first(likely_count), search);
  }
}

void SearchedColumns::Compare(const Reader& reader, size_t first, std::span<const uint16_t> at, Search& search) {
  std::array<int64_t, kSearchedBlock> codes;
  while (!at.empty()) {
    size_t count = 1;
    if (reader.coded != nullptr) {
      count = reader.coded->ReadRawAt(first, at, codes).count;
      if (count == 0) return;
      reader.coded->PrefetchTexts(std::span(codes).first(count));
      for (size_t row = 0; row < count; ++row) {
        if (search.word->IsIn(reader.coded->TextOfCode(static_cast<uint32_t>(codes[row]))))
          search.found.Add(first + at[row]);
      }
    } else {
      while (count < at.size() && at[count] == at[0] + count) ++count;
      const auto texts = reader.texts->Read(static_cast<int64_t>(first + at[0]), count);
      for (size_t row = 0; row < count; ++row) {
        if (search.word->IsIn(texts[row])) search.found.Add(first + at[row]);
      }
    }
    at = at.subspan(count);
  }
}

}  // namespace stockbook::app
