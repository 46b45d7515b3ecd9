// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "end_to_end/base_tables.h"
#include "end_to_end/shown_journal.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::end_to_end {

// The result of running the program: its exit code and its two outputs.
struct Outcome {
  int code = -1;
  std::string out;
  std::string err;
};

// A test with a folder of its own and a running toolkit, which loads journals in its process and runs the program.
class EndToEnd : public ::testing::Test {
 protected:
  EndToEnd();
  ~EndToEnd() override;

  std::string PathOf(std::string_view name) const { return (folder_ / name).string(); }
  std::string Write(std::string_view name, std::string_view text) const;
  std::string ReadAll(const std::string& path) const;
  // The names in the folder, sorted.
  std::vector<std::string> Files() const;

  // Loads into `desk_`, which all loads of the test share.
  app::LoadReport Load(const std::string& database, const app::JournalOptions& options);
  // Loads and compares with the journal recomputed from the tables; a journal whose statement cannot run must fail with
  // a message.
  ::testing::AssertionResult ShowsWhatTheTablesGive(const std::string& database, const BaseTables& tables,
                                                    const app::JournalOptions& options);
  // The real program; the arguments are quoted for the shell.
  Outcome Program(const std::vector<std::string>& arguments) const;

  app::JournalDesk& desk() { return desk_; }

 private:
  std::filesystem::path folder_;
  app::GuiSession session_{app::GuiNeed::kPicture};
  app::JournalDesk desk_;
};

}  // namespace stockbook::end_to_end
