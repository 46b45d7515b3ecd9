// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {

// What is kept of a place between runs. Lengths are in pixels at scale 1.
struct KeptPlace {
  int row = -1;
  std::string column;    // its key
  std::string line;      // what tells the line from others; "" for rows that are none
  double left = 0;       // how far the columns are scrolled
  double height = 0;     // of the current cell below the top of the view
  bool in_sight = true;  // otherwise the user had scrolled away from it
};

// The user's place in a journal, to return to after a reload: the current cell, the scroll position and the closed
// nodes, which are identified by their texts. A line is found again by its record, wherever others that were posted
// meanwhile have moved it, and stands at the same height as before. Costs O(nodes), and O(rows) if the line has moved.
class ReadingPlace {
 public:
  explicit ReadingPlace(const sheet::GridSheet& sheet);
  // As it was kept, with all nodes as they are.
  explicit ReadingPlace(KeptPlace kept);

  static KeptPlace Keep(const sheet::GridSheet& sheet);
  // Returns false and changes nothing if the cell no longer exists, or is hidden.
  bool GoBack(sheet::GridSheet& sheet) const;

 private:
  int FindRow(const sheet::GridSheet& sheet) const;
  void ScrollBack(sheet::GridSheet& sheet, int row) const;

  int row_;
  sheet::ScrollPosition scroll_;
  int64_t height_ = 0;  // of the current cell above the top of the view
  std::string column_key_;
  std::string line_;  // what tells the line from others; "" for rows that are none
  std::set<std::string> closed_;
  std::optional<KeptPlace> kept_;
};

}  // namespace stockbook::app
