// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/grid.h"

namespace stockbook::app {

// The user's changes to the width, order and visibility of columns, by key. Every load lays the columns out again; this
// host then restores the changes. Columns that the control does not let the user see stay hidden.
class ColumnMemory {
 public:
  // Takes the columns as they are now for the layout, without changes by the user.
  void StartFrom(const platform::Grid& grid);
  // Before a load: records the changes since then.
  void Learn(const platform::Grid& grid);
  // After a load that laid the columns out: restores the changes. `kept` is the control's list of hidden keys, each
  // between bars.
  void PutBack(platform::Grid& grid, const std::string& kept);

 private:
  using Keys = std::vector<std::string>;

  std::map<std::string, int> laid_out_widths_;
  std::map<std::string, int> laid_out_hidden_;
  Keys laid_out_order_;
  std::map<std::string, int> widths_;  // those that differ from the layout
  std::map<std::string, int> hidden_;  // 1 hidden, 0 shown; those that differ from the layout
  Keys order_;                         // empty: as laid out
};

}  // namespace stockbook::app
