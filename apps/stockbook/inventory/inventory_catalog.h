// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stockbook/base/journal_type.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// One entry of a chooser: a subject by its key, or with key 0 the class of the code, or without a code all subjects.
struct CatalogEntry {
  int32_t key = 0;
  std::string class_code;
  std::string text;
  // Its other texts, line by line, for whoever searches it by something that is not shown.
  std::string words = {};

  bool operator==(const CatalogEntry&) const = default;
};

// The choices that an inventory offers, read from its master tables. Database errors are passed on.
class InventoryCatalog {
 public:
  explicit InventoryCatalog(platform::Connection& connection) : connection_(connection) {}

  // "1001  六角螺栓  M8  GB5783", by product number.
  std::vector<CatalogEntry> Products() const;
  // The depots, suppliers, customers or projects of a journal type, "all" first, then the classes, then the subjects.
  std::vector<CatalogEntry> SecondKeys(base::tqJournalTypeContants type) const;
  // Product 1 if it has lines, otherwise the first product with lines; 0 if there are none.
  int32_t FirstProductWithLines() const;

 private:
  int32_t LowestProduct(const std::string& statement) const;

  platform::Connection& connection_;
};

}  // namespace stockbook::app
