// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stockbook::testing {

// The bytes of numbers as a desktop file stores them, and of a text in UTF-16.
std::string LittleEndian(uint64_t number, size_t bytes);
std::string DoubleBytes(double number);
std::string WideBytes(std::u16string_view text);

// Makes the bytes of small desktop files, since no such file is kept with the sources. What it does not know of a
// format it leaves out: there are no indexes, and a table has as many rows as a page holds.
class DesktopFileMaker {
 public:
  enum class Format { kJet3, kJet4 };
  enum Type : int {
    kTruth = 1,
    kByte = 2,
    kShort = 3,
    kLong = 4,
    kMoney = 5,
    kSingle = 6,
    kDouble = 7,
    kDate = 8,
    kBinary = 9,
    kText = 10,
    kObject = 11,
    kMemo = 12,
    kUnique = 15,
    kDecimal = 16,
  };
  struct Column {
    std::string name;  // bytes of the format's own encoding
    int type = kLong;
    int scale = 0;
  };
  // A field's bytes; a truth value is true when it is there.
  using Fields = std::vector<std::optional<std::string>>;

  explicit DesktopFileMaker(Format format = Format::kJet4);

  void SetCodePage(uint16_t code_page) { code_page_ = code_page; }
  void SetLanguage(uint16_t language) { language_ = language; }
  void SetPassword(const std::string& bytes) { password_ = bytes; }
  // The number that other calls know it by.
  size_t AddTable(const std::string& name, std::vector<Column> columns);
  // A row of the first columns alone is one that is older than the others.
  void AddRow(size_t table, const Fields& fields);
  // Like AddRow, and then deleted; moved to another page; and moved, then deleted.
  void AddDeletedRow(size_t table, const Fields& fields);
  void AddMovedRow(size_t table, const Fields& fields);
  void AddMovedDeletedRow(size_t table, const Fields& fields);
  void SetRowCount(size_t table, uint32_t rows) { tables_[table].told_rows = rows; }
  // A table that is in another file.
  void AddLink(const std::string& name);
  // The field that stands for a long value in pieces of up to `piece` bytes.
  std::string LongField(const std::string& value, size_t piece);
  static std::string InlineField(const std::string& value);

  std::string Bytes() const;

 private:
  struct Slot {
    std::string row;
    uint32_t flags = 0;
  };
  struct Table {
    std::vector<Column> columns;
    std::vector<Slot> slots;
    std::vector<Slot> far_slots;  // of moved rows, on the table's other page
    uint32_t definition_page = 0;
    uint32_t page = 0;
    uint32_t far_page = 0;
    std::optional<uint32_t> told_rows;
  };
  bool is_jet3() const { return format_ == Format::kJet3; }
  size_t page_bytes() const { return is_jet3() ? 2048 : 4096; }
  void AddObject(const std::string& name, uint32_t id, int type);
  Slot MovedSlot(Table& table, const Fields& fields);
  std::string Row(const Table& table, const Fields& fields) const;
  std::string HeaderPage() const;
  // `variable` and `fixed_offset` count what the columns before it have of either kind.
  std::string ColumnEntry(const Column& column, size_t index, size_t variable, size_t fixed_offset) const;
  std::string DefinitionPage(const Table& table, size_t number) const;
  std::string DataPage(const std::string& owner, const std::vector<Slot>& slots) const;
  std::string MapPage() const;

  Format format_;
  uint16_t code_page_ = 1252;
  uint16_t language_ = 0x409;
  std::string password_;
  std::vector<Table> tables_;  // the first is the catalogue
  std::vector<std::vector<Slot>> long_values_;
  std::vector<uint32_t> long_pages_;
  uint32_t next_page_ = 2;
};

}  // namespace stockbook::testing
