// SPDX-License-Identifier: MIT
// Whatever happens to the program, the file it writes is the old one or the new one, whole.
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "end_to_end/fixture.h"
#include "end_to_end/program_run.h"
#include "stockbook/sample/sample_random.h"

namespace stockbook::end_to_end {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

class OutputSafety : public EndToEnd {
 protected:
  std::string Sample(const std::string& name, const std::string& seed) const {
    const Outcome made = Program({"sample", PathOf(name), "--lines", "900", "--periods", "3", "--seed", seed});
    EXPECT_EQ(made.code, 0) << made.err;
    return PathOf(name);
  }
  static Arguments Journal(const Arguments& command, const Arguments& more) {
    Arguments arguments = command;
    arguments.insert(arguments.end(), {"--journal", "material", "--product", "1"});
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }
  // The unfinished files of the folder.
  size_t Unfinished() const {
    const auto files = Files();
    return static_cast<size_t>(std::count_if(
        files.begin(), files.end(), [](const std::string& name) { return name.find(".new-") != std::string::npos; }));
  }
  void RemoveUnfinished() const {
    for (const std::string& name : Files())
      if (name.find(".new-") != std::string::npos) fs::remove(PathOf(name));
  }
  std::string Errors() const { return ReadAll(errors_); }

  const std::string errors_ = PathOf("errors.txt");
};

TEST_F(OutputSafety, IsRefusedWhereItWouldReplaceADatabase) {
  const std::string stock = Sample("stock.db", "1");
  Sample("other.db", "2");
  fs::create_symlink(stock, PathOf("link.csv"));
  fs::create_hard_link(stock, PathOf("second.csv"));
  const std::string before = ReadAll(stock);
  const auto files = Files();
  for (const char* command : {"export", "print", "render"}) {
    for (const char* target : {"stock.db", "link.csv", "second.csv", "other.db", "stock.db-wal", "stock.db-journal"}) {
      const Outcome outcome = Program(Journal({command, stock}, {"-o", PathOf(target)}));
      EXPECT_EQ(outcome.code, 2) << command << " " << target;
      EXPECT_NE(outcome.err.find("The output '" + PathOf(target) + "' is "), std::string::npos) << outcome.err;
      EXPECT_EQ(ReadAll(stock), before) << command << " " << target;
      EXPECT_EQ(Files(), files) << command << " " << target;
    }
  }
}

TEST_F(OutputSafety, LeavesNothingUnfinishedWhenASignalEndsTheProgram) {
  const std::string target = Write("stock.db", "old");
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
    ProgramRun run({"import", "-", "-o", target, "--map", "product=p,date=d,quantity=q"}, errors_);
    // More than the program reads at a time, so that it is in the middle of the table.
    std::string table = "p,d,q\n";
    while (table.size() < 150'000) table += "A,2026-01-05,1\n";
    run.Write(table);
    const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(5);
    while (Unfinished() == 0 && std::chrono::steady_clock::now() < until)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_EQ(Unfinished(), 1u);
    run.Send(signal);
    const int status = run.Wait();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
    EXPECT_EQ(Unfinished(), 0u) << signal;
    EXPECT_EQ(ReadAll(target), "old");
  }
}

// Kills the program at many moments and looks at what it was to replace.
TEST_F(OutputSafety, IsTheOldFileOrTheNewOneWhenTheProgramIsKilled) {
  const std::string before = ReadAll(Sample("old.db", "1"));
  const std::string after = ReadAll(Sample("new.db", "2"));
  const std::string target = PathOf("stock.db");
  app::SampleRandom random(16);
  int replaced = 0;
  for (int round = 0; round < 60; ++round) {
    Write("stock.db", before);
    ProgramRun run({"sample", target, "--lines", "900", "--periods", "3", "--seed", "2"}, errors_);
    std::this_thread::sleep_for(std::chrono::microseconds(random.Below(120'000)));
    run.Send(SIGKILL);
    run.Wait();
    const std::string found = ReadAll(target);
    ASSERT_TRUE(found == before || found == after) << round;
    replaced += found == after;
    RemoveUnfinished();
  }
  RecordProperty("replaced", replaced);
}

TEST_F(OutputSafety, IsTheOldFileWhenTheDiskIsFull) {
  const std::string stock = Sample("stock.db", "1");
  const std::string rows = Write("rows.csv", "old");
  const std::string before = ReadAll(stock);
  app::SampleRandom random(17);
  for (const char* command : {"sample", "export", "print", "render"}) {
    for (int round = 0; round < 4; ++round) {
      const std::string target = command == std::string("sample") ? stock : rows;
      const rlim_t room = static_cast<rlim_t>(random.Below(round == 0 ? 1 : 4000));
      Arguments arguments = command == std::string("sample") ? Arguments{"sample", target, "--seed", "3"}
                                                             : Journal({command, stock}, {"-o", target});
      ProgramRun run(arguments, PathOf("errors.txt"), Limit{RLIMIT_FSIZE, room});
      const int status = run.Wait();
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << command << " " << room << ": " << status;
      EXPECT_EQ(ReadAll(stock), before) << command << " " << room;
      EXPECT_EQ(ReadAll(rows), "old") << command << " " << room;
      EXPECT_EQ(Unfinished(), 0u) << command << " " << room;
    }
  }
}

TEST_F(OutputSafety, EndsWithASentenceWhenThereIsLittleMemory) {
#ifdef STOCKBOOK_SANITIZED
  GTEST_SKIP() << "The sanitizer needs more memory than there is to be.";
#endif
  const std::string stock = Sample("stock.db", "1");
  const std::string target = Write("rows.csv", "old");
  for (const char* command : {"export", "print", "render"}) {
    int failed = 0;
    for (rlim_t megabytes = 60; megabytes <= 400; megabytes += megabytes < 200 ? 5 : 25) {
      Write("rows.csv", "old");
      Arguments arguments = Journal({command, stock}, {"-o", target});
      // Without the toolkit it needs hardly more than the loader does.
      if (command == std::string("export")) arguments.insert(arguments.end(), {"--format", "ndjson"});
      ProgramRun run(arguments, errors_, Limit{RLIMIT_AS, megabytes << 20});
      const int status = run.Wait();
      // The system's loader cannot even start the program, and says so.
      if (WIFEXITED(status) && WEXITSTATUS(status) == 127) continue;
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1)
          << command << " in " << megabytes << " MB: " << status << " " << Errors();
      const bool done = WIFEXITED(status) && WEXITSTATUS(status) == 0;
      const std::string errors = Errors();
      EXPECT_TRUE(done || (errors.starts_with("stockbook") && errors.ends_with("\n"))) << command << ": " << errors;
      EXPECT_EQ(ReadAll(target) == "old", !done) << command << " in " << megabytes << " MB";
      EXPECT_EQ(Unfinished(), 0u) << command << " in " << megabytes << " MB";
      failed += done ? 0 : 1;
    }
    EXPECT_GT(failed, 0) << command << " needs less memory than was tried";
  }
}

}  // namespace
}  // namespace stockbook::end_to_end
