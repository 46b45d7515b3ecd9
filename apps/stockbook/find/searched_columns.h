// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "sheet/store/column_texts.h"
#include "stockbook/find/find_words.h"
#include "stockbook/find/row_bits.h"
#include "stockbook/find/symbol_index.h"
#include "stockbook/sheet/contents/sheet.h"

namespace stockbook::app {

// What the shown columns of a sheet hold in its records, read once so that words are found fast. Columns of few
// distinct texts are searched text by text; of all others a SymbolIndex tells where a word can be, and only there the
// texts are made and compared. Borrows the sheet, which must not change meanwhile.
class SearchedColumns {
 public:
  explicit SearchedColumns(const sheet::Sheet& sheet);

  // A word that is half looked for: the rows that have it, and those that have yet to be looked at.
  struct Search {
    const FindWord* word = nullptr;
    RowBits found;
    RowBits open;
    uint32_t signature = 0;
    size_t most = 0;  // rows that can turn out to have it
  };
  // Does what costs the same whatever `rows` is left; the word must stay.
  Search Begin(const FindWord& word, const RowBits& rows) const;
  // The rows among `rows` that have the word.
  RowBits Finish(Search& search, const RowBits& rows) const;

  size_t MemoryBytes() const { return index_ == nullptr ? 0 : index_->MemoryBytes(); }

 private:
  // A column whose texts are made to be compared.
  struct Indexed {
    const sheet::SheetColumn* column = nullptr;
    const columns::Column* coded = nullptr;  // set if it shows its texts as they are
    bool shows_numbers_only = true;          // digits, points, commas and minus signs
  };

  void Index();
  void FindByCode(const columns::Column& column, const FindWord& word, RowBits& found) const;
  // A column to compare texts of, by its place among the indexed ones: by the codes of its texts, or as they are made.
  struct Reader {
    size_t column = 0;
    const columns::Column* coded = nullptr;
    std::unique_ptr<sheet::ColumnTexts> texts;
  };
  std::vector<Reader> ReadersFor(const FindWord& word) const;
  // Looks at the open records of a block of them.
  void CompareBlock(size_t first, Search& search, const std::vector<Reader>& readers) const;
  // Adds those of the records first + at[0], ... to what was found.
  static void Compare(const Reader& reader, size_t first, std::span<const uint16_t> at, Search& search);

  const sheet::Sheet& sheet_;
  std::vector<const columns::Column*> coded_;
  std::vector<Indexed> indexed_;
  std::unique_ptr<SymbolIndex> index_;
};

}  // namespace stockbook::app
