// SPDX-License-Identifier: MIT
// The whole Load of a stock journal of one product, as ratios measured in one run,
// compared with SQLite's own interface and default settings stepping the same statement once and reading every value,
// with QSqlQueryModel's memory, with memcpy, with a host's own objects instead of the file, and with itself on fewer
// lines or more periods. `load_bench [LINES
// [ROUNDS]]`, by default 1,000,000 and 3; the least of the rounds counts.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "child_process.h"
#include "contract/plain_inventory.h"
#include "databases/sqlite/embedded_connection.h"
#include "databases/sqlite/process_settings.h"
#include "journal/query_builder.h"
#include "journal/running_pass.h"
#include "sqlite_stepping.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/databases/sqlite/open_embedded.h"
#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/connection.h"
#include "stockbook/sample/sample_inventory.h"
#include "support/fake_surroundings.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;
using bench::ElapsedSeconds;
using bench::InChild;
using bench::MeasureStepping;
using bench::ResidentBytes;

std::string SampleOf(int64_t lines, int periods) {
  const auto path = std::filesystem::temp_directory_path() /
                    ("stockbook-load-bench-" + std::to_string(lines) + "-" + std::to_string(periods) + ".db");
  if (!std::filesystem::exists(path)) {
    app::WriteSampleInventory(path.string(),
                              {.lines = lines, .periods = periods, .range = app::SampleProductRange::One});
  }
  return path.string();
}

std::string ConnectionTo(const std::string& path) { return "Provider=Stockbook.Embedded;Data Source=" + path; }

std::string PlainStatement(const std::string& path) {
  databases::EmbeddedConnection connection(ConnectionTo(path));
  return bench::PlainSql(journal::QueryBuilder(&connection, base::MaterialJournal, {1, 0, ""}).Build());
}

// Passes statements on and adds up the time they take.
class TimedConnection : public platform::Connection {
 public:
  explicit TimedConnection(std::unique_ptr<platform::Connection> inner) : inner_(std::move(inner)) {}
  std::string ConnectionString() const override { return inner_->ConnectionString(); }
  platform::Recordset Execute(std::string_view statement, int options) override {
    const double start = CpuSeconds();
    platform::Recordset result = inner_->Execute(statement, options);
    seconds += CpuSeconds() - start;
    return result;
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override { return inner_->ReadAsOfOneMoment(); }
  double seconds = 0;

 private:
  std::unique_ptr<platform::Connection> inner_;
};

// A host that hears every event.
class Host : public interaction::EventListener {
 public:
  void Process(int16_t indicator) override { last = indicator; }
  int last = 0;
};

struct LoadCost {
  double seconds = 0;  // processor time of all threads
  double elapsed = 0;
  double connection_seconds = 0;
  double bytes = 0;
  double rows = 0;
};

template <typename Open>
LoadCost CostOf(Open open) {
  testing::ControlOverFakes fakes;
  Host host;
  fakes.control->AddListener(&host);
  LoadCost cost;
  malloc_trim(0);
  const double bytes = ResidentBytes();
  const double start = CpuSeconds();
  const double began = ElapsedSeconds();
  auto connection = std::make_shared<TimedConnection>(open());
  fakes.control->SetConn(connection);
  if (!fakes.control->Load(1, 0)) std::exit(1);
  cost.seconds = CpuSeconds() - start;
  cost.elapsed = ElapsedSeconds() - began;
  cost.connection_seconds = connection->seconds;
  cost.bytes = ResidentBytes() - bytes;
  cost.rows = fakes.control->Rows();
  return cost;
}

LoadCost MeasureLoad(const std::string& path) {
  return InChild([&] { return CostOf([&] { return databases::OpenEmbedded(ConnectionTo(path)); }); });
}

// The same rows as a host's own objects, which are there before.
LoadCost MeasureOwnObjects(const std::string& path) {
  return InChild([&] {
    const auto objects = std::make_shared<testing::PlainInventory>(testing::ReadPlainInventory(path));
    return CostOf([&] { return databases::OpenRowSource(std::make_shared<testing::PlainSource>(objects)); });
  });
}

double ModelBytes(const std::string& path, const std::string& sql) {
  return InChild([&] {
    int count = 0;
    QCoreApplication application(count, nullptr);
    QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE");
    database.setDatabaseName(QString::fromStdString(path));
    if (!database.open()) std::exit(1);
    const double bytes = ResidentBytes();
    QSqlQueryModel model;
    QSqlQuery query(database);
    if (!query.exec(QString::fromStdString(sql))) std::exit(1);
    model.setQuery(std::move(query));
    while (model.canFetchMore()) model.fetchMore();
    // The driver keeps the visited rows.
    for (int row = 0; row < model.rowCount(); ++row) benchmark::DoNotOptimize(model.data(model.index(row, 0)));
    return ResidentBytes() - bytes;
  });
}

struct PassCost {
  double pass_seconds = 1e9;
  double copy_seconds = 1e9;
  double overwrite_seconds = 1e9;
};

// The pass with a total per period, compared with memcpy of three columns of eight bytes (quantity, second quantity,
// amount): into new memory, as for a fresh copy, and over an old copy.
PassCost MeasurePass(const std::string& path, int periods) {
  return InChild([&] {
    // Allocate new memory each time.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    const auto connection = databases::OpenEmbedded(ConnectionTo(path));
    std::vector<platform::Field> fields =
        connection->Execute(journal::QueryBuilder(connection.get(), base::MaterialJournal, {1, 0, ""}).Build())
            .TakeAll();
    const auto column = [&](const char* name) {
      return &std::find_if(fields.begin(), fields.end(), [&](const platform::Field& field) {
                return field.name == name;
              })->column;
    };
    const size_t rows = fields.front().column.size();
    const std::vector<double> source(rows * 3, 1.5);
    PassCost cost;
    for (int round = 0; round < 9; ++round) {
      double start = CpuSeconds();
      journal::RunningBalance balance(journal::BalanceKind::kStock, {});
      journal::RunningPass pass(balance, {column("Quantity"), column("Quantity2"), column("Account")},
                                {column("RevQty"), column("RevQty2"), column("RevAcc")},
                                {column("IssQty"), column("IssQty2"), column("IssAcc")});
      for (size_t period = 0; period < static_cast<size_t>(periods); ++period) {
        balance.StartPeriod();
        pass.Run(rows * period / static_cast<size_t>(periods), rows * (period + 1) / static_cast<size_t>(periods),
                 [](const journal::RunningColumns& running) { benchmark::DoNotOptimize(running.price.data()); });
        benchmark::DoNotOptimize(balance.Period());
      }
      cost.pass_seconds = std::min(cost.pass_seconds, CpuSeconds() - start);
      const auto copy = [&](double* to) {
        for (size_t part = 0; part < 3; ++part)
          std::memcpy(to + part * rows, source.data() + part * rows, rows * sizeof(double));
        benchmark::DoNotOptimize(to);
        benchmark::ClobberMemory();
      };
      start = CpuSeconds();
      const auto fresh = std::make_unique_for_overwrite<double[]>(rows * 3);
      copy(fresh.get());
      cost.copy_seconds = std::min(cost.copy_seconds, CpuSeconds() - start);
      start = CpuSeconds();
      copy(fresh.get());
      cost.overwrite_seconds = std::min(cost.overwrite_seconds, CpuSeconds() - start);
    }
    return cost;
  });
}

LoadCost Least(const LoadCost& left, const LoadCost& right) {
  return {std::min(left.seconds, right.seconds), std::min(left.elapsed, right.elapsed),
          std::min(left.connection_seconds, right.connection_seconds), std::min(left.bytes, right.bytes), right.rows};
}

void Print(const char* what, double ratio, double limit) {
  std::printf("%-70s %8.4f x  (at most %.3g x)%s\n", what, ratio, limit, ratio <= limit ? "" : "  OVER");
}

}  // namespace

