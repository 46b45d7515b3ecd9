// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "sheet/grid_sheet.h"

namespace stockbook::app {

// The user's place in a journal, to return to after a reload: the current cell, the scroll position and the closed
// nodes, which are identified by their texts. Costs O(nodes).
class ReadingPlace {
 public:
  explicit ReadingPlace(const sheet::GridSheet& sheet);

  // Returns false and changes nothing if the cell no longer exists.
  bool GoBack(sheet::GridSheet& sheet) const;

 private:
  int row_;
  sheet::ScrollPosition scroll_;
  std::string column_key_;
  std::set<std::string> closed_;
};

}  // namespace stockbook::app
