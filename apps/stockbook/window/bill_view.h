// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "control/stockbook.h"

namespace stockbook::app {

// One bill as the journal tells of it: what all its lines share, and the lines with the columns in which they have
// something to tell. The texts are those that the journal shows, so what is masked there is masked here.
struct BillView {
  struct Column {
    std::string caption;
    bool is_number = false;
  };

  int32_t bill_id = 0;
  std::string kind;
  std::string number;
  // Date, partner, depot, who entered and who audited it, each with its label.
  std::vector<std::pair<std::string, std::string>> facts;
  std::vector<Column> columns;
  std::vector<std::vector<std::string>> lines;
};

// The bill of a row, of all rows that the journal has of it; without lines where the row belongs to no bill. O(rows).
BillView ReadBill(const control::Stockbook& control, int row);

}  // namespace stockbook::app
