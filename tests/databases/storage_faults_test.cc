// SPDX-License-Identifier: MIT
// A disk that refuses to read, or reads something else, at every one of the reads that an operation takes.
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "databases/database_file.h"
#include "databases/faulty_storage.h"
#include "databases/sqlite/embedded_connection.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/platform/connection.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"

namespace stockbook::testing {
namespace {

using databases::EmbeddedConnection;
using databases::Strategy;

struct LoadedJournal {
  const char* name;
  base::tqJournalTypeContants type;
  int32_t key;
  int32_t second;
  const char* code;
};

constexpr LoadedJournal kJournals[] = {
    {"material", base::MaterialJournal, 1, 0, ""}, {"material of a depot", base::MaterialJournal, 1, 2, ""},
    {"supplier", base::SupplierJournal, 1, 5, ""}, {"supplier class", base::SupplierJournal, 1, 0, "01"},
    {"customer", base::CustomerJournal, 0, 7, ""}, {"customer class", base::CustomerJournal, 1, 0, "01"},
    {"project", base::ProjectJournal, 1, 3, ""},   {"project class", base::ProjectJournal, 1, 0, "01"},
};

constexpr Fault kRefusals[] = {Fault::kRefusedRead, Fault::kRefusedReads, Fault::kRefusedCall};
constexpr Fault kTears[] = {Fault::kShortRead, Fault::kHalfOfZeros, Fault::kHalfOfOtherBytes};

// Writes down what passes through.
class RecordingConnection : public platform::Connection {
 public:
  RecordingConnection(std::shared_ptr<platform::Connection> real, std::vector<std::string>& statements)
      : real_(std::move(real)), statements_(statements) {}
  std::string ConnectionString() const override { return real_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    statements_.emplace_back(statement);
    return real_->Execute(statement, options);
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return real_->ReadAsOfOneMoment(); }

 private:
  std::shared_ptr<platform::Connection> real_;
  std::vector<std::string>& statements_;
};

// Nothing where the statement asks for what the table does not have, as one of a project's does.
std::optional<std::vector<std::string>> RowsOf(EmbeddedConnection& connection, const std::string& statement) {
  try {
    return ExactRows(connection.Execute(statement));
  } catch (const platform::Error& error) {
    EXPECT_FALSE(error.IsOfEngine()) << error.what();
    return std::nullopt;
  }
}

// Two inventories: one whose writer keeps a rollback journal, and one that has everything in its log.
class StorageFaults : public ::testing::TestWithParam<const char*> {
 protected:
  StorageFaults() {
    // Small pages make many reads, and rows that do not fit into one.
    file_.Run("PRAGMA page_size=512");
    file_.Run(std::string("PRAGMA journal_mode=") + GetParam());
    file_.Run("PRAGMA wal_autocheckpoint=0");
    CreateInventory(file_);
    FillInventory(file_);
    storage_.emplace();
  }
  ~StorageFaults() override {
    control().SetConn(nullptr);
    EXPECT_EQ(storage_->OpenFiles(), 0);
  }

  // Runs `attempt` with the fault at its first call, its second and so on, until it ends before it comes to that call;
  // returns how many calls it takes.
  int AtEveryCall(Fault fault, const std::function<void()>& prepare, const std::function<void()>& attempt,
                  const std::function<void()>& check) {
    for (int call = 1; !HasFailure(); ++call) {
      SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + " at call " + std::to_string(call));
      prepare();
      storage_->Arm(fault, call);
      attempt();
      const bool happened = storage_->Disarm();
      check();
      if (!happened) return storage_->Calls();
    }
    return 0;
  }

