// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "databases/desktop/table_sink.h"

namespace stockbook::databases {

// A column as the file describes it.
struct StoredColumn {
  std::string name;
  int type = 0;   // the number that the file calls it by
  int scale = 0;  // of decimals
};

// A desktop file, read through libmdb, which the source of this class alone includes. Whatever it meets in a damaged
// file is a ReadFailure as far as it can be known; libmdb may crash or never come back all the same, so a host's own
// process never reads one.
class DesktopFile {
 public:
  // What must have been called before the process is copied that makes a DesktopFile. Throws platform::Error where
  // libmdb is not installed.
  static void LoadLibrary();
  // `text_encoding` is that of the names in a Jet 3 file.
  DesktopFile(const std::string& path, const std::string& text_encoding);
  ~DesktopFile();
  DesktopFile(const DesktopFile&) = delete;
  DesktopFile& operator=(const DesktopFile&) = delete;

  static constexpr uint32_t kCatalogPage = 2;

  // A table with its place in the rows. Those of deleted rows are passed over, and a row that was moved to another page
  // is read there and keeps its place.
  class Scan {
   public:
    Scan(DesktopFile& file, const std::string& name, uint32_t page);
    ~Scan();
    Scan(const Scan&) = delete;
    Scan& operator=(const Scan&) = delete;

    const std::vector<StoredColumn>& columns() const { return columns_; }
    const std::vector<DesktopIndex>& indexes() const { return indexes_; }
    // Goes to the next row; false after the last.
    bool Next();
    // Of the current row, valid until the next; nothing for null. A truth value is there, and empty, when it is true.
    std::optional<std::string_view> Field(size_t column) const;
    // What the field of a memo or a large object stands for.
    std::string LongValue(std::string_view field) const;

   private:
    struct Slot;
    struct Table;
    void ReadColumns();
    void ReadIndexes();
    bool NextPage();
    Slot SlotOf(const unsigned char* page, size_t number) const;
    bool Enter(const Slot& slot);
    void Crack(const unsigned char* page, const Slot& slot);
    std::string LongValuePiece(uint32_t pointer) const;
    [[noreturn]] void Damaged() const;

    DesktopFile& file_;
    std::string name_;
    std::unique_ptr<Table> table_;
    std::vector<StoredColumn> columns_;
    std::vector<DesktopIndex> indexes_;
    size_t slot_ = 0;
    size_t slots_ = 0;
    uint32_t page_ = 0;
    uint64_t rows_ = 0;
  };

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace stockbook::databases
