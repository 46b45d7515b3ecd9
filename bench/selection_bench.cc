// SPDX-License-Identifier: MIT
// What the window says about the selected numbers (count, sum, average, least, greatest) where a whole journal of 14
// columns is selected, ten of them numbers, in processor time: `selection_bench [LINES [ROUNDS]]`, by default 1,000,000
// and 5; the least of the rounds counts. As a ratio of the same over the numbers held as vectors of double.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "child_process.h"
#include "searched_journal.h"
#include "stockbook/selection/selection_sums.h"
#include "stockbook/sheet/grid_sheet.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;

struct Plain {
  double sum = 0;
  double least = 1e300;
  double greatest = -1e300;
};

Plain SumUp(const std::vector<std::vector<double>>& columns) {
  Plain plain;
  for (const std::vector<double>& column : columns) {
    for (const double number : column) {
      plain.sum += number;
      plain.least = std::min(plain.least, number);
      plain.greatest = std::max(plain.greatest, number);
    }
  }
  return plain;
}

}  // namespace

int main(int argc, char** argv) {
  const int64_t lines = argc > 1 ? std::atoll(argv[1]) : 1'000'000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  sheet::GridSheet sheet;
  bench::SearchedJournal().Fill(sheet, lines);
  std::vector<std::vector<double>> columns;
  for (const char* key :
       {"Price", "StoPrice", "Quantity", "RevQty", "IssQty", "StoQty", "Account", "RevAcc", "IssAcc", "StoAcc"}) {
    columns.emplace_back(static_cast<size_t>(lines));
    sheet.LoadedText(sheet.ColIndex(key))->ReadNumbers(0, columns.back());
  }
  const sheet::Selection all{{0, 0}, {sheet.Rows() - 1, sheet.Cols() - 1}};
  double own = 1e9;
  double plain = 1e9;
  app::SelectionSums sums;
  Plain expected;
  for (int round = 0; round < rounds; ++round) {
    const double start = CpuSeconds();
    sums = app::SelectionSums::Of(sheet, all);
    const double between = CpuSeconds();
    expected = SumUp(columns);
    own = std::min(own, between - start);
    plain = std::min(plain, CpuSeconds() - between);
  }
  const bool right = sums.count() == lines * static_cast<int64_t>(columns.size()) && sums.least() == expected.least &&
                     sums.greatest() == expected.greatest && std::abs(sums.sum() / expected.sum - 1) < 1e-9;
  if (!right) {
    std::fprintf(stderr, "The summary is wrong.\n");
    return 1;
  }
  std::printf("%lld numbers: %.1f ms (at most 50), plain doubles %.1f ms, ratio %.2f\n",
              static_cast<long long>(sums.count()), own * 1e3, plain * 1e3, own / plain);
}
