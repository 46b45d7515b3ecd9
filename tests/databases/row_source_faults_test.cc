// SPDX-License-Identifier: MIT
// Own objects that do not answer as they should: none of it becomes a wrong journal.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "databases/database_file.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::databases {
namespace {

using platform::ErrorKind;
using testing::AllRows;

#ifdef STOCKBOOK_SANITIZED
constexpr int64_t kManyLines = 20'000;
#else
constexpr int64_t kManyLines = 1'000'000;
#endif

// One product, of which two suppliers sent something, and whatever else a test says.
class Store : public RowSource {
 public:
  void Periods(const Take<std::string>& take) override {
    Step("periods");
    take("2025-03");
  }
  void Receipts(const RowFilter&, const TakeLine& take) override {
    Step("receipts");
    if (give_receipts) return give_receipts(take);
    take(Receipt(1, 5), Of(11));
    take(Receipt(2, 6), Of(12));
  }
  void Issues(const RowFilter&, const TakeLine&) override { Step("issues"); }
  void Products(const RowFilter&, const Take<Product>& take) override {
    Step("products");
    take({.id = 7, .name = "螺钉"});
  }
  void Suppliers(const RowFilter&, const Take<Partner>& take) override {
    Step("suppliers");
    take({.id = 5, .name = "甲"});
    take({.id = 6, .name = "乙"});
  }
  void Customers(const RowFilter&, const Take<Partner>&) override { Step("customers"); }
  void Balances(BalanceOwner, const RowFilter&, const Take<Balance>& take) override {
    Step("balances");
    for (const int64_t id : balances)
      take({.id = id, .owner = 1, .product = 7, .period = "2025-03", .carried_forward = {.quantity = 100}});
  }
  void BeginMoment() override {
    Step("begin");
    ++moments;
  }
  void EndMoment() override { --moments; }

  static Bill Receipt(int64_t id, int64_t partner) {
    return {.id = id,
            .date = *base::Date::FromParts({2025, 3, 8}),
            .type = "入库单",
            .number = "R" + std::to_string(id),
            .partner = partner};
  }
  static Line Of(int64_t id) { return {.id = id, .product = 7, .quantity = 1}; }

  std::function<void(const TakeLine&)> give_receipts;
  std::vector<int64_t> balances = {1, 2};
  std::string fails_at;
  int moments = 0;  // that have begun and not ended

 private:
  void Step(const std::string& name) const {
    if (name == fails_at) throw std::runtime_error("远程仓库没有回答：" + name);
  }
};

class RowSourceFaults : public ::testing::Test {
 protected:
  platform::Error ErrorOf(std::string_view statement) {
    try {
      connection_->Execute(statement);
    } catch (const platform::Error& error) {
      return error;
    }
    return {"", "no error"};
  }
  std::vector<std::string> Count() { return AllRows(connection_->Execute("SELECT Count(*) FROM 入库记录")); }
  void GiveManyLines() {
    store_->give_receipts = [](const RowSource::TakeLine& take) {
      const Bill bill = Store::Receipt(1, 5);
      for (int64_t id = 1; id <= kManyLines; ++id) take(bill, Store::Of(id));
    };
  }
  // Whether a load succeeds; what it said is in `said_`.
  bool Loads(base::tqJournalTypeContants type, int32_t key) {
    testing::ControlOverFakes fakes;
    testing::EventRecorder heard;
    fakes.control->SetConn(std::shared_ptr<platform::Connection>(OpenRowSource(store_)));
    fakes.control->SetJournalType(type);
    fakes.control->AddListener(&heard);
    const bool loaded = fakes.control->Load(key, 0);
    fakes.control->RemoveListener(&heard);
    said_.clear();
    for (const std::string& message : heard.Of("Notify")) said_ += message + "\n";
    cells_.clear();
    for (int row = 0; row < fakes.fg.Rows(); ++row)
      cells_ += fakes.fg.TextMatrix(row, fakes.fg.ColIndex("BillNo")) + "\n";
    return loaded;
  }

