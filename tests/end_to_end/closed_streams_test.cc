// SPDX-License-Identifier: MIT
// The program started without some of its standard streams, or with ones that take nothing. The next files that it
// opens would have their numbers, and what is meant for a stream would go into them.
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "end_to_end/fixture.h"
#include "end_to_end/program_run.h"

namespace stockbook::end_to_end {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

constexpr const char* kClosedOrFull[] = {">&-", ">/dev/full"};

class ClosedStreams : public EndToEnd {
 protected:
  void SetUp() override {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "There is no /dev/full here.";
    ASSERT_EQ(Program({"sample", stock_, "--lines", "900", "--periods", "3", "--seed", "7"}).code, 0);
    stock_bytes_ = ReadAll(stock_);
  }

  // Runs the program by a shell, which reads `streams` behind the usual redirections.
  Outcome Run(const Arguments& arguments, const std::string& streams) const {
    const std::string out = PathOf("out.txt");
    const std::string err = PathOf("err.txt");
    std::string command = std::string("'") + STOCKBOOK_PROGRAM + "'";
    for (const std::string& argument : arguments) command += " '" + argument + "'";
    const int status = std::system((command + " >'" + out + "' 2>'" + err + "' </dev/null " + streams).c_str());
    const Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadAll(out), ReadAll(err)};
    fs::remove(out);
    fs::remove(err);
    return outcome;
  }
  Arguments Journal(const std::string& command, const Arguments& more = {}) const {
    Arguments arguments{command, stock_, "--journal", "material", "--product", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }
  Arguments Import(const std::string& table, const std::string& target) const {
    return {"import", table, "-o", PathOf(target), "--map", "product=p,date=d,quantity=q"};
  }
  // One sentence, and an exit code that tells the same.
  static void ExpectSentence(const Outcome& outcome, const std::string& what) {
    EXPECT_EQ(outcome.code, 1) << what << ": " << outcome.err;
    EXPECT_TRUE(outcome.err.starts_with("stockbook")) << what << ": " << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << what << ": " << outcome.err;
  }

  const std::string stock_ = PathOf("stock.db");
  std::string stock_bytes_;
};

TEST_F(ClosedStreams, AreToldOfWhenTheOutputIsLost) {
  const std::string table = Write("rows.csv", "p,d,q\nA,2026-01-05,1\n");
  for (const char* streams : kClosedOrFull) {
    for (const Arguments& arguments :
         {Arguments{"--help"}, Arguments{"export", "--help"}, Journal("sql"), Journal("export"),
          Journal("export", {"--format", "ndjson"}), Arguments{"sample", PathOf("made.db"), "--lines", "900"},
          Import(table, "imported.db")}) {
      ExpectSentence(Run(arguments, streams), arguments.front() + " " + streams);
    }
    EXPECT_EQ(ReadAll(stock_), stock_bytes_) << streams;
  }
}

TEST_F(ClosedStreams, AreMissedByNobodyWhenTheOutputIsAFile) {
  ASSERT_EQ(Program(Journal("export", {"-o", PathOf("usual.csv")})).code, 0);
  for (const char* streams : kClosedOrFull) {
    const Outcome outcome = Run(Journal("export", {"-o", PathOf("rows.csv")}), streams);
    EXPECT_EQ(outcome.code, 0) << streams << outcome.err;
    EXPECT_EQ(ReadAll(PathOf("rows.csv")), ReadAll(PathOf("usual.csv"))) << streams;
    // The summary of a journal that was listed is the file itself; a wrong argument stays one.
    EXPECT_EQ(Run({"export", stock_, "--journal", "stock"}, streams).code, 2) << streams;
  }
}

TEST_F(ClosedStreams, OfErrorsChangeNeitherExitCodesNorFiles) {
  const Outcome usual = Program(Journal("export"));
  for (const char* streams : {"2>&-", "2>/dev/full"}) {
    EXPECT_EQ(Run({"export", stock_, "--journal", "stock"}, streams).code, 2) << streams;
    EXPECT_EQ(Run({"export", PathOf("no.db"), "--journal", "material", "--product", "1"}, streams).code, 1) << streams;
    EXPECT_EQ(Run({"open", PathOf("no.db")}, streams).code, 1) << streams;
    const Outcome exported = Run(Journal("export"), streams);
    EXPECT_EQ(exported.code, 0) << streams;
    EXPECT_EQ(exported.out, usual.out) << streams;
    // Lines are skipped, and there is nobody to tell.
    const std::string table = Write("rows.csv", "p,d,q\nA,2026-01-05,1\nA,never,1\n\"A,2026-01-05,1\n");
    EXPECT_EQ(Run(Import(table, "imported.db"), streams).code, 1) << streams;
    EXPECT_EQ(ReadAll(table), "p,d,q\nA,2026-01-05,1\nA,never,1\n\"A,2026-01-05,1\n");
    EXPECT_FALSE(fs::exists(PathOf("imported.db"))) << streams;
    EXPECT_EQ(ReadAll(stock_), stock_bytes_) << streams;
  }
}

TEST_F(ClosedStreams, OfInputAreToldOfByWhoeverReadsThem) {
  // A folder is opened, but not read.
  for (const std::string& streams : {std::string("<&-"), "<'" + PathOf("") + "'"}) {
    const Outcome outcome = Run(Import("-", "imported.db"), streams);
    ExpectSentence(outcome, streams);
    EXPECT_NE(outcome.err.find("Cannot read"), std::string::npos) << streams << outcome.err;
  }
  EXPECT_FALSE(fs::exists(PathOf("imported.db")));
  EXPECT_EQ(Run(Journal("export"), "<&-").out, Program(Journal("export")).out);
}

TEST_F(ClosedStreams, AreOccupiedBeforeAnythingElseGetsTheirNumbers) {
  const ProgramRun run({"open"}, PathOf("errors.txt"), std::nullopt, Streams::kClosed);
  const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(5);
  const auto occupied = [&] {
    return run.FileOf(0) == "/dev/null" && run.FileOf(1) == "/dev/null" && run.FileOf(2) == "/dev/null";
  };
  while (!occupied() && std::chrono::steady_clock::now() < until)
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_TRUE(occupied()) << run.FileOf(0) << " " << run.FileOf(1) << " " << run.FileOf(2);
}

// The numbers 0 to 2 are free for whatever is opened first.
TEST_F(ClosedStreams, AltogetherLeaveEveryFileWhole) {
  constexpr const char* kAll = ">&- 2>&- <&-";
  const std::string table = Write("rows.csv", "p,d,q\nA,2026-01-05,1\nA,never,1\n");
  const Arguments sample{"sample", PathOf("made"), "--lines", "900", "--seed", "7"};
  for (const Arguments& arguments : {sample, Import(table, "made"), Journal("export", {"-o", PathOf("made")}),
                                     Journal("render", {"-o", PathOf("made")})}) {
    fs::remove(PathOf("made"));
    Run(arguments, "");
    const std::string usual = ReadAll(PathOf("made"));
    EXPECT_NE(usual, "") << arguments.front();
    fs::remove(PathOf("made"));
    const Outcome outcome = Run(arguments, kAll);
    const bool summarizes = arguments.front() == "sample" || arguments.front() == "import";
    EXPECT_EQ(outcome.code, summarizes ? 1 : 0) << arguments.front();
    EXPECT_TRUE(ReadAll(PathOf("made")) == usual) << arguments.front();
  }
  EXPECT_EQ(Run(Journal("print", {"-o", PathOf("paper.pdf")}), kAll).code, 0);
  const std::string paper = ReadAll(PathOf("paper.pdf"));
  EXPECT_TRUE(paper.starts_with("%PDF") && paper.ends_with("%%EOF\n"));
  for (const Arguments& arguments : {Journal("export"), Journal("sql"), Arguments{"--help"}})
    EXPECT_EQ(Run(arguments, kAll).code, 1) << arguments.front();
  EXPECT_EQ(ReadAll(stock_), stock_bytes_);
  EXPECT_EQ(Files(), (std::vector<std::string>{"made", "paper.pdf", "rows.csv", "stock.db"}));
}

}  // namespace
}  // namespace stockbook::end_to_end
