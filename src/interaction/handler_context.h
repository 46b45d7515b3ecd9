// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "grid/hidden_keys.h"
#include "interaction/events.h"
#include "interaction/row_clamp.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::interaction {

// The keys of a row's bill and of its line; 0 where it has none.
struct RowIds {
  int32_t bill = 0;
  int32_t line = 0;
};

// What the responses to a grid's events work with. The references are borrowed, and read when needed.
struct HandlerContext {
  platform::Grid& grid;
  platform::Menu& menu;
  platform::Clipboard& clipboard;
  const platform::TextMetrics& text_metrics;
  Events& events;

  const int64_t& record_count;  // of the last load; -1 before the first
  const std::string& outline_key;
  const grid::HiddenKeys& hidden_keys;
  const platform::Colour& back_color_hot;
  const platform::Colour& fore_color_hot;

  // Of a row of the grid; a row below 0 means the current one.
  std::function<RowIds(int row)> ids_of;
  // Where the stock of the row's issue came from; "" if there is nothing to say.
  std::function<std::string(int row)> describe;
  // The default layout; raises AfterFormatted.
  std::function<void()> apply_layout;
  // The height that all rows of the kind have from now on.
  std::function<void(ResizedRow kind, int twips)> store_row_height;
};

}  // namespace stockbook::interaction
