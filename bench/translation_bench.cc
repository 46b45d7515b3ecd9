// SPDX-License-Identifier: MIT
// How long the longest statement that the control sends, the journal of a project, is being translated: once for each
// engine's language. The counter `us` is the processor time of one translation in microseconds; at most 200.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "databases/dialect/postgres_emitter.h"
#include "databases/dialect/server_emitter.h"
#include "databases/dialect/sqlite_emitter.h"
#include "databases/dialect/translation.h"
#include "databases/sqlite/catalog.h"
#include "databases/sqlite/embedded_connection.h"
#include "journal/query_builder.h"
#include "sqlite_stepping.h"
#include "stockbook/sample/sample_inventory.h"

namespace {

using namespace stockbook;

class SampleFile {
 public:
  SampleFile() : path_((std::filesystem::temp_directory_path() / "stockbook-translation-bench.db").string()) {
    std::filesystem::remove(path_);
    app::SampleOptions options;
    options.lines = 100;
    app::WriteSampleInventory(path_, options);
  }
  ~SampleFile() { std::filesystem::remove(path_); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

template <typename Emitter>
void Translate(benchmark::State& state) {
  const SampleFile file;
  databases::EmbeddedConnection connection("Provider=Stockbook.Embedded;Data Source=" + file.path());
  const std::string statement = journal::QueryBuilder(&connection, base::ProjectJournal, {1, 0, "01"}).Build();
  const databases::Database database(file.path());
  databases::Catalog catalog(database);
  catalog.Refresh();
  const Emitter emitter;
  constexpr int kTimes = 100;
  double seconds = 0;
  for (auto _ : state) {
    const double start = bench::CpuSeconds();
    for (int time = 0; time < kTimes; ++time) {
      databases::Translation translation(statement, {databases::Dialect::kDesktop, emitter},
                                         [&](std::string_view name) { return catalog.FindTable(name); });
      benchmark::DoNotOptimize(translation.plan());
    }
    const double once = (bench::CpuSeconds() - start) / kTimes;
    seconds = seconds == 0 ? once : std::min(seconds, once);
  }
  state.counters["us"] = seconds * 1e6;
}
BENCHMARK(Translate<databases::SqliteEmitter>)->Iterations(20);
BENCHMARK(Translate<databases::PostgresEmitter>)->Iterations(20);
BENCHMARK(Translate<databases::ServerEmitter>)->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
