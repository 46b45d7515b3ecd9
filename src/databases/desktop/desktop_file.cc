// SPDX-License-Identifier: MIT
#include "databases/desktop/desktop_file.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "databases/desktop/desktop_library.h"
#include "databases/desktop/page_values.h"
#include "databases/desktop/read_failure.h"

namespace stockbook::databases {
namespace {

constexpr int kTruthValue = MDB_BOOL;
constexpr uint32_t kOffsetBits = 0x1FFF;
constexpr uint32_t kMovedAway = 0x4000;   // the slot has the pointer to where the row is
constexpr uint32_t kPassedOver = 0x8000;  // deleted, or where a moved row has gone
constexpr size_t kMostColumns = 255;
constexpr size_t kMostIndexes = 1000;

using Page = std::array<unsigned char, MDB_PGSIZE>;

std::string_view BytesOfPage(const unsigned char* page) { return {reinterpret_cast<const char*>(page), MDB_PGSIZE}; }

}  // namespace

struct DesktopFile::Handle {
  MdbHandle* mdb = nullptr;
  uint64_t pages = 0;

  ~Handle() { mdb_close(mdb); }
  size_t page_bytes() const { return static_cast<size_t>(mdb->fmt->pg_size); }
};

struct DesktopFile::Scan::Slot {
  size_t start = 0;
  size_t end = 0;
  uint32_t flags = 0;
};

struct DesktopFile::Scan::Table {
  MdbCatalogEntry entry{};
  MdbTableDef* definition = nullptr;
  Page page{};      // of the slots
  Page row_page{};  // of the current row
  std::vector<MdbField> fields;
  size_t row_columns = 0;  // that there were when the row was written

