// SPDX-License-Identifier: MIT
// What the control does when a piece of memory is refused: the n-th, for every n or nearly, or all from the n-th on.
#include <gtest/gtest.h>

#include <functional>

#include "databases/database_file.h"
#include "memory/refused_memory.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/interaction/event_listener.h"
#include "support/fake_surroundings.h"
#include "support/memory_bag.h"
#include "support/small_journal.h"

namespace stockbook::control {
namespace {

using testing::Refusal;
using testing::RefusedMemory;

// Keeps what it hears without memory.
class Ear : public interaction::EventListener {
 public:
  void Process(int16_t indicator) override { progress = indicator; }
  void Notify(const std::string& message) override { told = !message.empty(); }
  void FindMsg(const std::string&) override { ++found; }

  int16_t progress = 0;
  bool told = false;
  int found = 0;
};

class WithoutMemory : public ::testing::TestWithParam<Refusal> {
 protected:
  WithoutMemory() {
    fakes_.fg.view().SetSize({900, 700}, 1.0);
    control().SetConn(testing::SmallJournal());
    control().AddListener(&ear_);
  }
  ~WithoutMemory() override { control().RemoveListener(&ear_); }

  // Runs the attempt, each time prepared, with the first request refused, then with the second and so on until it needs
  // no more: every one of the first `dense_`, then ever fewer. The check follows each. Returns how many requests it
  // takes.
  long AtEveryRequest(
      const std::function<void()>& attempt, const std::function<void()>& check,
      const std::function<void()>& prepare = [] {}) {
    for (long request = 1;; request += 1 + request / dense_) {
      SCOPED_TRACE("request " + std::to_string(request));
      prepare();
      ear_ = {};
      bool refused = false;
      {
        const RefusedMemory memory(GetParam(), request);
        attempt();
        refused = RefusedMemory::HasRefused();
      }
      EXPECT_EQ(fakes_.fg.Tag(), "");
      EXPECT_TRUE(fakes_.fg.Redraw());
      EXPECT_EQ(fakes_.fg.Pointer(), platform::MousePointer::kDefault);
      EXPECT_TRUE(fakes_.fg.CheckInvariants());
      check();
      if (!refused || HasFailure()) {
        RecordProperty("requests", std::to_string(request));
        return request;
      }
    }
  }
  std::string Shown() {
    std::string shown = control().Caption() + "\n";
    for (int row = 0; row < fakes_.fg.Rows(); ++row) {
      for (int column = 0; column < fakes_.fg.Cols(); ++column) shown += fakes_.fg.TextMatrix(row, column) + "|";
      shown += "\n";
    }
    return shown;
  }
  // The stock after each record; what a statement delivers in its place is not the stock.
  std::vector<std::string> Stock() {
    std::vector<std::string> stock;
    const int column = fakes_.fg.ColIndex("StoQty");
    for (size_t record = 0; record < fakes_.fg.RecordCount(); ++record)
      stock.push_back(fakes_.fg.TextMatrix(fakes_.fg.RowOfRecord(record), column));
    return stock;
  }
  // What a load ends with, whichever request was refused, and that the next one is right.
  void ExpectLoads(
      const std::function<bool()>& load, const std::function<void()>& prepare = [] {}) {
    ASSERT_TRUE(load());
    const std::string right = Shown();
    const std::vector<std::string> stock = Stock();
    bool loaded = false;
    const auto check = [&] {
      EXPECT_EQ(ear_.progress, -1);
      EXPECT_TRUE(loaded || ear_.told);
      if (loaded) {
        EXPECT_EQ(Shown(), right);
      } else if (GetParam() == Refusal::kOne) {
        const std::vector<std::string> shown = Stock();
        EXPECT_TRUE(shown == stock || shown == std::vector<std::string>(shown.size())) << Shown();
      }
      EXPECT_TRUE(load());
      EXPECT_EQ(Shown(), right);
    };
    EXPECT_GT(AtEveryRequest([&] { loaded = load(); }, check, prepare), 1000);
  }
  Stockbook& control() { return *fakes_.control; }

  testing::ControlOverFakes fakes_;
  Ear ear_;
  long dense_ = 2000;
};

// The same with the embedded database, of whose requests there are many more.
class DatabaseWithoutMemory : public WithoutMemory {
 protected:
  DatabaseWithoutMemory() {
    testing::CreateInventory(file_);
    testing::FillInventory(file_);
    dense_ = 300;
  }
  ~DatabaseWithoutMemory() override { control().SetConn(nullptr); }

