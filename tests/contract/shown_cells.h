// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "stockbook/base/journal_type.h"
#include "stockbook/platform/connection.h"

namespace stockbook::testing {

// A journal, and how much of it is shown.
struct JournalAsked {
  base::tqJournalTypeContants type = base::MaterialJournal;
  int32_t key = 0;
  int32_t second_key = 0;
  std::string class_code = {};
  bool quantity2 = false;
  bool taxes = false;
  bool restricted = false;

  std::string Text() const;
};

// Everything that a load shows and says: what it is called, each cell of each row as it is and as it looks, where the
// issues of the first rows come from, and what it announced.
std::vector<std::string> ShownCells(std::shared_ptr<platform::Connection> connection, const JournalAsked& asked);

// "" for the same cells, else the journal and the first line that differs.
std::string Difference(const std::vector<std::string>& shown, const std::vector<std::string>& expected,
                       const JournalAsked& asked);

}  // namespace stockbook::testing
