// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "databases/table_writer.h"
#include "stockbook/inventory/inventory_file.h"

namespace stockbook::app {

// Writes a new embedded database. What is read back comes through a connection of its own, from the file that Seal has
// closed and that Commit only puts on the disk and renames.
class FileTableWriter : public databases::TableWriter {
 public:
  explicit FileTableWriter(const std::string& path) : file_(path) {}

  void Create(const databases::StoredTable& table) override;
  void Write(const databases::StoredTable& table, std::span<const columns::Column> columns, size_t first,
             size_t count) override;
  void Seal(std::span<const databases::StoredIndex> indexes) override;
  std::vector<columns::Column> ReadBack(const databases::StoredTable& table) override;
  void Commit() override { file_.Commit(); }

 private:
  InventoryFile file_;
};

}  // namespace stockbook::app