  testing::DatabaseFile file_;
};

TEST_P(WithoutMemory, ALoadEndsInOrder) {
  ExpectLoads([&] { return control().Load(7, 0); });
}

TEST_P(DatabaseWithoutMemory, ALoadEndsInOrder) {
  control().SetJournalType(base::ProjectJournal);
  control().SetConn(databases::OpenEmbedded(file_.DesktopString()));
  ExpectLoads([&] { return control().Load(1, 0, "01"); });
}

// The connection reads again what tables there are.
TEST_P(DatabaseWithoutMemory, ALoadOfChangedTablesEndsInOrder) {
  control().SetConn(databases::OpenEmbedded(file_.DesktopString()));
  ExpectLoads([&] { return control().Load(1, 1); }, [&] { file_.Run("CREATE TABLE 备注(x TEXT); DROP TABLE 备注"); });
}

TEST_P(DatabaseWithoutMemory, TheFirstLoadEndsInOrder) {
  control().SetJournalType(base::SupplierJournal);
  ExpectLoads([&] {
    try {
      control().SetConn(databases::OpenEmbedded(file_.DesktopString()));
    } catch (const std::exception&) {
      // Opening is the host's call, and may say so by an exception.
      ear_.progress = -1;
      ear_.told = true;
      return false;
    }
    return control().Load(1, 0, "01");
  });
}

TEST_P(WithoutMemory, TheLayoutIsThatOfTheNextOne) {
  ASSERT_TRUE(control().Load(7, 0));
  const std::string right = Shown();
  const auto attempt = [&] {
    try {
      control().DefaultFormat();
    } catch (const std::bad_alloc&) {
      // As every method that tells no errors.
    }
  };
  const auto check = [&] {
    control().DefaultFormat();
    EXPECT_EQ(Shown(), right);
  };
  EXPECT_GT(AtEveryRequest(attempt, check), 50);
}

TEST_P(WithoutMemory, FindingLeavesTheJournal) {
  ASSERT_TRUE(control().Load(7, 0));
  const std::string right = Shown();
  ear_ = {};
  control().Find("入库 5");
  const int rows = ear_.found;
  ASSERT_GT(rows, 0);
  const auto attempt = [&] {
    try {
      control().Find("入库 5");
    } catch (const std::bad_alloc&) {
      // As every method that tells no errors.
    }
  };
  const auto check = [&] {
    EXPECT_LE(ear_.found, rows);
    EXPECT_EQ(Shown(), right);
    ear_.found = 0;
    control().Find("入库 5");
    EXPECT_EQ(ear_.found, rows);
  };
  EXPECT_GT(AtEveryRequest(attempt, check), 20);
}

TEST_P(WithoutMemory, SavedPropertiesAreReadAgain) {
  testing::MemoryBag bag;
  control().SetBackColor(0x123456);
  control().SetRowHeightMax(600);
  control().WriteProperties(bag);
  control().SetBackColor(0);
  const auto attempt = [&] {
    try {
      control().ReadProperties(bag);
    } catch (const std::bad_alloc&) {
      // An error reaches the caller; what was read before it stays.
    }
  };
  const auto check = [&] {
    control().SetBackColor(0);
    control().ReadProperties(bag);
    EXPECT_EQ(control().BackColor(), platform::Colour{0x123456});
    testing::MemoryBag again;
    control().WriteProperties(again);
    EXPECT_EQ(again.entries(), bag.entries());
  };
  EXPECT_GT(AtEveryRequest(attempt, check), 1);
}

constexpr auto kNameOf = [](const ::testing::TestParamInfo<Refusal>& refusal) {
  return std::string(refusal.param == Refusal::kOne ? "OfOne" : "OfAllFromThenOn");
};
INSTANTIATE_TEST_SUITE_P(Refusals, WithoutMemory, ::testing::Values(Refusal::kOne, Refusal::kAllFromThenOn), kNameOf);
INSTANTIATE_TEST_SUITE_P(Refusals, DatabaseWithoutMemory, ::testing::Values(Refusal::kOne, Refusal::kAllFromThenOn),
                         kNameOf);

}  // namespace
}  // namespace stockbook::control
