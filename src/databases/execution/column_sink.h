// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/columns/column_builder.h"

namespace stockbook::databases {

// A column under construction, and whether a text in it had to be repaired: its order among the others is then no
// longer the stored one.
struct ColumnSink {
  columns::ColumnBuilder builder;
  bool mended = false;
};

}  // namespace stockbook::databases
