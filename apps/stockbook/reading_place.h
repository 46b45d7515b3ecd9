// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "platform/grid.h"

namespace stockbook::app {

// Where the user is in a journal, to go back there once the same journal has been loaded again: the current cell, the
// row on top and the nodes that are closed, which are known by their texts. Costs O(nodes).
class ReadingPlace {
 public:
  explicit ReadingPlace(const platform::Grid& grid);

  // False, and nothing is changed, when the cell is not there any more.
  bool GoBack(platform::Grid& grid) const;

 private:
  int row_;
  int top_row_;
  std::string column_key_;
  std::set<std::string> closed_;
};

}  // namespace stockbook::app
