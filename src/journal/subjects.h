// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "stockbook/base/journal_type.h"

namespace stockbook::journal {

// The subject's texts as the header shows and offers them.
struct SubjectTexts {
  std::string key_name;
  std::string product_no;
  std::string model;
  std::string standard;
  std::string measure;
  std::string class_code;  // of a supplier or customer

  bool operator==(const SubjectTexts&) const = default;
};

// A supplier, customer or project.
struct Member {
  std::string name;
  std::string class_code;
};

enum class SecondUnit { kHidden, kShown };

// Turns the numbers and codes that name a journal's subject into texts, by a single query each. If a statement fails,
// the lookup returns what it has so far and tells the error; without a connection it finds nothing.
class Subjects {
 public:
  Subjects(Inventory inventory, base::tqJournalTypeContants type) : inventory_(std::move(inventory)), type_(type) {}

  // The key is a supplier's in the supplier journal, a customer's in the customer journal and a product's in all
  // others.
  SubjectTexts Read(int32_t key, SecondUnit second_unit) const;
  // The partner or project of a partner or project journal.
  Member ReadMember(int32_t key) const;
  // The depot, or 全部仓库 (all depots); in all but the stock journal the project, its class, or 全部项目 (all
  // projects).
  std::string DepotName(const SubjectKeys& keys) const;
  // The class code of the second key; 0 means the stored one. The statement of projects names a key that their table
  // need not have, so that its failure is expected and not told.
  std::string SecondKeyClassCode(int32_t key, const SubjectKeys& keys) const;
  // Gives the keys of a product without a class code the class code of their second key.
  void CompleteClassCode(SubjectKeys& keys) const;
  // The names of a class and of the classes above it, from the top down: those of the code's prefixes of 2, 4, 6, 8 and
  // 10 characters.
  std::vector<std::string> ClassNames(std::string_view code) const;

 private:
  std::string ReadText(const std::string& statement, std::string_view field) const;

  Inventory inventory_;
  base::tqJournalTypeContants type_;
};

}  // namespace stockbook::journal
