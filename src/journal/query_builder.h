// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "stockbook/base/journal_type.h"

namespace stockbook::journal {

// Builds the one statement of a journal: every receipt and/or issue line of the subject, sorted, under the aliases that
// are the grid's column keys. Reads class members and the newest period from the connection; runs nothing else. Two
// inputs deliberately give statements that the database refuses: a partner journal over an empty class with a product,
// and partner or project journals in the server dialect. Throws when there is no connection, and what its inventory
// throws.
class QueryBuilder {
 public:
  // `progress` is called with 10 and 20 as the parts are built.
  QueryBuilder(Inventory inventory, base::tqJournalTypeContants type, SubjectKeys keys,
               std::function<void(int)> progress = {});

  std::string Build() const;

 private:
  std::string Material() const;
  std::string Supplier() const;
  std::string Customer() const;
  std::string Project() const;
  std::string SelectHead() const;
  std::string PeriodLimit() const;
  std::string PartnerSort() const;
  std::string PartnerCondition(const std::string& class_code) const;
  std::string MaterialCondition() const;
  std::string ProjectCondition() const;
  void Progress(int indicator) const;

  platform::Connection* connection() const { return inventory_.connection(); }

  Inventory inventory_;
  base::tqJournalTypeContants type_;
  SubjectKeys keys_;
  std::function<void(int)> progress_;
};

}  // namespace stockbook::journal
