// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/journal_type.h"
#include "journal/subject_keys.h"
#include "platform/connection.h"

namespace stockbook::interaction {

// The subject's texts as the header shows and offers them.
struct SubjectTexts {
  std::string key_name;
  std::string product_no;
  std::string model;
  std::string standard;
  std::string measure;
  std::string class_code;  // of a supplier or customer
};

// Key of the header picture of a journal type; every value outside of the partner and project journals has "StkBk".
std::string_view HeaderPictureKey(base::tqJournalTypeContants type);

// Turns the subject's numbers into texts by single queries. A failing query ends a lookup quietly with what it has; a
// null connection finds nothing.
class SubjectHeader {
 public:
  SubjectHeader(platform::Connection* connection, base::tqJournalTypeContants type)
      : connection_(connection), type_(type) {}

  // KeyID is a supplier in the supplier journal, a customer in the customer journal, a product in all others.
  SubjectTexts Lookup(int32_t key, bool allow_qty2) const;
  std::string DepotName(const journal::SubjectKeys& keys) const;
  // The newest accounting period.
  std::string AccPeriod() const;
  // Class code of the second key; 0 means the stored one.
  std::string SecondKeyClassCode(int32_t key, const journal::SubjectKeys& keys) const;

 private:
  std::string ReadText(const std::string& statement, std::string_view field) const;

  platform::Connection* connection_;
  base::tqJournalTypeContants type_;
};

}  // namespace stockbook::interaction
