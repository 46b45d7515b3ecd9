// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "stockbook/base/value.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#include "support/faulty_grid.h"
#include "support/journal_rows.h"

namespace stockbook::control {
namespace {

using testing::ControlOverFakes;
using testing::FakeConnection;
using testing::FaultyGrid;
using testing::JournalLine;

const std::vector<JournalLine> kLinesOfTwoPeriods = {
    {.bill_no = "1", .quantity = 4, .amount = "12.5"},
    {.bill_no = "2", .flag = 1, .quantity = 3, .amount = "8.0001", .other_id = -3},
    {.period = "2004-04", .bill_no = "3", .flag = 1, .quantity = 11, .amount = "20"},
};
constexpr int kRowsLoaded = 9;  // captions, opening, two groups of a node, lines and a total

// A control over a sheet that may refuse calls, with a journal of two periods behind its connection.
class FaultyLoad : public ::testing::Test {
 protected:
  FaultyLoad() : faulty_(sheet_), connection_(std::make_shared<FakeConnection>()) {
    testing::AnswerJournal(*connection_, kLinesOfTwoPeriods);
    control_ = std::make_unique<Stockbook>(
        Surroundings{faulty_, fakes_.fg1, fakes_.metrics, fakes_.images, fakes_.menu, fakes_.clipboard, fakes_.site});
    control_->SetConn(connection_);
    control_->AddListener(&heard_);
  }

  void ExpectEnded() {
    EXPECT_EQ(sheet_.Tag(), "");
    EXPECT_TRUE(sheet_.Redraw());
    EXPECT_TRUE(sheet_.CheckInvariants());
  }
  void ExpectLoadsAgain() {
    heard_.on_hearing = nullptr;
    control_->SetConn(connection_);
    control_->SetJournalType(base::MaterialJournal);
    ASSERT_TRUE(control_->Load(7, 0));
    EXPECT_EQ(control_->Rows(), kRowsLoaded);
    EXPECT_EQ(sheet_.TextMatrix(kRowsLoaded - 2, sheet_.ColIndex("StoQty")), "0");
    EXPECT_EQ(sheet_.TextMatrix(kRowsLoaded - 1, sheet_.ColIndex("IssQty")), "11.00\n14.00");
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
    ExpectEnded();
  }