  void Connect() { control().SetConn(databases::OpenEmbedded(file_.DesktopString())); }
  bool Load(const LoadedJournal& journal) {
    heard_.lines.clear();
    control().SetJournalType(journal.type);
    control().SetdpCode("");
    return control().Load(journal.key, journal.second, journal.code);
  }
  std::string Shown() {
    std::string shown = control().Caption() + "\n";
    for (int row = 0; row < fakes_.fg.Rows(); ++row) {
      for (int column = 0; column < fakes_.fg.Cols(); ++column) shown += fakes_.fg.TextMatrix(row, column) + "|";
      shown += "\n";
    }
    return shown;
  }
  void ExpectEnded() {
    EXPECT_EQ(heard_.LastOf("Process"), "-1");
    EXPECT_EQ(fakes_.fg.Tag(), "");
    EXPECT_TRUE(fakes_.fg.Redraw());
    EXPECT_TRUE(fakes_.fg.CheckInvariants());
  }
  // A sentence about the file, and nothing after it but the end.
  void ExpectTold() {
    ASSERT_GE(heard_.lines.size(), 2U);
    const std::string& last = heard_.lines[heard_.lines.size() - 2];
    EXPECT_TRUE(last.starts_with("Notify ") && last.find(file_.path()) != std::string::npos) << last;
  }
  // Of closed connections. Beside a log, whose writer is in this process, SQLite keeps their descriptors for the next
  // one.
  void ExpectNothingIsLeft(sqlite3_int64 memory) {
    EXPECT_EQ(storage_->OpenFiles(), 0);
    if (GetParam() != std::string("WAL")) {
      EXPECT_EQ(sqlite3_memory_used(), memory);
    }
  }
  // Another program changes the tables, so that everything has to be read again.
  void ChangeTables() {
    file_.Run("CREATE TABLE 备注(x TEXT)");
    file_.Run("DROP TABLE 备注");
  }
  control::Stockbook& control() { return *fakes_.control; }

