// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"
#include "interaction/find/find.h"
#include "interaction/find/wildcard.h"
#include "stockbook/columns/column_builder.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/event_recorder.h"
#include "support/faulty_grid.h"

namespace stockbook::interaction {

using Lines = std::vector<std::string>;

inline columns::Column Texts(const Lines& texts) {
  columns::ColumnBuilder builder;
  for (const std::string& text : texts) builder.AppendText(text);
  return builder.Finish();
}

// A sheet of one caption row and one fixed column; the outline column is column 1, "Name".
class Finding : public ::testing::Test {
 protected:
  Finding() {
    events_.AddListener(&listener_);
    sheet_.SetCols(4);
    sheet_.SetColKey(1, "Name");
  }
  // Appends rows cell by cell: name, kind, remark.
  void Write(const std::vector<Lines>& rows) {
    for (const Lines& row : rows) {
      std::string tabbed;
      for (const std::string& cell : row) tabbed += "\t" + cell;
      sheet_.AddItem(tabbed, sheet_.Rows());
    }
  }
  // The same as loaded columns.
  void Load(const std::vector<Lines>& rows) {
    std::vector<columns::Column> columns;
    for (size_t column = 0; column < 3; ++column) {
      Lines texts;
      for (const Lines& row : rows) texts.push_back(row[column]);
      columns.push_back(Texts(texts));
    }
    sheet_.LoadColumns(std::move(columns), 1);
  }
  Lines FindIn(platform::Grid& grid, const std::string& search) {
    listener_.lines.clear();
    Find(grid, grid, events_, "Name", search);
    return Told();
  }
  // The lines of FindMsg without the event's name, and those of Notify with it.
  Lines Told() const {
    Lines told = listener_.lines;
    for (std::string& line : told) {
      if (line.starts_with("FindMsg ")) line.erase(0, std::string_view("FindMsg ").size());
    }
    return told;
  }
  Lines FindText(const std::string& search) { return FindIn(sheet_, search); }
  // The row numbers of the hits alone.
  std::vector<int> Hits(const std::string& search) {
    std::vector<int> rows;
    for (const std::string& line : FindText(search)) {
      const size_t bar = line.rfind(" |");
      if (bar != std::string::npos) rows.push_back(std::stoi(line.substr(bar + 2)));
    }
    return rows;
  }
  static std::string Summary(int count) { return "Notify 找到记录共 " + std::to_string(count) + " 条。"; }

  sheet::GridSheet sheet_;
  Events events_;
  testing::EventRecorder listener_;
};

using Rows = std::vector<int>;

inline const std::vector<Lines> kParts = {
    {"螺丝 M3", "螺丝", "一级"}, {"螺母 M3", "螺母", "备注 12"}, {"", "螺丝", "m3 小写"}, {"垫片", "M3", "配螺丝用"}};

}  // namespace stockbook::interaction
