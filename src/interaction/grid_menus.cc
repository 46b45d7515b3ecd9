// SPDX-License-Identifier: MIT
#include "interaction/grid_menus.h"

#include "grid/product_names.h"
#include "interaction/menus.h"
#include "interaction/tell_errors.h"

namespace stockbook::interaction {

bool IsRangeSelected(const platform::GridView& view) {
  return view.Col() != view.ColSel() || view.Row() != view.RowSel();
}

bool IsDataRow(const platform::GridRows& rows, int row) { return row >= rows.FixedRows() && row < rows.Rows(); }

// Cancel matters only for "Load".
void Announce(Events& events, const char* command) {
  TellErrors(events, [&] {
    bool cancel = false;
    events.CommandExecute(command, cancel);
  });
}

void GridMenus::Open(int row, int column) {
  if (row == 0 && column >= 1)
    OpenHeaderMenu(column);
  else
    OpenFastMenu(row, column);
}

void GridMenus::OpenHeaderMenu(int column) {
  const platform::Grid& grid = context_.grid;
  const std::string key = grid.ColKey(column);
  const int64_t revision = grid.Revision();
  const Offer hiding = column == grid.OutlineCol() ? Offer::kDisabled : Offer::kEnabled;
  platform::MenuItem menu = HeaderMenu(grid, context_.hidden_keys, hiding);
  const auto tick = [&](const platform::MenuChoice& item) {
    platform::MenuItem* field = FindItem(menu, item.name, item.index);
    if (field == nullptr) return false;
    TellErrors(context_.events, [&] { ToggleField(*field); });
    return field->checked;
  };
  const platform::MenuChoice choice = context_.menu.PopUpToTick(menu, tick);
  // The columns may have changed meanwhile, so the column is found again by its key.
  if (grid.Revision() != revision) column = grid.ColIndex(key);
  if (choice.name == "mnuFrozen") {
    Freeze(column);
  } else if (choice.name == "mnuHiddenCol") {
    HideColumn(column);
  } else if (choice.name == "mnuDefault") {
    TellErrors(context_.events, context_.apply_layout);
    AnnounceAndName("SetDefaultFormat");
  } else if (choice.name == "mnuField") {
    tick(choice);
  }
}

void GridMenus::OpenFastMenu(int row, int column) {
  platform::Grid& grid = context_.grid;
  if (!IsRangeSelected(grid) && IsDataRow(grid, row)) {
    const int current = column >= grid.FixedCols() ? column : grid.Col();
    if (current >= 0 && (row != grid.Row() || current != grid.Col())) grid.Select(row, current);
  }
  const RowKind kind = row >= 0 && row < grid.Rows() && grid.IsSubtotal(row) ? RowKind::kNode : RowKind::kLine;
  const Offer bill = context_.ids_of(row).bill > 0 ? Offer::kEnabled : Offer::kDisabled;
  const platform::MenuChoice choice = context_.menu.PopUp(FastMenu(kind, bill));
  if (choice.name == "mnuCollapse")
    choice.index == 1 ? grid.CollapseAll() : grid.ExpandAll();
  else if (choice.name == "mnuBill")
    Announce(context_.events, "Bill");
  else if (choice.name == "mnuCopy")
    grid.CopySelection(context_.clipboard);
  else if (choice.name == "mnuFind")
    Announce(context_.events, "Find");
  else if (choice.name == "mnuRefresh")
    Announce(context_.events, "Refresh");
}

void GridMenus::AnnounceAndName(const char* command) {
  Announce(context_.events, command);
  TellErrors(context_.events, [&] { grid::RefreshProductNames(context_.grid, context_.grid); });
}

void GridMenus::Freeze(int column) {
  if (column < 0) return;
  // In the hot row the frozen columns have colours different from those of the scrolling ones.
  const auto aside = hot_row_.SetAside();
  context_.grid.SetFrozenCols(column);
}

void GridMenus::HideColumn(int column) {
  platform::Grid& grid = context_.grid;
  if (column == grid.OutlineCol() || column < grid.FixedCols()) return;
  grid.SetColHidden(column, true);
  AnnounceAndName("AfterFieldShow");
}

void GridMenus::ToggleField(platform::MenuItem& field) {
  platform::Grid& grid = context_.grid;
  const int column = grid.ColIndex(field.tag);
  if (column < 0) return;
  if (column == grid.OutlineCol()) {
    // Nothing changes, and the host hears an empty message.
    TellErrors(context_.events, [&] { context_.events.Notify(""); });
    return;
  }
  grid.SetColHidden(column, field.checked);
  field.checked = !field.checked;
  AnnounceAndName("AfterFieldShow");
}

}  // namespace stockbook::interaction
