// SPDX-License-Identifier: MIT
#pragma once

#include "interaction/handler_context.h"
#include "interaction/hot_row.h"

namespace stockbook::interaction {

// Whether more than the current cell is selected.
bool IsRangeSelected(const platform::GridView& view);
bool IsDataRow(const platform::GridRows& rows, int row);

// Announces a command to the host; its exceptions are reported through Notify.
void Announce(Events& events, const char* command);

// Opens the menus of the grid and performs what is chosen there (see menus.h). Between opening a menu and the choice,
// and between the steps of a command, listeners may do anything to the grid.
class GridMenus {
 public:
  // Borrows both.
  GridMenus(const HandlerContext& context, HotRow& hot_row) : context_(context), hot_row_(hot_row) {}

  // The menu for that place of the grid: a column's caption, or anything else.
  void Open(int row, int column);

 private:
  void OpenHeaderMenu(int column);
  void OpenFastMenu(int row, int column);
  void AnnounceAndName(const char* command);
  void Freeze(int column);
  void HideColumn(int column);
  // Flips the item's check mark, too, unless its column stays as it is.
  void ToggleField(platform::MenuItem& field);

  const HandlerContext& context_;
  HotRow& hot_row_;
};

}  // namespace stockbook::interaction
