// SPDX-License-Identifier: MIT
// The whole Load of a stock journal through a late-bound ADO connection, compared with a walk over the same rows by the
// same GetRows that keeps nothing, in one run. The objects of the connection have their rows ready, so that neither
// side pays for a database: what is measured is what reading them costs beyond their being handed over. Run by hand:
//
//   cmake --build build/windows-x64 --target stockbook_ado_load_bench
//   build/stockbook sample build/ado-bench.db --lines 100000 --one-product
//   tools/wine build/windows-x64/bench/com/ado_load_bench.exe build/ado-bench.db [ROUNDS]
//
// `of_walk` is Load / walk, `of_walk_reading` the connection's Execute alone / walk; the least of the rounds counts.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "com/ado/ado_connection.h"
#include "com/ado_double/ado_double.h"
#include "journal/query_builder.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "support/fake_surroundings.h"

namespace {

using namespace stockbook;
using com::ComPtr;
using com::Variant;

constexpr int32_t kWalkedRows = 256;

// Values that were made before, and are copied for whoever asks.
class ReadyRows : public testing::AdoRows {
 public:
  explicit ReadyRows(const testing::AdoRows& source) : AdoRows(source.names()), count_(source.Count()) {
    values_.reserve(count_ * names().size());
    for (size_t row = 0; row < count_; ++row) {
      for (size_t field = 0; field < names().size(); ++field) values_.push_back(source.At(row, field));
    }
  }
  size_t Count() const override { return count_; }
  Variant At(size_t row, size_t field) const override {
    Variant copy;
    VariantCopy(&copy.get(), const_cast<VARIANT*>(&values_[row * names().size() + field].get()));
    return copy;
  }

 private:
  size_t count_;
  std::vector<Variant> values_;
};

// Executes a statement on the database once, and has its rows ready ever after.
class ReadyStatements {
 public:
  explicit ReadyStatements(const std::string& path)
      : database_(databases::OpenEmbedded("Provider=Stockbook.Embedded;Data Source=" + path)) {}
  std::shared_ptr<testing::AdoRows> Run(const std::string& statement) {
    std::shared_ptr<testing::AdoRows>& rows = ready_[statement];
    if (rows == nullptr)
      rows = std::make_shared<ReadyRows>(testing::ColumnRows(database_->Execute(statement).TakeAll()));
    return rows;
  }
  std::string Journal() { return journal::QueryBuilder(database_.get(), base::MaterialJournal, {1, 0, ""}).Build(); }

 private:
  std::unique_ptr<platform::Connection> database_;
  std::map<std::string, std::shared_ptr<testing::AdoRows>> ready_;
};

double CpuSeconds() {
  FILETIME created;
  FILETIME ended;
  FILETIME kernel;
  FILETIME user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<double>(static_cast<uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
  };
  return (ticks(kernel) + ticks(user)) * 1e-7;
}

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "ado_load_bench: %s\n", what);
  std::exit(1);
}

DISPID IdOf(IDispatch& object, const wchar_t* name) {
  DISPID id = 0;
  auto* asked = const_cast<wchar_t*>(name);
  if (FAILED(object.GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_USER_DEFAULT, &id))) Fail("a member is missing");
  return id;
}

Variant Invoke(IDispatch& object, DISPID id, std::vector<VARIANT> reversed) {
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  Variant answer;
  if (FAILED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                           answer.Put(), nullptr, nullptr)))
    Fail("a call failed");
  return answer;
}

// What any reader has to pay. Returns the number of rows.
size_t Walk(IDispatch& connection, const std::string& statement) {
  Variant missing;
  missing.get().vt = VT_ERROR;
  missing.get().scode = DISP_E_PARAMNOTFOUND;
  const Variant text{std::string_view(statement)};
  const Variant options(int32_t{-1});
  const Variant result = Invoke(connection, IdOf(connection, L"Execute"), {options.get(), missing.get(), text.get()});
  IDispatch& recordset = *result.get().pdispVal;
  const DISPID at_end = IdOf(recordset, L"EOF");
  const DISPID get_rows = IdOf(recordset, L"GetRows");
  size_t rows = 0;
  while (Invoke(recordset, at_end, {}).get().boolVal == VARIANT_FALSE) {
    const Variant most(kWalkedRows);
    rows += Invoke(recordset, get_rows, {most.get()}).get().parray->rgsabound[0].cElements;
  }
  return rows;
}

template <typename Work>
double LeastSeconds(double least, Work work) {
  const double start = CpuSeconds();
  work();
  return std::min(least, CpuSeconds() - start);
}

void LoadOnce(IDispatch& connection, size_t rows) {
  testing::ControlOverFakes fakes;
  fakes.control->SetConn(com::OpenAdoConnection(&connection));
  if (!fakes.control->Load(1, 0)) Fail("the journal was not loaded");
  if (static_cast<size_t>(fakes.control->Rows()) < rows) Fail("lines are missing");
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) Fail("usage: ado_load_bench DB [ROUNDS]");
  const int rounds = count > 2 ? std::atoi(arguments[2]) : 5;
  ReadyStatements statements(arguments[1]);
  testing::AdoLog log;
  const auto run = [&](const std::string& statement) { return statements.Run(statement); };
  const ComPtr<IDispatch> connection = testing::MakeAdoDouble(log, "Provider=Ready", run);
  const std::string journal = statements.Journal();
  size_t rows = Walk(*connection, journal);
  LoadOnce(*connection, rows);
  double walking = 1e9;
  double reading = 1e9;
  double loading = 1e9;
  for (int round = 0; round < rounds; ++round) {
    walking = LeastSeconds(walking, [&] { rows = Walk(*connection, journal); });
    reading = LeastSeconds(reading, [&] { com::OpenAdoConnection(connection.get())->Execute(journal); });
    loading = LeastSeconds(loading, [&] { LoadOnce(*connection, rows); });
  }
  std::printf("rows %zu\nwalk %.3f s\nreading %.3f s, of_walk_reading %.2f\nload %.3f s, of_walk %.2f\n", rows, walking,
              reading, reading / walking, loading, loading / walking);
  return 0;
}
