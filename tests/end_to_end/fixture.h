// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "databases/sqlite/embedded_connection.h"
#include "end_to_end/base_tables.h"
#include "end_to_end/recomputed_journal.h"
#include "end_to_end/shown_journal.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/window/journal_desk.h"
#include "support/test_folder.h"

namespace stockbook::end_to_end {

using testing::Outcome;

// A test with a folder of its own and a running toolkit, which loads journals in its process and runs the program.
class EndToEnd : public ::testing::Test, protected testing::TestFolder {
 protected:
  // How the connection reads.
  struct Plan {
    app::SqlDialect dialect = app::SqlDialect::kDesktop;
    databases::Strategy strategy = databases::Strategy::kFastest;
  };

  // Loads into `desk_`, which all loads of the test share.
  app::LoadReport Load(const std::string& database, const app::JournalOptions& options);
  // Loads and compares with the journal recomputed from the tables; a journal whose statement cannot run must fail with
  // a message.
  ::testing::AssertionResult ShowsWhatTheTablesGive(const std::string& database, const BaseTables& tables,
                                                    const app::JournalOptions& options);
  // The same for one plan, of rows and columns alone, whatever the load says on its way; a journal with an amount
  // beyond Money must fail.
  ::testing::AssertionResult AgreesBy(const Plan& plan, const std::string& database, const RecomputedJournal& journal,
                                      const app::JournalOptions& options);
  // The real program; the arguments are quoted for the shell.
  Outcome Program(const std::vector<std::string>& arguments) const;

  app::JournalDesk& desk() { return desk_; }

 private:
  app::GuiSession session_{app::GuiNeed::kPicture};
  app::JournalDesk desk_;
};

}  // namespace stockbook::end_to_end
