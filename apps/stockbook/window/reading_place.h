// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "sheet/grid_sheet.h"

namespace stockbook::app {

// The user's place in a journal, to return to after a reload: the current cell, the scroll position and the closed
// nodes, which are identified by their texts. A line is found again by its record, wherever others that were posted
// meanwhile have moved it, and stands at the same height as before. Costs O(nodes), and O(rows) if the line has moved.
class ReadingPlace {
 public:
  explicit ReadingPlace(const sheet::GridSheet& sheet);

  // Returns false and changes nothing if the cell no longer exists, or is hidden.
  bool GoBack(sheet::GridSheet& sheet) const;

 private:
  int FindRow(const sheet::GridSheet& sheet) const;

  int row_;
  sheet::ScrollPosition scroll_;
  int64_t height_ = 0;  // of the current cell above the top of the view
  std::string column_key_;
  std::string line_;  // what tells the line from others; "" for rows that are none
  std::set<std::string> closed_;
};

}  // namespace stockbook::app