  ControlOverFakes fakes_;
  sheet::GridSheet sheet_;
  FaultyGrid faulty_;
  std::shared_ptr<FakeConnection> connection_;
  testing::EventRecorder heard_;
  std::unique_ptr<Stockbook> control_;
};

TEST_F(FaultyLoad, EndsWithItsMessageWhicheverCallTheGridRefuses) {
  int call = 1;
  for (;; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    heard_.lines.clear();
    faulty_.RefuseCall(call);
    const bool loaded = control_->Load(7, 0);
    faulty_.RefuseCall(0);
    ExpectEnded();
    if (loaded) break;
    ASSERT_EQ(heard_.LastOf("Process"), "-1");
    ASSERT_EQ(heard_.LastOf("Notify"), "the grid refuses");
    if (call % 16 == 0) ExpectLoadsAgain();
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(call, 500) << "the layout alone takes more calls";
  ExpectLoadsAgain();
}

TEST_F(FaultyLoad, ReadsRowsAsEmptyWhenTheGridRefuses) {
  ASSERT_TRUE(control_->Load(7, 0));
  for (int call = 1; call <= 3; ++call) {
    faulty_.RefuseCall(call);
    EXPECT_EQ(control_->BillID(), 0);
    faulty_.RefuseCall(call);
    EXPECT_EQ(control_->BillName(), "");
    faulty_.RefuseCall(call);
    EXPECT_EQ(control_->Flag(), 0);
  }
  faulty_.RefuseCall(0);
  EXPECT_EQ(control_->BillID(3), 1);
}

TEST_F(FaultyLoad, GivesTagAndPointerBackWhenTheLayoutFails) {
  sheet_.SetTag("before");
  for (int call = 2; call < 400; call += 7) {
    faulty_.RefuseCall(call);
    EXPECT_THROW(control_->DefaultFormat(), platform::Error) << call;
    faulty_.RefuseCall(0);
    EXPECT_EQ(sheet_.Tag(), "before");
  }
  sheet_.SetPointer(platform::MousePointer::kHourglass);
  control_->DefaultFormat();
  EXPECT_EQ(sheet_.Pointer(), platform::MousePointer::kHourglass);
  EXPECT_EQ(sheet_.Cols(), 56);
}

// Fails its n-th statement.
class FailingConnection : public platform::Connection {
 public:
  FailingConnection(std::shared_ptr<platform::Connection> real, int failing) : real_(std::move(real)), left_(failing) {}
  std::string ConnectionString() const override { return real_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    if (--left_ == 0) throw platform::Error("execute", "statement refused");
    return real_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return real_->ReadAsOfOneMoment(); }
  bool HasFailed() const { return left_ <= 0; }

 private:
  std::shared_ptr<platform::Connection> real_;
  int left_;
};

TEST_F(FaultyLoad, EndsInOrderWhicheverStatementFails) {
  int statement = 1;
  for (;; ++statement) {
    SCOPED_TRACE("statement " + std::to_string(statement));
    const auto failing = std::make_shared<FailingConnection>(connection_, statement);
    control_->SetConn(failing);
    heard_.lines.clear();
    const bool loaded = control_->Load(7, 0);
    ExpectEnded();
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
    if (!failing->HasFailed()) break;
    // Only the journal statement itself stops a load; look-ups and the balance end in nothing.
    if (!loaded) {
      EXPECT_EQ(heard_.LastOf("Notify"), "statement refused");
    }
  }
  EXPECT_EQ(statement, 7) << "the product, the newest period twice, the journal, the earliest period, the balance";
  ExpectLoadsAgain();
}

TEST_F(FaultyLoad, EndsInOrderWhicheverEventAListenerThrowsFrom) {
  for (const bool standard : {true, false}) {
    size_t event = 1;
    for (;; ++event) {
      SCOPED_TRACE("event " + std::to_string(event));
      heard_.lines.clear();
      bool thrown = false;
      heard_.on_hearing = [&](const std::string&) {
        if (heard_.lines.size() != event) return;
        thrown = true;
        if (standard) throw std::runtime_error("host failed");
        throw 42;
      };
      const bool loaded = control_->Load(7, 0);
      ExpectEnded();
      if (!thrown) {
        EXPECT_TRUE(loaded);
        break;
      }
      EXPECT_FALSE(loaded);
      EXPECT_EQ(heard_.LastOf("Process"), "-1");
    }
    EXPECT_EQ(event, 16U);
    ExpectLoadsAgain();
  }
}

TEST_F(FaultyLoad, DoesNothingWhenItIsCalledFromWithinALoad) {
  int inner_loads = 0;
  heard_.on_hearing = [&](const std::string&) {
    ++inner_loads;
    EXPECT_FALSE(control_->Load(8, 1, "99"));
  };
  EXPECT_TRUE(control_->Load(7, 0));
  EXPECT_EQ(inner_loads, 15) << "one in each event of the one load";
  EXPECT_EQ(control_->KeyID(), 7);
  EXPECT_EQ(control_->dpCode(), "");
  ExpectLoadsAgain();
}

TEST_F(FaultyLoad, StaysWithItsConnectionWhenAListenerTakesItAway) {
  testing::AnswerJournal(*connection_, kLinesOfTwoPeriods);
  const std::weak_ptr<FakeConnection> watched = connection_;
  FakeConnection spare = *connection_;
  heard_.on_hearing = [&](const std::string&) {
    if (heard_.lines.size() == 2) control_->SetConn(nullptr);
  };
  connection_.reset();
  EXPECT_TRUE(control_->Load(7, 0));
  EXPECT_EQ(control_->Rows(), kRowsLoaded);
  EXPECT_EQ(control_->Conn(), nullptr);
  EXPECT_TRUE(watched.expired()) << "let go when the load is over";
  connection_ = std::make_shared<FakeConnection>(spare);
  ExpectLoadsAgain();
}

TEST_F(FaultyLoad, SurvivesAListenerThatChangesTheGridInAnyEvent) {
  const std::vector<std::function<void()>> changes = {
      [&] { sheet_.SetRows(1); },
      [&] { sheet_.SetRows(0); },
      [&] { sheet_.SetCols(1); },
      [&] { sheet_.SetCols(0); },
      [&] { sheet_.RemoveItem(sheet_.Rows() - 1); },
      [&] { sheet_.AddItem("", sheet_.Rows()); },
      [&] { sheet_.LoadColumns({}, 1); },
      [&] { sheet_.GroupBy(3, 3, "%s"); },
      [&] { control_->SetRow(3); },
      [&] { control_->SetJournalType(base::SupplierJournal); },
      [&] { control_->RemoveListener(&heard_); },
      [&] { control_->SetAccRestrict("1"); },
  };
  for (size_t at = 0; at < changes.size(); ++at) {
    for (size_t event = 1; event <= 15; ++event) {
      SCOPED_TRACE("change " + std::to_string(at) + " at event " + std::to_string(event));
      heard_.lines.clear();
      heard_.on_hearing = [&](const std::string&) {
        if (heard_.lines.size() != event) return;
        try {
          changes[at]();
        } catch (const platform::Error&) {
          // The grid may be too empty for it.
        }
      };
      control_->Load(7, 0);
      ExpectEnded();
      control_->RemoveListener(&heard_);
      control_->AddListener(&heard_);
      control_->SetAccRestrict("0");
      if (sheet_.Rows() == 0) sheet_.SetRows(1);
      sheet_.SetFixedRows(1);
      if (sheet_.Cols() == 0) sheet_.SetCols(1);
      sheet_.SetFixedCols(1);
      ExpectLoadsAgain();
      if (HasFatalFailure()) return;
    }
  }
}

TEST_F(FaultyLoad, SaysThatRowsWereTakenAwayWhileItRan) {
  heard_.on_hearing = [&](const std::string&) {
    if (heard_.LastOf("Process") == "60") sheet_.SetRows(1);
  };
  EXPECT_FALSE(control_->Load(7, 0));
  EXPECT_NE(heard_.LastOf("Notify").find("读入期间表格的行被删除"), std::string::npos);
  ExpectLoadsAgain();
}

TEST_F(FaultyLoad, ShowsTheChangedModelInTheNamesThatAreRewritten) {
  ASSERT_TRUE(control_->Load(7, 0));
  sheet_.SetCellData(3, sheet_.ColIndex("ProductName"), base::Value(std::string("螺栓")));
  sheet_.SetTextMatrix(3, sheet_.ColIndex("Model"), "M10");
  std::vector<base::Value> parameters = {base::Value(std::string("Model"))};
  control_->DoCommand("ColChanged", parameters);
  EXPECT_EQ(sheet_.TextMatrix(3, sheet_.ColIndex("ProductName")), "螺栓 M10");
}

}  // namespace
}  // namespace stockbook::control