int main(int argc, char** argv) {
  databases::TurnOffMemoryStatistics();
  const int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1000000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
  const std::string path = SampleOf(lines, 12);
  const std::string tenth = SampleOf(lines / 10, 12);
  const std::string many_periods = SampleOf(lines, 1200);
  const std::string sql = PlainStatement(path);
  bench::StepCost step;
  LoadCost load = MeasureLoad(path);
  LoadCost small = MeasureLoad(tenth);
  LoadCost periods = MeasureLoad(many_periods);
  LoadCost objects = MeasureOwnObjects(path);
  for (int round = 0; round < rounds; ++round) {
    const bench::StepCost again = MeasureStepping(path, sql);
    step = {std::min(step.seconds, again.seconds), std::min(step.elapsed, again.elapsed)};
    load = Least(load, MeasureLoad(path));
    small = Least(small, MeasureLoad(tenth));
    periods = Least(periods, MeasureLoad(many_periods));
    objects = Least(objects, MeasureOwnObjects(path));
  }
  const PassCost pass = MeasurePass(path, 12);
  const double model = ModelBytes(path, sql);
  std::printf("%lld lines of one product, least of %d rounds, processor time unless elapsed\n",
              static_cast<long long>(lines), rounds);
  std::printf(
      "SQLite stepping %.3f s (elapsed %.3f s), Load %.3f s (elapsed %.3f s) of which the connection %.3f s; %.0f "
      "bytes a line; pass %.2f ms, copy %.2f "
      "ms, over an old copy %.2f ms\n",
      step.seconds, step.elapsed, load.seconds, load.elapsed, load.connection_seconds,
      load.bytes / static_cast<double>(lines), pass.pass_seconds * 1e3, pass.copy_seconds * 1e3,
      pass.overwrite_seconds * 1e3);
  Print("whole Load / SQLite's own interface stepping the statement, elapsed", load.elapsed / step.elapsed, 0.18);
  Print("the same, processor time of all threads", load.seconds / step.seconds, 0.30);
  Print("running balance with period sums / memcpy of three columns", pass.pass_seconds / pass.copy_seconds, 2.0);
  Print("the control's own share / SQLite's own interface", (load.seconds - load.connection_seconds) / step.seconds,
        0.03);
  Print("resident memory added / QSqlQueryModel", load.bytes / model, 0.065);
  Print("all lines / a tenth of them", load.seconds / small.seconds, 10.5);
  Print("a host's own objects / the file", objects.seconds / load.seconds, 8);
  Print("1,200 periods / 12 periods", periods.seconds / load.seconds, 1.05);
}
