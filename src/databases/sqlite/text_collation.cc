// SPDX-License-Identifier: MIT
#include "databases/sqlite/text_collation.h"

#include <string_view>

#include "databases/dialect/operators.h"
#include "databases/dialect/sqlite_emitter.h"

namespace stockbook::databases {
namespace {

int Collate(void*, int left_size, const void* left, int right_size, const void* right) {
  return CompareTexts({static_cast<const char*>(left), static_cast<size_t>(left_size)},
                      {static_cast<const char*>(right), static_cast<size_t>(right_size)});
}

}  // namespace

void RegisterTextCollation(const Database& database) {
  if (sqlite3_create_collation(database.handle(), kTextCollation, SQLITE_UTF8, nullptr, Collate) != SQLITE_OK)
    throw database.ErrorOf("Open");
}

}  // namespace stockbook::databases
