// SPDX-License-Identifier: MIT
// The grid compared with the toolkit's own table view over the same rows, columns, widths,
// heights and font, alternating in the same run: a full repaint, scrolling and jumping in a view of 1920 x 1080. The
// results are ratios of median processor time: the counters `of_table_view` (grid / table view) and
// `p99_of_table_view`. The optional argument is the number of lines, by default 1,000,000.
#include <benchmark/benchmark.h>

#include <QScrollBar>
#include <cstdlib>
#include <cstring>
#include <random>

#include "journal_window.h"
#include "rival_models.h"
#include "stockbook/command/gui_session.h"

namespace {

using namespace stockbook;

constexpr int kRounds = 200;

class Windows {
 public:
  explicit Windows(int lines)
      : session_(app::GuiNeed::kPicture),
        grid_(bench::LoadedWidget(lines)),
        texts_(grid_->sheet()),
        model_(texts_),
        table_(std::make_unique<QTableView>()) {
    table_->setModel(&model_);
    bench::Match(*table_, grid_->sheet(), texts_.columns());
    bench::Show(*grid_);
    bench::Show(*table_);
  }

  qt::StockbookWidget& grid() { return *grid_; }
  QTableView& table() { return *table_; }
  const bench::ShownTexts& texts() const { return texts_; }
  QAbstractItemModel& model() { return model_; }
  int RowPixels() const { return static_cast<int>(grid_->control().RowHeight() / sheet::kTwipsPerPixel); }

 private:
  app::GuiSession session_;
  std::unique_ptr<qt::StockbookWidget> grid_;
  bench::ShownTexts texts_;
  bench::TableModel model_;
  std::unique_ptr<QTableView> table_;
};

// Runs all of them alternately and compares the first with each of the others.
class Race {
 public:
  explicit Race(benchmark::State& state) : state_(state) {}

  void Add(const char* name, std::function<void()> work) { runners_.push_back({name, std::move(work), {}}); }
  void Run() {
    for (Runner& runner : runners_) runner.work();
    for (auto _ : state_) {
      for (Runner& runner : runners_) runner.times.push_back(bench::SecondsOf(runner.work));
      state_.SetIterationTime(runners_.front().times.back());
    }
    const std::vector<double>& own = runners_.front().times;
    state_.counters["grid_ms"] = bench::Median(own) * 1e3;
    for (size_t at = 1; at < runners_.size(); ++at) {
      const std::vector<double>& other = runners_[at].times;
      state_.counters[std::string("of_") + runners_[at].name] = bench::Median(own) / bench::Median(other);
      state_.counters[std::string("p99_of_") + runners_[at].name] =
          bench::Quantile(own, 0.99) / bench::Quantile(other, 0.99);
    }
  }

 private:
  struct Runner {
    const char* name;
    std::function<void()> work;
    std::vector<double> times;
  };
  benchmark::State& state_;
  std::vector<Runner> runners_;
};

void FullRepaint(benchmark::State& state, Windows& windows) {
  Race race(state);
  race.Add("grid", [&] { windows.grid().viewport()->repaint(); });
  race.Add("table_view", [&] { windows.table().viewport()->repaint(); });
  race.Run();
}

void ScrollBy(QAbstractScrollArea& area, int steps) {
  area.verticalScrollBar()->setValue(area.verticalScrollBar()->value() + steps);
  QApplication::processEvents();
}

// Both reuse the pixels that only move. Compared as well: a table view that repaints everything, as it must when its
// first columns stay in view (the toolkit's only way is a second view on top); and a memmove of the scrolled part's
// pixels, the lower limit for everyone who reuses pixels.
void ScrollByThreeRows(benchmark::State& state, Windows& windows) {
  const int64_t pixels = 3 * windows.RowPixels();
  QTableView frozen_base;
  frozen_base.setModel(&windows.model());
  bench::Match(frozen_base, windows.grid().sheet(), windows.texts().columns());
  auto* pinned = new QTableView(&frozen_base);
  pinned->setModel(&windows.model());
  bench::Match(*pinned, windows.grid().sheet(), windows.texts().columns());
  frozen_base.viewport()->stackUnder(pinned);
  bench::Show(frozen_base);
  for (int column = 1; column < bench::kColumns; ++column) pinned->setColumnHidden(column, true);
  pinned->setGeometry(0, 0, frozen_base.columnWidth(0), frozen_base.height());
  pinned->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  pinned->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  pinned->show();
  QObject::connect(frozen_base.verticalScrollBar(), &QScrollBar::valueChanged, pinned->verticalScrollBar(),
                   &QScrollBar::setValue);
  QApplication::processEvents();
  const QSize body(bench::kView.width(), bench::kView.height() - 60);
  std::vector<uint32_t> picture(static_cast<size_t>(body.width()) * static_cast<size_t>(body.height()));

  Race race(state);
  race.Add("grid", [&] {
    windows.grid().sheet().view().ScrollBy(0, pixels);
    QApplication::processEvents();
  });
  race.Add("table_view", [&] { ScrollBy(windows.table(), 3); });
  race.Add("table_view_with_pinned_column", [&] { ScrollBy(frozen_base, 3); });
  race.Add("table_view_repainted", [&] { windows.table().viewport()->repaint(); });
  race.Add("memmove", [&] {
    const size_t moved = static_cast<size_t>(pixels) * static_cast<size_t>(body.width());
    std::memmove(picture.data(), picture.data() + moved, (picture.size() - moved) * sizeof(uint32_t));
    benchmark::DoNotOptimize(picture.data());
  });
  race.Run();
}

void JumpToARandomRow(benchmark::State& state, Windows& windows) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> rows(1, windows.texts().rows() - 1);
  int row = 0;
  Race race(state);
  race.Add("grid", [&] {
    row = rows(random);
    windows.grid().sheet().SetTopRow(row);
    QApplication::processEvents();
  });
  race.Add("table_view", [&] {
    windows.table().verticalScrollBar()->setValue(row);
    QApplication::processEvents();
  });
  race.Run();
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const int lines = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  Windows windows(lines);
  const auto add = [&](const char* name, void (*run)(benchmark::State&, Windows&)) {
    benchmark::RegisterBenchmark(name, [&windows, run](benchmark::State& state) { run(state, windows); })
        ->Iterations(kRounds)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  };
  add("FullRepaint", FullRepaint);
  add("ScrollByThreeRows", ScrollByThreeRows);
  add("JumpToARandomRow", JumpToARandomRow);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
