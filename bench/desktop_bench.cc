// SPDX-License-Identifier: MIT
// Opening a desktop file again, unchanged, compared with opening an SQLite file of the same tables, both up to the
// first row of a statement. The result is a ratio of the medians of one run, the rounds interleaved: the counter
// `of_sqlite`. Run it in the folder of the sources: the inventory kept beside them is unpacked.
#include <benchmark/benchmark.h>

#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "stockbook/databases/providers/open_connection.h"

namespace {

double SecondsToOpen(const std::string& connection_string) {
  const auto start = std::chrono::steady_clock::now();
  const auto connection = stockbook::databases::OpenConnection(connection_string);
  benchmark::DoNotOptimize(connection->Execute("Select Count(*) As n From tqAccPeriod"));
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void OpenAgain(benchmark::State& state) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "stockbook-desktop-bench";
  std::filesystem::create_directories(folder);
  const std::string desktop = (folder / "inventory.mdb").string();
  const std::string embedded = (folder / "inventory.db").string();
  for (const std::string& file : {desktop, embedded}) {
    const std::string packed = "../shared/data/" + std::filesystem::path(file).filename().string() + ".xz";
    if (std::system(("xz -dc '" + packed + "' > '" + file + "'").c_str()) != 0) {
      state.SkipWithError("the inventory is not here: run this in the folder of the sources");
      return;
    }
  }
  setenv("XDG_CACHE_HOME", folder.c_str(), 1);
  SecondsToOpen("Provider=Stockbook.Desktop;Data Source=" + desktop);
  std::vector<double> of_desktop;
  std::vector<double> of_embedded;
  for (auto _ : state) {
    of_desktop.push_back(SecondsToOpen("Provider=Stockbook.Desktop;Data Source=" + desktop));
    of_embedded.push_back(SecondsToOpen("Data Source=" + embedded));
  }
  state.counters["of_sqlite"] = Median(of_desktop) / Median(of_embedded);
  state.counters["microseconds"] = Median(of_desktop) * 1e6;
  std::filesystem::remove_all(folder);
}
BENCHMARK(OpenAgain)->Iterations(2000)->Unit(benchmark::kMicrosecond);

}  // namespace
BENCHMARK_MAIN();
