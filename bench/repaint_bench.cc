// SPDX-License-Identifier: MIT
// The grid against the toolkit's own table view over the same rows, columns, widths, heights and font, in turns in the
// same run. The table view's model is as light as one can be: it hands out strings made beforehand, and has no pictures
// to draw. Ratios of medians, not seconds: the counter `of_table_view` (grid / table view), and `p99_of_table_view`.
#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "qt/fonts.h"
#include "qt/stockbook_widget.h"
#include "qt/text.h"
#include "sheet/sheet.h"
#include "stockbook/gui_session.h"
#include "stockbook/journal_desk.h"
#include "stockbook/sample_inventory.h"

namespace {

using namespace stockbook;

constexpr QSize kView(1920, 1080);
constexpr int kLines = 100'000;
constexpr int kRounds = 200;

// The shown texts of the sheet's rows and shown columns.
class TextModel : public QAbstractTableModel {
 public:
  explicit TextModel(sheet::Sheet& sheet) : rows_(sheet.Rows() - 1) {
    for (int column = 1; column < sheet.Cols(); ++column) {
      if (!sheet.ColHidden(column)) columns_.push_back(column);
    }
    for (const int column : columns_) {
      right_.push_back(sheet.ColAlignment(column) == platform::Alignment::kRightCenter);
      captions_.push_back(qt::ToQString(sheet.TextMatrix(0, column)));
    }
    texts_.reserve(static_cast<size_t>(rows_) * columns_.size());
    for (int row = 0; row < rows_; ++row) {
      for (const int column : columns_) texts_.push_back(qt::ToQString(sheet.DisplayText(row + 1, column)));
    }
  }

  const std::vector<int>& columns() const { return columns_; }
  int rowCount(const QModelIndex& /*parent*/) const override { return rows_; }
  int columnCount(const QModelIndex& /*parent*/) const override { return static_cast<int>(columns_.size()); }
  QVariant data(const QModelIndex& index, int role) const override {
    const auto column = static_cast<size_t>(index.column());
    if (role == Qt::DisplayRole) return texts_[static_cast<size_t>(index.row()) * columns_.size() + column];
    if (role == Qt::TextAlignmentRole)
      return static_cast<int>(Qt::AlignVCenter | (right_[column] ? Qt::AlignRight : Qt::AlignLeft));
    return {};
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return captions_[static_cast<size_t>(section)];
  }

 private:
  int rows_;
  std::vector<int> columns_;
  std::vector<bool> right_;
  std::vector<QString> captions_;
  std::vector<QString> texts_;
};

// Both windows over one journal of 100,000 lines, 15 columns of it shown.
class Windows {
 public:
  Windows() : session_(app::GuiNeed::kPicture) {
    const std::string path = (std::filesystem::temp_directory_path() / "stockbook-repaint-bench.db").string();
    app::SampleOptions sample;
    sample.lines = kLines;
    sample.range = app::SampleProductRange::One;
    app::WriteSampleInventory(path, sample);
    app::JournalOptions options;
    options.key_id = 1;
    options.allow_qty2 = true;
    options.allow_inv = true;
    grid_ = std::make_unique<qt::StockbookWidget>();
    app::LoadJournal(grid_->control(), app::OpenInventory(path), options);
    std::filesystem::remove(path);
    BuildTable();
    for (QWidget* window : {static_cast<QWidget*>(grid_.get()), static_cast<QWidget*>(table_.get())}) {
      window->resize(kView);
      window->show();
    }
    QApplication::processEvents();
  }

  qt::StockbookWidget& grid() { return *grid_; }
  QTableView& table() { return *table_; }

 private:
  void BuildTable() {
    model_ = std::make_unique<TextModel>(grid_->sheet());
    table_ = std::make_unique<QTableView>();
    table_->setFont(qt::ToQFont(grid_->sheet().GridFont(), 1.0));
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(
        static_cast<int>(grid_->control().RowHeight() / qt::kTwipsPerPixel));
    table_->verticalHeader()->hide();
    table_->setModel(model_.get());
    for (size_t at = 0; at < model_->columns().size(); ++at) {
      const int twips = grid_->sheet().ColWidth(model_->columns()[at]);
      table_->setColumnWidth(static_cast<int>(at), static_cast<int>(twips / qt::kTwipsPerPixel));
    }
  }

  app::GuiSession session_;
  std::unique_ptr<qt::StockbookWidget> grid_;
  std::unique_ptr<TextModel> model_;
  std::unique_ptr<QTableView> table_;
};

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Quantile(std::vector<double>& times, double part) {
  const auto at = times.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(times.size() - 1));
  std::nth_element(times.begin(), at, times.end());
  return *at;
}

// Does both in turns and tells how the first compares.
void Compare(benchmark::State& state, const std::function<void()>& grid, const std::function<void()>& table) {
  std::vector<double> grid_times;
  std::vector<double> table_times;
  grid();
  table();
  for (auto _ : state) {
    grid_times.push_back(Seconds(grid));
    table_times.push_back(Seconds(table));
    state.SetIterationTime(grid_times.back());
  }
  const double grid_median = Quantile(grid_times, 0.5);
  const double table_median = Quantile(table_times, 0.5);
  state.counters["grid_ms"] = grid_median * 1e3;
  state.counters["table_view_ms"] = table_median * 1e3;
  state.counters["of_table_view"] = grid_median / table_median;
  state.counters["p99_of_table_view"] = Quantile(grid_times, 0.99) / Quantile(table_times, 0.99);
}

void FullRepaint(benchmark::State& state, Windows& windows) {
  Compare(
      state, [&] { windows.grid().viewport()->repaint(); }, [&] { windows.table().viewport()->repaint(); });
}

void ScrollByThreeRows(benchmark::State& state, Windows& windows) {
  const auto pixels = static_cast<int64_t>(3 * windows.grid().control().RowHeight() / qt::kTwipsPerPixel);
  Compare(
      state,
      [&] {
        windows.grid().sheet().ScrollBy(0, pixels);
        QApplication::processEvents();
      },
      [&] {
        windows.table().verticalScrollBar()->setValue(windows.table().verticalScrollBar()->value() + 3);
        QApplication::processEvents();
      });
}

void JumpToARandomRow(benchmark::State& state, Windows& windows) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> rows(1, kLines);
  int row = 0;
  Compare(
      state,
      [&] {
        row = rows(random);
        windows.grid().sheet().SetTopRow(row);
        QApplication::processEvents();
      },
      [&] {
        windows.table().verticalScrollBar()->setValue(row);
        QApplication::processEvents();
      });
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Windows windows;
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
