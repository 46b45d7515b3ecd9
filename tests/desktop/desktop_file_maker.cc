// SPDX-License-Identifier: MIT
#include "desktop/desktop_file_maker.h"

#include <array>
#include <cstring>
#include <numeric>
#include <utility>

namespace stockbook::testing {
namespace {

constexpr uint32_t kMapPage = 1;
constexpr uint32_t kRowMoved = 0x4000;
constexpr uint32_t kRowDeletedOrFar = 0x8000;
constexpr double kCreated = 38000.5;

void Put(std::string& page, size_t at, const std::string& bytes) { page.replace(at, bytes.size(), bytes); }

bool IsVariable(int type) {
  return type == DesktopFileMaker::kText || type == DesktopFileMaker::kMemo || type == DesktopFileMaker::kObject ||
         type == DesktopFileMaker::kBinary;
}

size_t FixedBytes(int type) {
  switch (type) {
    case DesktopFileMaker::kTruth:
      return 0;
    case DesktopFileMaker::kByte:
      return 1;
    case DesktopFileMaker::kShort:
      return 2;
    case DesktopFileMaker::kLong:
    case DesktopFileMaker::kSingle:
      return 4;
    case DesktopFileMaker::kUnique:
      return 16;
    case DesktopFileMaker::kDecimal:
      return 17;
    default:
      return 8;
  }
}

// RC4 with the key of every header.
void Scramble(std::string& page, size_t at, size_t count) {
  const std::array<unsigned, 4> key = {0xC7, 0xDA, 0x39, 0x6B};
  std::array<unsigned, 256> box{};
  std::iota(box.begin(), box.end(), 0U);
  for (unsigned i = 0, j = 0; i < 256; ++i) {
    j = (j + box[i] + key[i % 4]) % 256;
    std::swap(box[i], box[j]);
  }
  for (unsigned n = 0, i = 0, j = 0; n < count; ++n) {
    i = (i + 1) % 256;
    j = (j + box[i]) % 256;
    std::swap(box[i], box[j]);
    page[at + n] = static_cast<char>(static_cast<unsigned char>(page[at + n]) ^ box[(box[i] + box[j]) % 256]);
  }
}

std::string Pointer(uint32_t page, size_t row) { return LittleEndian(page << 8 | static_cast<uint32_t>(row), 4); }

}  // namespace

std::string LittleEndian(uint64_t number, size_t bytes) {
  std::string text;
  for (size_t index = 0; index < bytes; ++index) text += static_cast<char>(number >> (8 * index) & 0xFF);
  return text;
}

std::string DoubleBytes(double number) {
  uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return LittleEndian(bits, 8);
}

std::string WideBytes(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += LittleEndian(unit, 2);
  return bytes;
}

DesktopFileMaker::DesktopFileMaker(Format format) : format_(format) {
  const auto name = [&](const char* text) {
    std::string wide;
    for (const char* at = text; *at != '\0'; ++at) wide += is_jet3() ? std::string(1, *at) : std::string{*at, '\0'};
    return wide;
  };
  Table catalog;
  catalog.columns = {{name("Id"), kLong}, {name("Type"), kShort}, {name("Flags"), kLong}, {name("Name"), kText}};
  catalog.definition_page = next_page_++;
  catalog.page = next_page_++;
  catalog.far_page = next_page_++;
  tables_.push_back(catalog);
}

void DesktopFileMaker::AddObject(const std::string& name, uint32_t id, int type) {
  AddRow(0, {LittleEndian(id, 4), LittleEndian(static_cast<uint64_t>(type), 2), LittleEndian(0, 4), name});
}

size_t DesktopFileMaker::AddTable(const std::string& name, std::vector<Column> columns) {
  Table table;
  table.columns = std::move(columns);
  table.definition_page = next_page_++;
  table.page = next_page_++;
  table.far_page = next_page_++;
  AddObject(name, table.definition_page, 1);
  tables_.push_back(table);
  return tables_.size() - 1;
}

void DesktopFileMaker::AddLink(const std::string& name) { AddObject(name, 0x7000, 6); }

void DesktopFileMaker::AddRow(size_t table, const Fields& fields) {
  tables_[table].slots.push_back({Row(tables_[table], fields), 0});
}

void DesktopFileMaker::AddDeletedRow(size_t table, const Fields& fields) {
  tables_[table].slots.push_back({Row(tables_[table], fields), kRowDeletedOrFar | kRowMoved});
}

DesktopFileMaker::Slot DesktopFileMaker::MovedSlot(Table& table, const Fields& fields) {
  table.far_slots.push_back({Row(table, fields), kRowDeletedOrFar});
  return {Pointer(table.far_page, table.far_slots.size() - 1), kRowMoved};
}

void DesktopFileMaker::AddMovedRow(size_t table, const Fields& fields) {
  tables_[table].slots.push_back(MovedSlot(tables_[table], fields));
}

void DesktopFileMaker::AddMovedDeletedRow(size_t table, const Fields& fields) {
  Slot slot = MovedSlot(tables_[table], fields);
  slot.flags |= kRowDeletedOrFar;
  tables_[table].slots.push_back(slot);
}

std::string DesktopFileMaker::InlineField(const std::string& value) {
  return LittleEndian(0x80000000 | value.size(), 4) + std::string(8, '\0') + value;
}

std::string DesktopFileMaker::LongField(const std::string& value, size_t piece) {
  if (value.size() <= piece) {
    long_pages_.push_back(next_page_++);
    long_values_.push_back({{value, 0}});
    return LittleEndian(0x40000000 | value.size(), 4) + Pointer(long_pages_.back(), 0) + std::string(4, '\0');
  }
  // The pieces after one another, each on a page of its own and each with the place of the next.
  const uint32_t first = next_page_;
  for (size_t at = 0; at < value.size(); at += piece) {
    long_pages_.push_back(next_page_++);
    const bool last = at + piece >= value.size();
    long_values_.push_back({{(last ? LittleEndian(0, 4) : Pointer(next_page_, 0)) + value.substr(at, piece), 0}});
  }
  return LittleEndian(value.size(), 4) + Pointer(first, 0) + std::string(4, '\0');
}

std::string DesktopFileMaker::Row(const Table& table, const Fields& fields) const {
  const size_t count_bytes = is_jet3() ? 1 : 2;
  std::string row = LittleEndian(fields.size(), count_bytes);
  std::string mask((fields.size() + 7) / 8, '\0');
  std::vector<size_t> offsets;
  for (size_t index = 0; index < fields.size(); ++index) {
    if (fields[index]) mask[index / 8] = static_cast<char>(mask[index / 8] | 1 << index % 8);
    const int type = table.columns[index].type;
    if (!IsVariable(type)) row += fields[index].value_or("") + std::string(fields[index] ? 0 : FixedBytes(type), '\0');
  }
  for (size_t index = 0; index < fields.size(); ++index) {
    if (!IsVariable(table.columns[index].type)) continue;
    offsets.push_back(row.size());
    row += fields[index].value_or("");
  }
  const size_t variable = offsets.size();
  offsets.push_back(row.size());
  for (size_t index = offsets.size(); index-- > 0;) row += LittleEndian(offsets[index], count_bytes);
  return row + LittleEndian(variable, count_bytes) + mask;
}

std::string DesktopFileMaker::HeaderPage() const {
  std::string page(page_bytes(), '\0');
  Put(page, 0, std::string("\0\1\0\0Standard Jet DB\0", 20));
  page[0x14] = is_jet3() ? 0 : 1;
  Put(page, 0x3c, LittleEndian(code_page_, 2));
  Put(page, is_jet3() ? 0x3a : 0x6e, LittleEndian(language_, 2));
  Put(page, 0x42, password_);
  if (!is_jet3()) {
    Put(page, 0x72, DoubleBytes(kCreated));
    const std::string mask = LittleEndian(static_cast<uint64_t>(kCreated), 4);
    for (size_t index = 0; index < 40; ++index)
      page[0x42 + index] = static_cast<char>(page[0x42 + index] ^ mask[index % 4]);
  }
  Scramble(page, 0x18, is_jet3() ? 126 : 128);
  return page;
}

std::string DesktopFileMaker::ColumnEntry(const Column& column, size_t index, size_t variable,
                                          size_t fixed_offset) const {
  std::string entry(is_jet3() ? 18 : 25, '\0');
  entry[0] = static_cast<char>(column.type);
  Put(entry, is_jet3() ? 1 : 5, LittleEndian(index, 2));
  Put(entry, is_jet3() ? 3 : 7, LittleEndian(variable, 2) + LittleEndian(index, 2));
  Put(entry, is_jet3() ? 9 : 11, LittleEndian(28, 1) + LittleEndian(static_cast<uint64_t>(column.scale), 1));
  entry[is_jet3() ? 13 : 15] = static_cast<char>(IsVariable(column.type) ? 2 : 3);
  const size_t size = IsVariable(column.type) ? 255 : FixedBytes(column.type);
  Put(entry, is_jet3() ? 14 : 21, LittleEndian(fixed_offset, 2) + LittleEndian(size, 2));
  return entry;
}

std::string DesktopFileMaker::DefinitionPage(const Table& table, size_t number) const {
  std::string page(page_bytes(), '\0');
  Put(page, 0, std::string("\2\1VC", 4));
  size_t variable = 0;
  for (const Column& column : table.columns) variable += IsVariable(column.type) ? 1U : 0U;
  size_t rows = 0;
  for (const Slot& slot : table.slots) rows += (slot.flags & kRowDeletedOrFar) == 0 ? 1U : 0U;
  Put(page, is_jet3() ? 12 : 16, LittleEndian(table.told_rows.value_or(static_cast<uint32_t>(rows)), 4));
  Put(page, is_jet3() ? 23 : 43, LittleEndian(variable, 2) + LittleEndian(table.columns.size(), 2));
  Put(page, is_jet3() ? 35 : 55, Pointer(kMapPage, number * 2) + Pointer(kMapPage, number * 2 + 1));
  size_t at = is_jet3() ? 43 : 63;
  size_t fixed_offset = 0;
  variable = 0;
  std::string names;
  for (size_t index = 0; index < table.columns.size(); ++index) {
    const Column& column = table.columns[index];
    const std::string entry = ColumnEntry(column, index, variable, fixed_offset);
    IsVariable(column.type) ? ++variable : fixed_offset += FixedBytes(column.type);
    Put(page, at, entry);
    at += entry.size();
    names += LittleEndian(column.name.size(), is_jet3() ? 1 : 2) + column.name;
  }
  Put(page, at, names);
  return page;
}

std::string DesktopFileMaker::DataPage(const std::string& owner, const std::vector<Slot>& slots) const {
  std::string page(page_bytes(), '\0');
  Put(page, 0, std::string("\1\1", 2));
  Put(page, 4, owner);
  const size_t count_at = is_jet3() ? 8 : 12;
  Put(page, count_at, LittleEndian(slots.size(), 2));
  size_t end = page.size();
  for (size_t index = 0; index < slots.size(); ++index) {
    end -= slots[index].row.size();
    Put(page, end, slots[index].row);
    Put(page, count_at + 2 + index * 2, LittleEndian(end | slots[index].flags, 2));
  }
  return page;
}

// Two maps for each table: the pages that it has, and those of them with room.
std::string DesktopFileMaker::MapPage() const {
  std::vector<Slot> maps;
  for (const Table& table : tables_) {
    std::string bits(16, '\0');
    for (const uint32_t page : {table.page, table.far_page}) {
      bits[page / 8] = static_cast<char>(bits[page / 8] | 1 << page % 8);
    }
    maps.push_back({std::string(5, '\0') + bits, 0});
    maps.push_back({std::string(5 + bits.size(), '\0'), 0});
  }
  return DataPage(LittleEndian(0, 4), maps);
}

std::string DesktopFileMaker::Bytes() const {
  std::vector<std::string> pages(next_page_, std::string(page_bytes(), '\0'));
  pages[0] = HeaderPage();
  pages[kMapPage] = MapPage();
  for (size_t number = 0; number < tables_.size(); ++number) {
    const Table& table = tables_[number];
    const std::string owner = LittleEndian(table.definition_page, 4);
    pages[table.definition_page] = DefinitionPage(table, number);
    pages[table.page] = DataPage(owner, table.slots);
    pages[table.far_page] = DataPage(owner, table.far_slots);
  }
  for (size_t index = 0; index < long_pages_.size(); ++index)
    pages[long_pages_[index]] = DataPage("LVAL", long_values_[index]);
  std::string bytes;
  for (const std::string& page : pages) bytes += page;
  return bytes;
}

}  // namespace stockbook::testing
