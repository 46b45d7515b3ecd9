// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "stockbook/platform/grid.h"

namespace stockbook::app {

// How the columns of a grid stand: their order with widths and visibility, and how many stay in view. A plain value
// that the user's layouts are compared, restored and kept by. Fixed columns are not part of it.
struct ColumnArrangement {
  struct Column {
    std::string key;
    int width_twips = 0;
    bool hidden = false;

    bool operator==(const Column&) const = default;
  };

  std::vector<Column> columns;
  int frozen = 0;

  static ColumnArrangement Of(const platform::Grid& grid);
  // Columns that the grid lacks are left out; the grid's other ones stay behind those named here. Columns on the list
  // `kept` of hidden keys, each between bars, are not shown. The column of the tree is for the caller to set again.
  void Apply(platform::Grid& grid, const std::string& kept) const;

  bool operator==(const ColumnArrangement&) const = default;
};

// Whether the key is on a list of hidden keys, each between bars.
bool IsKept(const std::string& kept, const std::string& key);

}  // namespace stockbook::app
