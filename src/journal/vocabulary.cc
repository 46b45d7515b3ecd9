// SPDX-License-Identifier: MIT
#include "journal/vocabulary.h"

#include <array>

#include "journal/schema.h"

namespace stockbook::journal {
namespace {

struct Words {
  std::string_view subject_table;
  std::string_view class_table;
  std::string_view subject_key_field;
  std::string_view format_name;
};

constexpr std::array<Words, 4> kWords = {{
    {schema::kProducts, schema::kProductClasses, "pdID", "Stockbook"},
    {schema::kSuppliers, schema::kSupplierClasses, "ksID", "SupplierJournal"},
    {schema::kCustomers, schema::kCustomerClasses, "ksID", "CustomerJournal"},
    {schema::kProjects, schema::kProjectClasses, "项目ID", "ProjectJournal"},
}};

Words WordsOf(base::tqJournalTypeContants type) {
  const auto index = static_cast<size_t>(type);
  return index < kWords.size() ? kWords[index] : Words{};
}

}  // namespace

std::string_view SubjectTable(base::tqJournalTypeContants type) { return WordsOf(type).subject_table; }
std::string_view ClassTable(base::tqJournalTypeContants type) { return WordsOf(type).class_table; }
std::string_view SubjectKeyField(base::tqJournalTypeContants type) { return WordsOf(type).subject_key_field; }
std::string_view FmtName(base::tqJournalTypeContants type) { return WordsOf(type).format_name; }

}  // namespace stockbook::journal
