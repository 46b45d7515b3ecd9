// SPDX-License-Identifier: MIT
#include "databases/execution/side_by_side.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "databases/execution/interruption.h"

namespace stockbook::testing {
namespace {

using databases::EndedEarly;
using databases::Interruption;
using databases::RunSideBySide;

TEST(SideBySide, DoesEveryTaskOnceOnAnyNumberOfThreads) {
  for (const size_t threads : {1U, 2U, 3U, 50U}) {
    std::vector<int> done(20);
    RunSideBySide(done.size(), threads, [&](size_t task, const auto&) { ++done[task]; });
    EXPECT_EQ(done, std::vector<int>(20, 1));
  }
  RunSideBySide(0, 4, [](size_t, const auto&) { FAIL(); });
}

TEST(SideBySide, ThrowsWhatTheFirstOfTheTasksThatFailedHasThrown) {
  for (int round = 0; round < 50; ++round) {
    std::atomic<int> waiting = 0;
    const auto work = [&](size_t task, const std::atomic<bool>&) {
      // Both are there before either fails.
      ++waiting;
      while (waiting < 2) std::this_thread::yield();
      if (task == 0) throw std::bad_alloc();
      throw std::runtime_error("second");
    };
    EXPECT_THROW(RunSideBySide(2, 2, work), std::bad_alloc);
  }
}

TEST(SideBySide, TellsTheOthersThatATaskHasFailed) {
  bool ended = false;
  const auto work = [&](size_t task, const std::atomic<bool>& failed) {
    if (task == 1) throw std::runtime_error("refused");
    while (!failed) std::this_thread::yield();
    ended = true;
    throw EndedEarly{};
  };
  EXPECT_THROW(RunSideBySide(2, 2, work), std::runtime_error);
  EXPECT_TRUE(ended);
}

TEST(SideBySide, BeginsNoTaskAfterOneHasFailed) {
  size_t begun = 0;
  const auto work = [&](size_t task, const std::atomic<bool>&) {
    ++begun;
    if (task == 2) throw std::runtime_error("refused");
  };
  EXPECT_THROW(RunSideBySide(9, 1, work), std::runtime_error);
  EXPECT_EQ(begun, 3U);
}

TEST(Interruption, EndsThoseWhoWorkForItsStatement) {
  Interruption leader(std::nullopt);
  const Interruption::Running running(leader);
  Interruption follower(Interruption::Leader{leader});
  EXPECT_FALSE(follower.IsDue());
  EXPECT_TRUE(follower.WaitForLock(0));
  leader.Cancel();
  EXPECT_TRUE(follower.IsDue());
  EXPECT_TRUE(follower.WasCancelled());
  EXPECT_FALSE(follower.WaitForLock(1));
  EXPECT_STREQ(follower.Reason("Execute").what(), leader.Reason("Execute").what());
}

TEST(Interruption, CountsWhatThoseWhoWorkForItMade) {
  Interruption leader(std::nullopt);
  Interruption follower(Interruption::Leader{leader});
  EXPECT_TRUE(follower.MayMake(1000));
  EXPECT_EQ(follower.TakeMade(), 1000U);
  EXPECT_EQ(follower.TakeMade(), 0U);
}

}  // namespace
}  // namespace stockbook::testing
