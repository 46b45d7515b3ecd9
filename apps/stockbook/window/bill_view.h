// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "control/stockbook.h"

namespace stockbook::app {

// One bill as found in the journal: the values that all its lines share, and the lines with the columns that are not
// empty. The texts are those that the journal shows, so amounts masked there are masked here.
struct BillView {
  struct Column {
    std::string caption;
    bool is_number = false;
  };

  int32_t bill_id = 0;
  std::string kind;
  std::string number;
  // Date, partner, depot, and who entered and audited it, each with its label.
  std::vector<std::pair<std::string, std::string>> facts;
  std::vector<Column> columns;
  std::vector<std::vector<std::string>> lines;
};

// The bill of a row, from all its rows in the journal; without lines if the row belongs to no bill. O(rows).
BillView ReadBill(const control::Stockbook& control, int row);

}  // namespace stockbook::app
