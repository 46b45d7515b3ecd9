// SPDX-License-Identifier: MIT
// Long results are read on several threads. They must be what one thread reads, of one moment, and end as one does.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "databases/database_file.h"
#include "databases/faulty_storage.h"
#include "databases/journal_statements.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/readers.h"

namespace stockbook::testing {
namespace {

using databases::Database;
using databases::Dialect;
using databases::EmbeddedConnection;
using databases::Readers;
using databases::ReadTransaction;
using databases::Strategy;

constexpr int kLines = 26000;
constexpr int kBills = 17000;

// `columns` of n.i for i from 1 to `count`.
std::string Numbered(const std::string& table, int count, const std::string& columns) {
  return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + std::to_string(count) +
         ") INSERT INTO " + table + " SELECT " + columns + " FROM n;";
}

// Bills without order, holes and gaps; each line of every product but few of product 2.
void FillLongInventory(DatabaseFile& file) {
  CreateInventory(file);
  FillInventory(file);
  file.Run("BEGIN; DELETE FROM 入库目录; DELETE FROM 出库目录; DELETE FROM 入库记录; DELETE FROM 出库记录;");
  for (const std::string name : {"入库", "出库"}) {
    file.Run(Numbered(name + "目录", kBills,
                      "i, '2005-0' || (i*7%3+1), '2005-0' || (i*7%3+1) || '-' || (i%19+10), 2005, 1, 1, '单' || (i%3), "
                      "'N' || i, iif(i%5=0,NULL,'类'||(i%4)), iif(i%2=0,NULL,'说明'||(i%11)), i%3, i%4+5, "
                      "iif(i%3=0,NULL,i%4+2), '员'||(i%9), '2005-02-1'||(i%9), NULL, iif(i%7=0,'2005-03-01 08:3'||(i%9)"
                      "||':00',NULL)"));
    file.Run(Numbered(name + "记录", kLines,
                      "i*2, i*7919%17400+1, iif(i%1000=0,2,1), i%3, i%4+5, iif(i%3=0,NULL,i%4+2), i, i%97/4.0, i%89, "
                      "i%31/8.0, (i%5000) || '.25', 0.17, iif(i%13=0,NULL,(i%300) || '.5'), i%71/2.0, i%6000, "
                      "'手'||(i%8), iif(i%6=0,'','交'||(i%50)), '包', 'L'||i, NULL, NULL, "
                      "iif(i%10=0,'2004-12-0'||(i%9+1),NULL)"));
  }
  file.Run("COMMIT");
}

// Every value with its type.
std::string ContentsOf(const std::vector<platform::Field>& fields) {
  std::string all;
  for (const platform::Field& field : fields) {
    all += "\n" + field.name + ":";
    for (size_t row = 0; row < field.column.size(); ++row) {
      const base::Value value = field.column.At(row);
      all += static_cast<char>('0' + value.variant().index());
      all += value.Text();
      all += '|';
    }
  }
  return all;
}

class Threads : public ::testing::TestWithParam<const char*> {
 protected:
  Threads() {
    file_.Run(std::string("PRAGMA journal_mode=") + GetParam());
    FillLongInventory(file_);
  }
  std::string With(const std::string& settings) const { return file_.DesktopString() + ";" + settings; }
  bool HasLog() const { return GetParam() == std::string("WAL"); }
  static std::string Journal() { return MaterialJournal(Dialect::kDesktop, "1)", "2005-03"); }