  DatabaseFile file_;
  std::optional<FaultyStorage> storage_;
  ControlOverFakes fakes_;
  EventRecorder heard_;
};

TEST_P(StorageFaults, OpeningSaysWhatItCannotRead) {
  for (const Fault fault : {Fault::kRefusedRead, Fault::kRefusedReads, Fault::kRefusedCall, Fault::kShortRead,
                            Fault::kHalfOfZeros, Fault::kHalfOfOtherBytes}) {
    const auto open = [&] {
      try {
        EmbeddedConnection(file_.DesktopString());
      } catch (const platform::Error& error) {
        EXPECT_TRUE(error.IsOfEngine()) << error.what();
        EXPECT_NE(std::string(error.what()).find(file_.path()), std::string::npos) << error.what();
      }
    };
    const auto memory = sqlite3_memory_used();
    const auto check = [&] { ExpectNothingIsLeft(memory); };
    const int calls = AtEveryCall(
        fault, [] {}, open, check);
    EXPECT_GE(calls, 4);
    RecordProperty("calls_" + std::to_string(static_cast<int>(fault)), calls);
  }
}

// Either the whole journal or an error, and the next load is right.
TEST_P(StorageFaults, EndALoadWithTheWholeJournalOrSaySo) {
  control().AddListener(&heard_);
  for (const LoadedJournal& journal : kJournals) {
    SCOPED_TRACE(journal.name);
    Connect();
    ASSERT_TRUE(Load(journal)) << heard_.LastOf("Notify");
    const std::string right = Shown();
    for (const Fault fault : kRefusals) {
      bool loaded = false;
      const auto check = [&] {
        ExpectEnded();
        if (loaded) {
          EXPECT_EQ(Shown(), right);
        } else {
          ExpectTold();
        }
        EXPECT_TRUE(Load(journal)) << heard_.LastOf("Notify");
        EXPECT_EQ(Shown(), right);
      };
      const auto load = [&] { loaded = Load(journal); };
      control().SetConn(nullptr);
      const auto memory = sqlite3_memory_used();
      const int fresh = AtEveryCall(
          fault, [&] { Connect(); }, load, check);
      control().SetConn(nullptr);
      ExpectNothingIsLeft(memory);
      Connect();
      const int changed = AtEveryCall(
          fault, [&] { ChangeTables(); }, load, check);
      RecordProperty(std::string(journal.name) + " " + std::to_string(static_cast<int>(fault)),
                     std::to_string(fresh) + " and " + std::to_string(changed));
    }
  }
}

TEST_P(StorageFaults, OfTornPagesNeverHarm) {
  control().AddListener(&heard_);
  for (const LoadedJournal& journal : kJournals) {
    SCOPED_TRACE(journal.name);
    Connect();
    ASSERT_TRUE(Load(journal)) << heard_.LastOf("Notify");
    const std::string right = Shown();
    for (const Fault fault : kTears) {
      const auto load = [&] {
        if (!Load(journal)) {
          EXPECT_NE(heard_.LastOf("Notify"), "");
        }
      };
      const int fresh = AtEveryCall(
          fault, [&] { Connect(); }, load, [&] { ExpectEnded(); });
      const int changed = AtEveryCall(
          fault, [&] { ChangeTables(); }, load, [&] { ExpectEnded(); });
      RecordProperty(std::string(journal.name) + " " + std::to_string(static_cast<int>(fault)),
                     std::to_string(fresh) + " and " + std::to_string(changed));
      Connect();
      EXPECT_TRUE(Load(journal)) << heard_.LastOf("Notify");
      EXPECT_EQ(Shown(), right);
    }
  }
}

TEST_P(StorageFaults, EndEveryStatementWithAllRowsOrAnErrorOfTheEngine) {
  int most = 0;
  for (const LoadedJournal& journal : kJournals) {
    std::vector<std::string> statements;
    control().SetConn(
        std::make_shared<RecordingConnection>(databases::OpenEmbedded(file_.DesktopString()), statements));
    ASSERT_TRUE(Load(journal));
    control().SetConn(nullptr);
    for (const Strategy strategy : {Strategy::kFastest, Strategy::kArms, Strategy::kStatement}) {
      for (const std::string& statement : statements) {
        SCOPED_TRACE(statement);
        std::optional<EmbeddedConnection> connection(std::in_place, file_.DesktopString(), strategy);
        const auto rows = RowsOf(*connection, statement);
        if (!rows) continue;
        const std::vector<std::string>& right = *rows;
        const auto execute = [&] {
          try {
            EXPECT_EQ(ExactRows(connection->Execute(statement)), right);
          } catch (const platform::Error& error) {
            EXPECT_TRUE(error.IsOfEngine()) << error.what();
          }
        };
        const auto check = [&] { EXPECT_EQ(ExactRows(connection->Execute(statement)), right); };
        const auto connect = [&] { connection.emplace(file_.DesktopString(), strategy); };
        most = std::max(most, AtEveryCall(Fault::kRefusedRead, connect, execute, check));
        AtEveryCall(
            Fault::kRefusedRead, [&] { ChangeTables(); }, execute, check);
      }
    }
  }
  RecordProperty("most_reads", most);
}

// What a host asks for between loads.
TEST_P(StorageFaults, LeaveReadersWithTheirAnswerOrWithNothingAndAMessage) {
  int issued = 0;
  const std::pair<const char*, std::function<std::string()>> readers[] = {
      {"period", [&] { return control().AccPeriod(); }},
      {"depot", [&] { return control().DepotName(); }},
      {"subject",
       [&] {
         control().SetKeyID(2);
         return control().KeyName();
       }},
      {"source", [&] { return control().Fields().IssueSource(issued); }},
  };
  Connect();
  ASSERT_TRUE(Load({"", base::MaterialJournal, 1, 1, ""}));
  while (issued < control().Rows() && control().Fields().IssueSource(issued).empty()) ++issued;
  control().AddListener(&heard_);
  for (const auto& reader : readers) {
    const auto& [name, reading] = reader;
    const auto& read = reading;  // a lambda captures no binding
    SCOPED_TRACE(name);
    const std::string right = read();
    EXPECT_NE(right, "");
    for (const Fault fault : kRefusals) {
      std::string found;
      const auto check = [&] {
        if (found != right) {
          EXPECT_EQ(found, "");
          EXPECT_NE(heard_.LastOf("Notify").find(file_.path()), std::string::npos) << heard_.LastOf("Notify");
        }
        heard_.lines.clear();
        EXPECT_EQ(read(), right);
        EXPECT_EQ(heard_.lines, std::vector<std::string>());
      };
      const int calls = AtEveryCall(
          fault, [&] { ChangeTables(); }, [&] { found = read(); }, check);
      EXPECT_GE(calls, 2);
      RecordProperty(std::string(name) + " " + std::to_string(static_cast<int>(fault)), calls);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, StorageFaults, ::testing::Values("DELETE", "WAL"));

}  // namespace
}  // namespace stockbook::testing
