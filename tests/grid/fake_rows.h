// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "stockbook/platform/grid_rows.h"

namespace stockbook::testing {

// The rows of a grid and nothing else: their heights, and which of them are nodes. One fixed row.
class FakeRows : public platform::GridRows {
 public:
  struct Row {
    int height_twips = 240;
    bool node = false;
    bool hidden = false;
  };
  explicit FakeRows(int count) : rows(static_cast<size_t>(count)) {}

  int Rows() const override { return static_cast<int>(rows.size()); }
  void SetRows(int count) override { rows.resize(static_cast<size_t>(count)); }
  int FixedRows() const override { return 1; }
  void SetFixedRows(int /*count*/) override {}
  void AddItem(std::string_view /*tab_text*/, int position) override { rows.emplace(rows.begin() + position); }
  int64_t Revision() const override { return 0; }
  bool IsSubtotal(int row) const override { return At(row).node; }
  int NextSubtotal(int row) const override {
    while (row < Rows() && !At(row).node) ++row;
    return row < Rows() ? row : -1;
  }
  bool RowHidden(int row) const override { return At(row).hidden; }
  void SetRowHidden(int row, bool hidden) override { At(row).hidden = hidden; }
  void SetRowsHidden(int first, int last, bool hidden) override {
    for (int row = first; row < last; ++row) At(row).hidden = hidden;
  }
  int RowHeight(int row) const override { return At(row).height_twips; }
  void SetRowHeight(int row, int twips) override {
    if (row >= 0) At(row).height_twips = twips;
    for (Row& each : rows) each.height_twips = row < 0 ? twips : each.height_twips;
  }
  float RowHeightMin() const override { return 0; }
  void SetRowHeightMin(float /*twips*/) override {}
  float RowHeightMax() const override { return 0; }
  void SetRowHeightMax(float /*twips*/) override {}

  std::vector<Row> rows;

 private:
  const Row& At(int row) const { return rows.at(static_cast<size_t>(row)); }
  Row& At(int row) { return rows.at(static_cast<size_t>(row)); }
};

}  // namespace stockbook::testing
