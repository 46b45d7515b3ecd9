// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "child_process.h"
#include "sheet/geometry/scale.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::bench {

inline constexpr QSize kView(1920, 1080);
inline constexpr int kColumns = 14;
inline constexpr int kPeriods = 36;

// A widget with a journal of that many lines of one product, with 14 columns shown.
inline std::unique_ptr<qt::StockbookWidget> LoadedWidget(int lines) {
  const std::string path = (std::filesystem::temp_directory_path() / "stockbook-grid-bench.db").string();
  app::SampleOptions sample;
  sample.lines = lines;
  sample.periods = kPeriods;
  sample.range = app::SampleProductRange::One;
  app::WriteSampleInventory(path, sample);
  app::JournalOptions options;
  options.key_id = 1;
  options.allow_qty2 = true;
  options.allow_inv = true;
  auto widget = std::make_unique<qt::StockbookWidget>();
  app::LoadJournal(widget->control(), app::OpenInventory(path), options);
  std::filesystem::remove(path);
  sheet::GridSheet& sheet = widget->sheet();
  int shown = 0;
  for (int column = sheet.FixedCols(); column < sheet.Cols(); ++column) {
    if (!sheet.ColHidden(column) && ++shown > kColumns) sheet.SetColHidden(column, true);
  }
  return widget;
}

inline void Show(QWidget& window) {
  window.resize(kView);
  window.show();
  QApplication::processEvents();
}

// Makes a table or tree view look like the sheet: font, row height, column widths.
inline void Match(QTableView& table, const sheet::GridSheet& sheet, const std::vector<int>& columns) {
  table.setFont(qt::ToQFont(sheet.GridFont(), 1.0));
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table.verticalHeader()->setDefaultSectionSize(
      static_cast<int>(sheet.RowHeight(sheet.Rows() - 2) / sheet::kTwipsPerPixel));
  table.verticalHeader()->hide();
  if (table.model() == nullptr) return;
  for (size_t at = 0; at < columns.size(); ++at) {
    table.setColumnWidth(static_cast<int>(at), static_cast<int>(sheet.ColWidth(columns[at]) / sheet::kTwipsPerPixel));
  }
}

inline double SecondsOf(const std::function<void()>& work) {
  const double start = CpuSeconds();
  work();
  return CpuSeconds() - start;
}

inline double ElapsedSecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Quantile(std::vector<double> times, double part) {
  const auto at = times.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(times.size() - 1));
  std::nth_element(times.begin(), at, times.end());
  return *at;
}

inline double Median(const std::vector<double>& times) { return Quantile(times, 0.5); }

}  // namespace stockbook::bench
