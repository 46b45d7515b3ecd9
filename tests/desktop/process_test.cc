// SPDX-License-Identifier: MIT
// The process that reads a desktop file in the place of the host's.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "databases/desktop/reading_process.h"
#include "databases/desktop/table_stream.h"

namespace stockbook::testing {
namespace {

using databases::Interruption;
using databases::ReadFailure;
using databases::ReadingProcess;

constexpr ReadingProcess::Limits kLimits{60, uint64_t{512} << 20, uint64_t{1} << 20};

// All that comes.
std::string Sent(const std::function<void(int)>& work, const ReadingProcess::Limits& limits = kLimits) {
  const Interruption interruption{std::nullopt};
  ReadingProcess process(work, limits, interruption);
  std::string text;
  char bytes[100];
  while (const size_t count = process.Read(bytes, sizeof bytes)) text.append(bytes, count);
  return text;
}

void Send(int pipe, const std::string& text) {
  for (size_t at = 0; at < text.size();) {
    const ssize_t count = write(pipe, text.data() + at, text.size() - at);
    if (count <= 0) _exit(1);
    at += static_cast<size_t>(count);
  }
}

TEST(DesktopProcess, SendsWhatItHas) {
  EXPECT_EQ(Sent([](int pipe) { Send(pipe, "abc"); }), "abc");
  const std::string much(500000, 'x');
  EXPECT_EQ(Sent([&](int pipe) { Send(pipe, much); }), much);
}

TEST(DesktopProcess, CrashesAlone) {
  EXPECT_EQ(Sent([](int pipe) {
              Send(pipe, "abc");
              raise(SIGSEGV);
            }),
            "abc");
  EXPECT_EQ(Sent([](int) { std::abort(); }), "");
}

TEST(DesktopProcess, EndsWhenItTurnsInCirclesOrEatsMemoryOrSendsWithoutEnd) {
  ReadingProcess::Limits limits = kLimits;
  limits.processor_seconds = 1;
  EXPECT_EQ(Sent(
                [](int) {
                  for (std::atomic<int> turn = 0;;) ++turn;
                },
                limits),
            "");
  EXPECT_EQ(Sent([](int pipe) {
              for (;;) {
                volatile char* memory = new char[size_t{1} << 24];
                for (size_t at = 0; at < size_t{1} << 24; at += 4096) memory[at] = 1;
                if (getppid() == 1) Send(pipe, "never");
              }
            }),
            "");
  limits.sent_bytes = 1000;
  EXPECT_LE(Sent(
                [](int pipe) {
                  for (;;) Send(pipe, "xxxxxxxxxx");
                },
                limits)
                .size(),
            1000U);
}

TEST(DesktopProcess, HasNothingOfTheHostOpenAndPrintsNothing) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const int inherited = ends[1];
  const std::string seen = Sent([inherited](int pipe) {
    struct stat found {};
    Send(pipe, fstat(inherited, &found) == 0 && S_ISFIFO(found.st_mode) && inherited != pipe ? "open" : "closed");
    struct stat nothing {};
    struct stat output {};
    Send(pipe, stat("/dev/null", &nothing) == 0 && fstat(2, &output) == 0 && output.st_rdev == nothing.st_rdev
                   ? " quiet"
                   : " loud");
  });
  EXPECT_EQ(seen, "closed quiet");
  close(ends[0]);
  close(ends[1]);
}

TEST(DesktopProcess, IsStoppedWhenItsWorkIsCancelled) {
  Interruption interruption{std::nullopt};
  const Interruption::Running running(interruption);
  ReadingProcess process([](int) { pause(); }, kLimits, interruption);
  std::thread other([&] { interruption.Cancel(); });
  char byte = 0;
  try {
    process.Read(&byte, 1);
    ADD_FAILURE() << "read from a process that says nothing";
  } catch (const platform::Error& error) {
    EXPECT_EQ(error.kind(), platform::ErrorKind::kInterrupted);
  }
  other.join();
}

TEST(DesktopProcess, LeavesNoProcessBehind) {
  {
    const Interruption interruption{std::nullopt};
    ReadingProcess process([](int) { pause(); }, kLimits, interruption);
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left, running or ended";
}

TEST(DesktopProcess, WorksInAHostThatWantsToHearOfNoChild) {
  const auto before = signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(Sent([](int pipe) { Send(pipe, "abc"); }), "abc");
  signal(SIGCHLD, before);
}

// What comes out of a stream that says something else than tables.
TEST(DesktopProcess, IsNotBelievedWhenItSendsWhatMakesNoSense) {
  struct Nothing : databases::TableSink {
    void BeginTable(const databases::DesktopTable&) override {}
    void AddIndex(const databases::DesktopIndex&) override {}
    void AddRow(const std::vector<databases::DesktopValue>&) override {}
  };
  const auto number = [](uint64_t value) { return std::string(reinterpret_cast<const char*>(&value), sizeof value); };
  const std::string table = "T" + number(1) + "t" + number(1) + number(1) + "c" + number(0);
  for (const std::string& text : {std::string(), std::string("?"), std::string("R"), table, table + "R\x07",
                                  "T" + number(~uint64_t{0}), "T" + number(1) + "t" + number(1000),
                                  table + "I" + number(1) + number(1) + number(0), "F" + number(99) + number(0)}) {
    const Interruption interruption{std::nullopt};
    ReadingProcess process([&](int pipe) { Send(pipe, text); }, kLimits, interruption);
    Nothing sink;
    EXPECT_THROW(databases::ReceiveTables(process, sink), ReadFailure) << text;
  }
}

}  // namespace
}  // namespace stockbook::testing
