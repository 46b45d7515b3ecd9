// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "stockbook/base/journal_type.h"

namespace stockbook::journal {

// The words that a journal type stands for: names of the host's database, sent as they are spelled, and keys of images.
struct JournalWords {
  std::string_view subject_table;
  std::string_view class_table;        // the class tree of the subjects
  std::string_view subject_key_field;  // suppliers and customers share one
  std::string_view subject_name_field;
  std::string_view class_code_key;             // the key field for looking up a subject's class code; "" for no lookup
  std::string_view format_name;                // the type's long name, for the host's use
  std::string_view journal_picture = "StkBk";  // in the header of a journal of all of them
  std::string_view member_picture = "Depot";   // in the header of a journal of one depot, partner or project
};

// The one source of these words. Any other type has the pictures of the stock journal and "" for the rest.
JournalWords WordsOf(base::tqJournalTypeContants type);

}  // namespace stockbook::journal
