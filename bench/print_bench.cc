// SPDX-License-Identifier: MIT
// A PDF of a long ledger as it is written here, compared with the same pages by the toolkit's own writer of PDF,
// alternating in the same run. The results are the ratio of median processor time, `of_toolkit`, and the pages. The
// optional argument is the number of lines, by default 20,000.
#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QPdfWriter>
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <sstream>
#include <vector>

#include "stockbook/command/gui_session.h"
#include "stockbook/qt/grid_printer.h"
#include "stockbook/qt/pdf_printer.h"
#include "support/sample_ledger.h"

namespace {

using namespace stockbook;

constexpr int kPrintPeriods = 36;
constexpr int kPrintRounds = 5;
constexpr int kUsualPrintLines = 20'000;

QPageLayout A4() {
  return {QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter};
}

template <typename Work>
double SecondsOf(Work work) {
  const std::clock_t begin = std::clock();
  work();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

double Median(std::vector<double> seconds) {
  std::nth_element(seconds.begin(), seconds.begin() + static_cast<long>(seconds.size() / 2), seconds.end());
  return seconds[seconds.size() / 2];
}

void PrintALedger(benchmark::State& state, int lines) {
  const app::GuiSession session(app::GuiNeed::kPicture);
  sheet::GridSheet sheet;
  testing::SampleLedger({kPrintPeriods, std::max(lines / kPrintPeriods, 1)}).Fill(sheet);
  std::vector<double> own;
  std::vector<double> toolkit;
  int pages = 0;
  for ([[maybe_unused]] auto _ : state) {
    for (int round = 0; round < kPrintRounds; ++round) {
      own.push_back(SecondsOf([&] {
        std::ostringstream out;
        const auto count = [&](int, int all) { return (pages = all) > 0; };
        qt::WritePdf(sheet, {A4(), QStringLiteral("总账"), {}, {}}, out, count);
        benchmark::DoNotOptimize(out);
      }));
      toolkit.push_back(SecondsOf([&] {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageLayout(A4());
        qt::PrintSheet(sheet, QStringLiteral("总账"), writer);
      }));
    }
  }
  state.counters["of_toolkit"] = Median(own) / Median(toolkit);
  state.counters["pages"] = pages;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const int lines = argc > 1 ? std::atoi(argv[1]) : kUsualPrintLines;
  benchmark::RegisterBenchmark("PrintALedger", [lines](benchmark::State& state) { PrintALedger(state, lines); })
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
