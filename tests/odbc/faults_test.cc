// SPDX-License-Identifier: MIT
// A server that refuses, keeps silent or breaks off, seen through the free driver for SQL Server. The server is a
// double that understands no statement; none of this says what the real one would do with a statement.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "odbc/odbc_drivers.h"
#include "odbc/tds_double.h"
#include "stockbook/databases/odbc/odbc_connection.h"
#include "stockbook/platform/error.h"

namespace stockbook::testing {
namespace {

using databases::OpenOdbc;
using platform::ErrorKind;

constexpr const char* kPeriods = "SELECT AccPeriod FROM tqAccPeriod";
// Nothing here may wait for ever; what is measured is only that it did not.
constexpr std::chrono::seconds kWatchdog{60};

platform::Error ErrorOf(const std::function<void()>& call) {
  const auto begin = std::chrono::steady_clock::now();
  try {
    call();
  } catch (const platform::Error& error) {
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kWatchdog);
    return error;
  }
  ADD_FAILURE() << "no error";
  return {"", ""};
}

bool Contains(const platform::Error& error, const char* text) {
  return std::string(error.what()).find(text) != std::string::npos;
}

class OdbcOfTds : public ::testing::Test {
 protected:
  void SetUp() override {
    if (TdsOdbcDriver().empty()) GTEST_SKIP() << "the free ODBC driver of SQL Server (tdsodbc) is not installed";
  }
};

TEST_F(OdbcOfTds, SaysThatTheLoginWasRefusedAndKeepsThePassword) {
  TdsDouble server(TdsDouble::Login::kRefused, [](const std::string&) { return TdsReply{}; });
  const platform::Error error = ErrorOf([&] { OpenOdbc(server.ConnectionString("")); });
  EXPECT_EQ(error.operation(), "Open");
  EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
  EXPECT_TRUE(Contains(error, "Login failed for user 'clerk'.")) << error.what();
  EXPECT_TRUE(Contains(error, "用户名和密码")) << error.what();
  EXPECT_FALSE(Contains(error, "geheim")) << error.what();
  EXPECT_EQ(error.native_code(), 18456);
}

TEST_F(OdbcOfTds, GivesALoginUpThatNobodyAnswers) {
  TdsDouble server(TdsDouble::Login::kSilent, [](const std::string&) { return TdsReply{}; });
  const platform::Error error = ErrorOf([&] { OpenOdbc(server.ConnectionString("Timeout=1")); });
  EXPECT_EQ(error.operation(), "Open");
  EXPECT_TRUE(error.IsOfEngine());
}

TEST_F(OdbcOfTds, SaysThatNoServerIsThere) {
  std::string nobody;
  {
    TdsDouble server(TdsDouble::Login::kRefused, [](const std::string&) { return TdsReply{}; });
    nobody = server.ConnectionString("Timeout=20");
  }
  const platform::Error error = ErrorOf([&] { OpenOdbc(nobody); });
  EXPECT_EQ(error.kind(), ErrorKind::kInputOutput);
  EXPECT_TRUE(Contains(error, "无法连接数据库服务器")) << error.what();
}

TEST_F(OdbcOfTds, LeavesASilentServerAtTheDeadlineAndLogsInAgain) {
  std::atomic<bool> silent = false;
  TdsDouble server(TdsDouble::Login::kAccepted, [&](const std::string&) {
    TdsReply reply{TdsDouble::Done()};
    reply.silent = silent;
    return reply;
  });
  const auto connection = OpenOdbc(server.ConnectionString("Timeout=1"));
  silent = true;
  for (int logins = 1; logins <= 2; ++logins) {
    const platform::Error error = ErrorOf([&] { connection->Execute(kPeriods); });
    EXPECT_EQ(error.kind(), ErrorKind::kInterrupted) << error.what();
    EXPECT_TRUE(Contains(error, "时限 1 秒")) << error.what();
    EXPECT_GE(server.logins(), logins);
  }
}

TEST_F(OdbcOfTds, IsCancelledWhileTheServerKeepsSilent) {
  std::atomic<bool> silent = false;
  std::atomic<bool> asked = false;
  TdsDouble server(TdsDouble::Login::kAccepted, [&](const std::string&) {
    TdsReply reply{TdsDouble::Done()};
    reply.silent = silent;
    asked = silent.load();
    return reply;
  });
  const auto connection = OpenOdbc(server.ConnectionString("Timeout=0"));
  silent = true;
  std::thread canceller([&] {
    while (!asked) std::this_thread::yield();
    connection->Cancel();
  });
  const platform::Error error = ErrorOf([&] { connection->Execute(kPeriods); });
  canceller.join();
  EXPECT_EQ(error.kind(), ErrorKind::kInterrupted);
  EXPECT_STREQ(error.what(), "语句已被取消");
}

TEST_F(OdbcOfTds, SaysThatTheConnectionBrokeInTheMiddleOfRows) {
  std::atomic<bool> cut = false;
  TdsDouble server(TdsDouble::Login::kAccepted, [&](const std::string&) {
    TdsReply reply{TdsDouble::Done()};
    if (!cut) return reply;
    reply.tokens = TdsDouble::Columns("a") + TdsDouble::Row("one") + TdsDouble::Row("two");
    reply.tokens.resize(reply.tokens.size() - 3);
    reply.cuts_off = true;
    return reply;
  });
  const auto connection = OpenOdbc(server.ConnectionString("Timeout=30"));
  cut = true;
  const platform::Error error = ErrorOf([&] { connection->Execute(kPeriods); });
  EXPECT_EQ(error.kind(), ErrorKind::kInputOutput) << error.what();
  cut = false;
  const int logins = server.logins();
  ErrorOf([&] { connection->Execute(kPeriods); });
  EXPECT_EQ(server.logins(), logins + 1) << "the next statement logs in again";
}

}  // namespace
}  // namespace stockbook::testing