  DatabaseFile file_;
};

TEST_P(Threads, GiveTheRowsOfOne) {
  for (const std::string& statement :
       {Journal(), SupplierJournal(Dialect::kDesktop, " Where (Recs.ksID = 5)", "2005-02")}) {
    const std::string right = ContentsOf(EmbeddedConnection(With("Threads=1")).Execute(statement).TakeAll());
    const std::string whole =
        ContentsOf(EmbeddedConnection(With("Threads=3"), Strategy::kStatement).Execute(statement).TakeAll());
    EXPECT_GT(right.size(), size_t{100000});
    EXPECT_TRUE(right == whole);
    for (const char* threads : {"Threads=2", "Threads=5"}) {
      EmbeddedConnection connection(With(threads));
      EXPECT_TRUE(right == ContentsOf(connection.Execute(statement).TakeAll())) << threads;
      EXPECT_TRUE(right == ContentsOf(connection.Execute(statement).TakeAll())) << threads << " again";
    }
  }
}

// Where another way is taken in the end, since the first was not certain.
TEST_P(Threads, GiveTheRowsOfOneWhereTheLastOnesAreMalformed) {
  file_.Run("UPDATE 入库记录 SET 经手人=CAST(x'C3' AS TEXT) WHERE RecID=" + std::to_string(kLines * 2));
  file_.Run(
      "INSERT INTO 出库目录 SELECT 60000+BillID, AccPeriod, BillDate, 1, 1, 1, 单据类型, 单据编号, 类型, 说明, "
      "dpID, ksID, pjID, 录入员, 录入日期, 审核员, 审核日期 FROM 出库目录 WHERE BillID=7");
  file_.Run("UPDATE 出库记录 SET BillID=2.5 WHERE RecID=" + std::to_string(kLines * 2 - 2));
  EXPECT_TRUE(ContentsOf(EmbeddedConnection(With("Threads=1")).Execute(Journal()).TakeAll()) ==
              ContentsOf(EmbeddedConnection(With("Threads=3")).Execute(Journal()).TakeAll()));
}

TEST_P(Threads, AreNoneWhereTheResultIsShort) {
  FaultyStorage storage;
  EmbeddedConnection connection(With("Threads=3"));
  const int alone = storage.OpenFiles();
  connection.Execute("SELECT * FROM 仓库设置");
  connection.Execute(MaterialJournal(Dialect::kDesktop, "2)", "2005-03"));
  EXPECT_EQ(storage.OpenFiles(), alone);
  connection.Execute(Journal());
  EXPECT_GT(storage.OpenFiles(), alone);
  // They are kept.
  const int together = storage.OpenFiles();
  connection.Execute(Journal());
  EXPECT_EQ(storage.OpenFiles(), together);
}

TEST_P(Threads, ReadOnlyWhatTheFirstOneReads) {
  const Database own(file_.path());
  const Readers readers(own, 3);
  {
    const ReadTransaction moment(own);
    EXPECT_EQ(readers.Join().size(), 3U);
    readers.Leave();
    if (HasLog()) {
      file_.Run("INSERT INTO 仓库设置 VALUES (70,'新库')");
      EXPECT_EQ(readers.Join().size(), 1U) << "the others would see what was posted";
      readers.Leave();
    }
  }
  file_.Run("INSERT INTO 仓库设置 VALUES (71,'新库')");
  const ReadTransaction moment(own);
  ASSERT_EQ(readers.Join().size(), 3U);
  for (const Database* database : readers.Join()) {
    databases::Statement count(*database, "SELECT count(*) FROM 仓库设置 WHERE dpID=71");
    ASSERT_TRUE(count.Step());
    EXPECT_EQ(count.Integer(0), 1);
  }
  readers.Leave();
}

// A moment of the host lasts for several statements, between which others post where there is a log.
TEST_P(Threads, SeeTheMomentOfTheHost) {
  EmbeddedConnection connection(With("Threads=3"));
  const std::string before = ContentsOf(connection.Execute(Journal()).TakeAll());
  if (!HasLog()) return;
  const auto moment = connection.ReadAsOfOneMoment();
  EXPECT_EQ(connection.Execute("SELECT * FROM 仓库设置").RecordCount(), 2U);
  file_.Run("UPDATE 入库记录 SET 数量=数量+1");
  EXPECT_TRUE(before == ContentsOf(connection.Execute(Journal()).TakeAll()));
  EXPECT_FALSE(before == ContentsOf(EmbeddedConnection(With("Threads=3")).Execute(Journal()).TakeAll()));
}

TEST_P(Threads, ReadNoOtherFileOfTheSameName) {
  const Database own(file_.path());
  const Readers readers(own, 2);
  const ReadTransaction moment(own);
  const std::string kept = file_.path() + ".kept";
  std::filesystem::rename(file_.path(), kept);
  EXPECT_EQ(readers.Join().size(), 1U) << "there is no file of this name";
  readers.Leave();
  std::filesystem::copy_file(kept, file_.path());
  EXPECT_EQ(readers.Join().size(), 1U) << "it is another file";
  readers.Leave();
  std::filesystem::remove(file_.path());
  std::filesystem::rename(kept, file_.path());
  if (!HasLog()) {
    EXPECT_EQ(readers.Join().size(), 2U);
  }
  readers.Leave();
}

TEST_P(Threads, EndOnceAndClearlyWhenTheStorageFails) {
  FaultyStorage storage;
  const std::string right = ContentsOf(EmbeddedConnection(With("Threads=3")).Execute(Journal()).TakeAll());
  int ended = 0;
  for (const Fault fault : {Fault::kRefusedRead, Fault::kRefusedReads, Fault::kRefusedCall}) {
    for (const int call : {3, 60, 500, 1000, 1500}) {
      if (fault == Fault::kRefusedCall && call > 60) break;
      SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + " at call " + std::to_string(call));
      EmbeddedConnection connection(With("Threads=3"));
      storage.Arm(fault, call);
      try {
        EXPECT_TRUE(right == ContentsOf(connection.Execute(Journal()).TakeAll()));
      } catch (const platform::Error& error) {
        EXPECT_TRUE(error.IsOfEngine()) << error.what();
        ++ended;
      }
      storage.Disarm();
      EXPECT_TRUE(right == ContentsOf(connection.Execute(Journal()).TakeAll()));
    }
  }
  EXPECT_GE(ended, 4);
}

TEST_P(Threads, EndWhenTheStatementIsCancelled) {
  FaultyStorage storage;
  for (int attempt = 0; attempt < 50; ++attempt) {
    EmbeddedConnection connection(With("Threads=3"));
    const int alone = storage.OpenFiles();
    std::atomic<bool> ended = false;
    std::atomic<bool> began = false;
    std::thread canceller([&] {
      while (!ended && storage.OpenFiles() <= alone + 1) std::this_thread::yield();
      began = !ended;
      while (!ended) connection.Cancel();
    });
    auto kind = platform::ErrorKind::kStatement;
    try {
      connection.Execute(Journal());
    } catch (const platform::Error& error) {
      kind = error.kind();
    }
    ended = true;
    canceller.join();
    if (kind != platform::ErrorKind::kInterrupted) continue;  // it was faster
    EXPECT_TRUE(began);
    EXPECT_GT(connection.Execute(Journal()).RecordCount(), 1000U);
    return;
  }
  FAIL() << "no statement was cancelled";
}

INSTANTIATE_TEST_SUITE_P(Journals, Threads, ::testing::Values("DELETE", "WAL"));

TEST(ThreadSettings, AreANumberOfThreads) {
  const DatabaseFile file;
  for (const char* wrong : {"0", "17", "-1", "two", "2x", "", "99999999999999999999"}) {
    try {
      EmbeddedConnection(file.DesktopString() + ";Threads=" + wrong);
      FAIL() << wrong;
    } catch (const platform::Error& error) {
      EXPECT_EQ(std::string(error.what()), std::string("连接字符串的 Threads“") + wrong +
                                               "”不是线程数，应为 1 至 16 之间的整数，1 表示不用其他线程");
    }
  }
}

}  // namespace
}  // namespace stockbook::testing
