// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/grid.h"

namespace stockbook::app {

// What the user changed in the widths and the order of the columns, and which of them she hid or showed, by their keys.
// Every load lays the columns out anew; this host gives them back to the user as they were. Columns that the control
// keeps from the user stay hidden.
class ColumnMemory {
 public:
  // The columns as they are now are the layout: nothing is changed in them.
  void StartFrom(const platform::Grid& grid);
  // Before a load: learns what has been changed since.
  void Learn(const platform::Grid& grid);
  // After a load that laid the columns out anew. `kept` is the control's list of hidden keys, each between bars.
  void PutBack(platform::Grid& grid, const std::string& kept);

 private:
  using Keys = std::vector<std::string>;

  std::map<std::string, int> laid_out_widths_;
  std::map<std::string, int> laid_out_hidden_;
  Keys laid_out_order_;
  std::map<std::string, int> widths_;  // those that are not as laid out
  std::map<std::string, int> hidden_;  // 1 hidden, 0 shown; those that are not as laid out
  Keys order_;                         // empty: as laid out
};

}  // namespace stockbook::app