  std::shared_ptr<Store> store_ = std::make_shared<Store>();
  std::unique_ptr<platform::Connection> connection_ = OpenRowSource(store_);
  std::string said_;
  std::string cells_;
};

TEST_F(RowSourceFaults, EndALoadWithTheWordsOfTheSourceOrSayWhatIsMissing) {
  ASSERT_TRUE(Loads(base::MaterialJournal, 7));
  for (const char* place : {"periods", "receipts", "issues", "suppliers", "customers", "begin"}) {
    store_->fails_at = place;
    EXPECT_FALSE(Loads(base::MaterialJournal, 7)) << place;
    EXPECT_NE(said_.find("远程仓库没有回答：" + store_->fails_at), std::string::npos) << place << ": " << said_;
    EXPECT_EQ(store_->moments, 0) << "a moment that began ends";
  }
  store_->fails_at = "";
  EXPECT_TRUE(Loads(base::MaterialJournal, 7)) << "and the next load is as ever";
  EXPECT_EQ(store_->moments, 0);
}

TEST_F(RowSourceFaults, EndALoadWhereTheOpeningBalanceWouldBeWrong) {
  store_->balances = {3, 3};
  EXPECT_FALSE(Loads(base::MaterialJournal, 7)) << cells_;
  EXPECT_NE(said_.find("RowSource::Balances 给出了两行，Balance::id 同为 3"), std::string::npos) << said_;
}

TEST_F(RowSourceFaults, StopWhereTheSourceKeepsWhatItIsThrownToItself) {
  store_->give_receipts = [](const RowSource::TakeLine& take) {
    for (const int64_t id : {11, 11, 12}) {
      try {
        take(Store::Receipt(1, 5), Store::Of(id));
      } catch (...) {  // and goes on, as if the line were there
      }
    }
  };
  EXPECT_NE(std::string(ErrorOf("SELECT Count(*) FROM 入库记录").what()).find("给出了两行，Line::id 同为 11"),
            std::string::npos);
  store_->give_receipts = {};
  EXPECT_EQ(Count(), std::vector<std::string>{"2"});
}

TEST_F(RowSourceFaults, ListSuppliersWithoutAClassAmongAll) {
  ASSERT_TRUE(Loads(base::SupplierJournal, 7)) << said_;
  EXPECT_NE(cells_.find("R1"), std::string::npos) << said_;
  EXPECT_NE(cells_.find("R2"), std::string::npos) << said_;
}

TEST_F(RowSourceFaults, GiveAMillionLinesWhole) {
  GiveManyLines();
  auto rows = connection_->Execute("SELECT RecID, 数量 FROM 入库记录 ORDER BY RecID DESC");
  ASSERT_EQ(rows.RecordCount(), static_cast<size_t>(kManyLines));
  EXPECT_EQ(rows.FieldValue(0).AsInteger(), kManyLines);
  EXPECT_GE(connection_->RowsRead(), static_cast<size_t>(kManyLines)) << "whoever waits is told how far it is";
}

// Every three lines: nobody waits for that.
constexpr const char* kEveryThreeLines =
    "SELECT Count(*) FROM 入库记录 AS a, 入库记录 AS b, 入库记录 AS c WHERE a.数量 + b.数量 + c.数量 < 0";

TEST_F(RowSourceFaults, EndAStatementAtItsDeadlineAndTheNextOneRuns) {
  connection_ = OpenRowSource(store_, "Timeout=1.5");
  store_->give_receipts = [](const RowSource::TakeLine& take) {
    for (int64_t id = 1; id <= 20'000; ++id) take(Store::Receipt(1, 5), Store::Of(id));
  };
  EXPECT_EQ(ErrorOf(kEveryThreeLines).kind(), ErrorKind::kInterrupted) << "in the engine";
  store_->give_receipts = [](const RowSource::TakeLine& take) {
    for (int64_t id = 1;; ++id) take(Store::Receipt(1, 5), Store::Of(id));
  };
  EXPECT_EQ(ErrorOf("SELECT Count(*) FROM 入库记录").kind(), ErrorKind::kInterrupted) << "in the source";
  store_->give_receipts = {};
  EXPECT_EQ(Count(), std::vector<std::string>{"2"});
}

TEST_F(RowSourceFaults, EndAStatementThatAnotherThreadCancels) {
  connection_ = OpenRowSource(store_, "Timeout=120");
  store_->give_receipts = [](const RowSource::TakeLine& take) {
    for (int64_t id = 1; id <= 20'000; ++id) take(Store::Receipt(1, 5), Store::Of(id));
  };
  std::atomic<bool> ended = false;
  std::thread other([&] {
    while (!ended) {
      std::this_thread::sleep_for(std::chrono::milliseconds{20});
      connection_->Cancel();
    }
  });
  EXPECT_EQ(ErrorOf(kEveryThreeLines).kind(), ErrorKind::kInterrupted);
  ended = true;
  other.join();
  store_->give_receipts = {};
  EXPECT_EQ(Count(), std::vector<std::string>{"2"});
}

}  // namespace
}  // namespace stockbook::databases
