// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "platform/connection.h"
#include "stockbook/command/journal_options.h"

namespace stockbook::app {

// What a journal of all partners, or of a class of them, does not list. The control goes by the codes of classes: its
// journal of all customers has those whose code begins with 0, and lines without a partner are in none. Nobody would
// guess that from a list of lines, so the host tells it.
struct JournalCoverage {
  // The members that the journal lists, as a noun: "分类以“0”开头的客户"; "" where the heading says it.
  std::string covers;
  int64_t partners_left_out = 0;
  int64_t lines_left_out = 0;  // that have no partner

  bool IsComplete() const { return partners_left_out == 0 && lines_left_out == 0; }
  // "未列入 3 个客户、12 行"; "" if it is complete.
  std::string Short() const;
  // "本台账只列分类以“0”开头的客户：……"; "" if there is nothing to tell.
  std::string Sentence() const;

  const char* noun = "";  // 客户, 供应商
};

// What the chooser's entry for all of them covers, to stand behind its name: "（分类以“0”开头的）". "" where all are
// all.
std::string AllCovers(int journal_type);

// Reads what the journal leaves out: the partners' codes, and the count of lines without one; nothing for journals of
// one partner. Database errors are passed on.
JournalCoverage ReadCoverage(platform::Connection& connection, const JournalOptions& options);

}  // namespace stockbook::app
