// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "stockbook/sheet/geometry/geometry.h"

namespace stockbook::sheet {

// The rows and columns that stand on a page.
struct PageCells {
  Span rows;
  Span columns;
};

// The room for something on a page, in pixels; of what size says who uses it.
struct PageRoom {
  double width = 0;
  double height = 0;
};

// How the columns of a sheet are to stand on pages, and what is carried from page to page. A plain value.
struct PageSetup {
  // The columns are scaled down until they fit on so many pages beside each other.
  int pages_wide = 1;
  // But not below this; what still does not fit goes on on further pages.
  double least_zoom = 0.6;
  // Where columns go on on further pages, those up to this one are repeated there; -1: the frozen ones.
  int repeated_column = -1;
  // The columns whose last value is told at the foot of a page and again on top of the next one; none: no such lines.
  std::vector<int> carried_columns;
};

// What a page says beside the cells. An empty text takes no room, but for the heading.
struct PageWords {
  std::string heading;      // at the top, in bold
  std::string below_left;   // in a line below it
  std::string below_right;  // in the same line
  std::string foot;         // left of the page's number
};

}  // namespace stockbook::sheet