  ~Table() { mdb_free_tabledef(definition); }
  MdbColumn* column(size_t index) const {
    return static_cast<MdbColumn*>(g_ptr_array_index(definition->columns, index));
  }
};

void DesktopFile::LoadLibrary() { LoadDesktopLibrary(); }

DesktopFile::DesktopFile(const std::string& path, const std::string& text_encoding)
    : handle_(std::make_unique<Handle>()) {
  // What libmdb reads from the environment would change texts, or find another file.
  for (const char* name : {"MDBICONV", "MDBPATH", "MDBOPTS"}) unsetenv(name);
  setenv("MDB_JET3_CHARSET", text_encoding.c_str(), 1);
  handle_->mdb = mdb_open(path.c_str(), MDB_NOFLAGS);
  if (handle_->mdb == nullptr) throw ReadFailure(FailureCause::kUnreadable, path);
  std::error_code error;
  handle_->pages = std::filesystem::file_size(path, error) / handle_->page_bytes();
  if (error) throw ReadFailure(FailureCause::kUnreadable, path);
}

DesktopFile::~DesktopFile() = default;

DesktopFile::Scan::Scan(DesktopFile& file, const std::string& name, uint32_t page)
    : file_(file), name_(name), table_(std::make_unique<Table>()) {
  if (page == 0 || page >= file_.handle_->pages) Damaged();
  MdbCatalogEntry& entry = table_->entry;
  entry.mdb = file_.handle_->mdb;
  entry.object_type = MDB_TABLE;
  entry.table_pg = page;
  name_.copy(entry.object_name, MDB_MAX_OBJ_NAME);
  table_->definition = mdb_read_table(&entry);
  if (table_->definition == nullptr) Damaged();
  const MdbTableDef& definition = *table_->definition;
  if (definition.num_cols == 0 || definition.num_cols > kMostColumns || definition.num_idxs > kMostIndexes ||
      definition.num_real_idxs > kMostIndexes || definition.map_sz == 0) {
    Damaged();
  }
  ReadColumns();
  ReadIndexes();
  table_->fields.resize(columns_.size());
}

DesktopFile::Scan::~Scan() = default;

void DesktopFile::Scan::Damaged() const { throw ReadFailure(FailureCause::kDamaged, name_); }

void DesktopFile::Scan::ReadColumns() {
  if (mdb_read_columns(table_->definition) == nullptr) Damaged();
  for (size_t index = 0; index < table_->definition->num_cols; ++index) {
    const MdbColumn* column = table_->column(index);
    // libmdb calls the scale precision, and the other way round.
    columns_.push_back({column->name, column->col_type, column->col_prec});
    if (columns_.back().name.empty()) Damaged();
  }
}

// Right after the columns: the page that libmdb was on last is where the indexes begin.
void DesktopFile::Scan::ReadIndexes() {
  if (table_->definition->num_idxs == 0) return;
  mdb_read_indices(table_->definition);
  if (table_->definition->indices == nullptr) Damaged();
  constexpr int kOfRelation = 2;
  for (size_t number = 0; number < table_->definition->indices->len; ++number) {
    const auto* index = static_cast<const MdbIndex*>(g_ptr_array_index(table_->definition->indices, number));
    if (index->index_type == kOfRelation || index->num_keys == 0 || index->num_keys > MDB_MAX_IDX_COLS) continue;
    DesktopIndex found;
    for (size_t key = 0; key < index->num_keys; ++key) {
      const int column = index->key_col_num[key] - 1;
      if (column < 0 || static_cast<size_t>(column) >= columns_.size()) Damaged();
      found.columns.push_back(static_cast<uint32_t>(column));
    }
    found.repetition = (index->flags & MDB_IDX_UNIQUE) != 0 ? Repetition::kForbidden : Repetition::kAllowed;
    indexes_.push_back(found);
  }
}

bool DesktopFile::Scan::Next() {
  for (;;) {
    while (slot_ < slots_) {
      if (Enter(SlotOf(table_->page.data(), slot_++))) {
        ++rows_;
        return true;
      }
    }
    if (!NextPage()) break;
  }
  // A program that ended badly leaves the count at less than there are, or at zero; never at more.
  if (rows_ < table_->definition->num_rows) Damaged();
  return false;
}

// libmdb's own walk ends quietly at a page that cannot be read, so only the map is asked here.
bool DesktopFile::Scan::NextPage() {
  MdbHandle* mdb = file_.handle_->mdb;
  const MdbTableDef& definition = *table_->definition;
  for (;;) {
    const int32_t next = mdb_map_find_next(mdb, definition.usage_map, static_cast<unsigned>(definition.map_sz), page_);
    if (next == 0) return false;
    if (next < 0 || static_cast<uint32_t>(next) <= page_ || static_cast<uint64_t>(next) >= file_.handle_->pages)
      Damaged();
    page_ = static_cast<uint32_t>(next);
    if (mdb_read_pg(mdb, page_) == 0) throw ReadFailure(FailureCause::kUnreadable, name_);
    const std::string_view bytes = BytesOfPage(mdb->pg_buf);
    // The map also has pages that the table no longer uses.
    if (mdb->pg_buf[0] != MDB_PAGE_DATA || LongAt(bytes, 4) != table_->entry.table_pg) continue;
    const size_t count_at = mdb->fmt->row_count_offset;
    slots_ = WordAt(bytes, count_at);
    slot_ = 0;
    if (count_at + 2 + slots_ * 2 > file_.handle_->page_bytes()) Damaged();
    std::memcpy(table_->page.data(), mdb->pg_buf, sizeof(Page));
    return true;
  }
}

DesktopFile::Scan::Slot DesktopFile::Scan::SlotOf(const unsigned char* page, size_t number) const {
  const size_t count_at = file_.handle_->mdb->fmt->row_count_offset;
  const size_t page_bytes = file_.handle_->page_bytes();
  if (number >= WordAt(BytesOfPage(page), count_at) || count_at + 4 + number * 2 > page_bytes) Damaged();
  const uint32_t entry = WordAt(BytesOfPage(page), count_at + 2 + number * 2);
  const size_t end = number == 0 ? page_bytes : WordAt(BytesOfPage(page), count_at + number * 2) & kOffsetBits;
  const Slot slot{entry & kOffsetBits, end, entry & ~kOffsetBits};
  if (slot.start > slot.end || slot.end > page_bytes) Damaged();
  return slot;
}

// Reads the row of a slot, unless there is none.
bool DesktopFile::Scan::Enter(const Slot& slot) {
  if ((slot.flags & kPassedOver) != 0 || slot.start == slot.end) return false;
  if ((slot.flags & kMovedAway) == 0) {
    Crack(table_->page.data(), slot);
    return true;
  }
  MdbHandle* mdb = file_.handle_->mdb;
  Slot at = slot;
  Page page = table_->page;
  constexpr int kMostMoves = 16;
  for (int moves = 0; (at.flags & kMovedAway) != 0; ++moves) {
    if (moves == kMostMoves || at.end - at.start < 4) Damaged();
    const uint32_t pointer = LongAt(BytesOfPage(page.data()), at.start);
    if (pointer >> 8 >= file_.handle_->pages || mdb_read_alt_pg(mdb, pointer >> 8) == 0) Damaged();
    std::memcpy(page.data(), mdb->alt_pg_buf, sizeof(Page));
    if (page[0] != MDB_PAGE_DATA) Damaged();
    at = SlotOf(page.data(), pointer & 0xFF);
  }
  // libmdb takes rows apart in its own page alone.
  std::memcpy(mdb->pg_buf, page.data(), sizeof(Page));
  Crack(page.data(), at);
  std::memcpy(mdb->pg_buf, table_->page.data(), sizeof(Page));
  return true;
}

void DesktopFile::Scan::Crack(const unsigned char* page, const Slot& slot) {
  const int columns =
      mdb_crack_row(table_->definition, static_cast<int>(slot.start), slot.end - slot.start, table_->fields.data());
  if (columns < 0) Damaged();
  table_->row_columns = static_cast<size_t>(columns);
  std::memcpy(table_->row_page.data(), page, sizeof(Page));
  for (size_t index = 0; index < table_->fields.size(); ++index) {
    const MdbField& field = table_->fields[index];
    if (field.is_null != 0 || table_->column(index)->col_type == kTruthValue) continue;
    if (field.siz < 0 || field.start < static_cast<int>(slot.start) ||
        static_cast<size_t>(field.start) + static_cast<size_t>(field.siz) > slot.end) {
      Damaged();
    }
  }
}

std::optional<std::string_view> DesktopFile::Scan::Field(size_t column) const {
  const MdbField& field = table_->fields[column];
  // A row that is older than the column has nothing where the column's bit would be.
  if (field.is_null != 0 || static_cast<size_t>(table_->column(column)->col_num) >= table_->row_columns) return {};
  if (columns_[column].type == kTruthValue) return std::string_view();
  return BytesOfPage(table_->row_page.data()).substr(static_cast<size_t>(field.start), static_cast<size_t>(field.siz));
}

std::string DesktopFile::Scan::LongValue(std::string_view field) const {
  constexpr uint32_t kInRow = 0x80000000;
  constexpr uint32_t kInOnePiece = 0x40000000;
  if (field.size() < MDB_MEMO_OVERHEAD) Damaged();
  const uint32_t mark = LongAt(field, 0);
  const size_t bytes = mark & ~(kInRow | kInOnePiece);
  if (bytes > file_.handle_->pages * file_.handle_->page_bytes()) Damaged();
  if ((mark & kInRow) != 0) {
    if (field.size() - MDB_MEMO_OVERHEAD < bytes) Damaged();
    return std::string(field.substr(MDB_MEMO_OVERHEAD, bytes));
  }
  uint32_t pointer = LongAt(field, 4);
  if ((mark & kInOnePiece) != 0) {
    std::string value = LongValuePiece(pointer);
    if (value.size() < bytes) Damaged();
    return value.substr(0, bytes);
  }
  std::string value;
  while (value.size() < bytes) {
    const std::string piece = LongValuePiece(pointer);
    // A chain of empty pieces would have no end.
    if (pointer == 0 || piece.size() <= 4) Damaged();
    pointer = LongAt(piece, 0);
    value.append(piece, 4);
  }
  value.resize(bytes);
  return value;
}

std::string DesktopFile::Scan::LongValuePiece(uint32_t pointer) const {
  MdbHandle* mdb = file_.handle_->mdb;
  if (pointer >> 8 >= file_.handle_->pages || mdb_read_alt_pg(mdb, pointer >> 8) == 0) Damaged();
  if (mdb->alt_pg_buf[0] != MDB_PAGE_DATA) Damaged();
  const Slot slot = SlotOf(mdb->alt_pg_buf, pointer & 0xFF);
  return std::string(BytesOfPage(mdb->alt_pg_buf).substr(slot.start, slot.end - slot.start));
}

}  // namespace stockbook::databases
