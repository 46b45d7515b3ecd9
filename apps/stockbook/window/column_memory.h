// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "stockbook/platform/grid.h"

namespace stockbook::app {

// What a user has changed of a column layout. Widths and visibility by key; a plain value that can be kept.
struct ColumnChanges {
  std::map<std::string, int> widths;  // in twips
  std::map<std::string, int> hidden;  // 1 hidden, 0 shown
  std::vector<std::string> order;     // empty: as laid out
  int frozen = 0;                     // the last frozen column's index

  bool operator==(const ColumnChanges&) const = default;
};

// The user's changes to the width, order and visibility of columns, by key. Every load lays the columns out again; this
// host then restores the changes. Columns that the control does not let the user see stay hidden.
class ColumnMemory {
 public:
  // Takes the columns as they are now for the layout, without changes by the user.
  void StartFrom(const platform::Grid& grid);
  // Before a load: records the changes since then, and how many columns the user wants frozen. Does nothing before the
  // first layout.
  void Learn(const platform::Grid& grid, int frozen);
  // After a load that laid the columns out: restores the changes, without the frozen columns. `kept` is the control's
  // list of hidden keys, each between bars.
  void PutBack(platform::Grid& grid, const std::string& kept);

  const ColumnChanges& changes() const { return changes_; }
  void SetChanges(ColumnChanges changes) { changes_ = std::move(changes); }

 private:
  std::map<std::string, int> laid_out_widths_;
  std::map<std::string, int> laid_out_hidden_;
  std::vector<std::string> laid_out_order_;
  ColumnChanges changes_;  // what differs from the layout
};

}  // namespace stockbook::app
