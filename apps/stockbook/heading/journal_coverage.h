// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "stockbook/command/journal_options.h"
#include "stockbook/platform/connection.h"

namespace stockbook::app {

// What a journal of all partners, or of a class of them, does not list. The control goes by the codes of classes: its
// journal of all customers has those whose code begins with 0, and lines without a partner are in none. Nobody would
// guess that from a list of lines, so the host tells it.
struct JournalCoverage {
  enum class Listed {
    kAsHeaded,    // what the heading says
    kWithClass,   // the partners that have a class
    kOfClass,     // those whose class begins with the code
    kEverything,  // every line, for want of a partner of that class
  };
  Listed listed = Listed::kAsHeaded;
  std::string code;
  int64_t partners_left_out = 0;
  int64_t lines_left_out = 0;  // that have no partner
  bool of_suppliers = false;   // otherwise of customers

  bool IsComplete() const { return partners_left_out == 0 && lines_left_out == 0; }
};

// What the chooser's entry for all of them covers, to stand behind its name: "（分类以“0”开头的）". "" where all are
// all.
std::string AllCovers(int journal_type);

// Reads what the journal leaves out: the partners' codes, and the count of lines without one; nothing for journals of
// one partner. Database errors are passed on.
JournalCoverage ReadCoverage(platform::Connection& connection, const JournalOptions& options);

}  // namespace stockbook::app
