// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "grid/hidden_keys.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/menu.h"

namespace stockbook::interaction {

enum class RowKind { kLine, kNode };
enum class Offer { kEnabled, kDisabled };

// The menu of a row. On a node of the outline it folds and unfolds all of them, on a line it shows the line's bill.
platform::MenuItem FastMenu(RowKind kind, Offer bill);

// The menu of a caption, with the field chooser: one item for each column from the first that is not fixed on, hidden
// or not, whose key is not on the list of hidden keys. Its caption is the column's, its tag the key, its check mark
// says that the column is shown. There are at least 35 items; those that no column needs are invisible.
platform::MenuItem HeaderMenu(const platform::GridTable& grid, const grid::HiddenKeys& hidden_keys, Offer hiding);

// The item of that name and index in a menu or its submenus, or nullptr.
const platform::MenuItem* FindItem(const platform::MenuItem& menu, std::string_view name, int index);
platform::MenuItem* FindItem(platform::MenuItem& menu, std::string_view name, int index);

}  // namespace stockbook::interaction
