// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

#include "sheet/sheet.h"

namespace stockbook::app {

// Where the user is in a journal, to go back there once the same journal has been loaded again: the current cell,
// what of the sheet is in view and the nodes that are closed, which are known by their texts. Costs O(nodes).
class ReadingPlace {
 public:
  explicit ReadingPlace(const sheet::Sheet& sheet);

  // False, and nothing is changed, when the cell is not there any more.
  bool GoBack(sheet::Sheet& sheet) const;

 private:
  int row_;
  sheet::ScrollPosition scroll_;
  std::string column_key_;
  std::set<std::string> closed_;
};

}  // namespace stockbook::app
