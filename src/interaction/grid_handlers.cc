// SPDX-License-Identifier: MIT
#include "interaction/grid_handlers.h"

#include "base/column_keys.h"
#include "grid/bill_kinds.h"
#include "interaction/menus.h"

namespace stockbook::interaction {
namespace {

namespace keys = base::keys;
using platform::CellPosition;
using platform::MouseButton;

}  // namespace

GridHandlers::GridHandlers(const Ports& ports, Events& events, HandlerSteps& steps)
    : ports_(ports), events_(events), steps_(steps), hot_row_(ports.grid) {}

template <typename Call>
void GridHandlers::Try(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    Tell(error.what());
  } catch (...) {
    Tell("处理表格操作的事件时发生未知错误。");
  }
}

// A listener that fails again is not told of it.
void GridHandlers::Tell(const char* message) {
  try {
    events_.Notify(message);
  } catch (...) {
  }
}

bool GridHandlers::IsRangeSelected() const {
  const platform::Grid& grid = ports_.grid;
  return grid.Col() != grid.ColSel() || grid.Row() != grid.RowSel();
}

platform::Verdict GridHandlers::BeforeRowColChange(CellPosition old_cell, CellPosition /*new_cell*/) {
  Try([&] {
    if (!IsBusy() && IsDataRow(old_cell.row)) hot_row_.Leave();
  });
  return platform::Verdict::kAllow;
}

void GridHandlers::AfterRowColChange(CellPosition old_cell, CellPosition new_cell) {
  bool busy = true;
  Try([&] { busy = IsBusy(); });
  if (busy) return;
  Try([&] {
    if (set_aside_ > 0)
      row_set_aside_ = new_cell.row;
    else
      hot_row_.Enter(new_cell.row, steps_.BackColorHot(), steps_.ForeColorHot());
  });
  if (old_cell.row != new_cell.row) Try([&] { events_.AfterRowChanged(); });
  Try([&] { events_.Notify(steps_.DescribeRow(new_cell.row)); });
}

GridHandlers::HotRowAside::HotRowAside(GridHandlers& handlers) : handlers_(handlers) {
  try {
    handlers_.SetHotRowAside();
  } catch (...) {
    ShowAgain();
    throw;
  }
}

GridHandlers::HotRowAside::~HotRowAside() { ShowAgain(); }

void GridHandlers::HotRowAside::ShowAgain() noexcept {
  try {
    handlers_.ShowHotRowAgain();
  } catch (const std::exception&) {
    // A grid that refuses leaves the row in its own colours.
  }
}

void GridHandlers::SetHotRowAside() {
  if (set_aside_++ > 0) return;
  row_set_aside_ = hot_row_.row();
  hot_row_.Leave();
}

void GridHandlers::ShowHotRowAgain() {
  if (--set_aside_ > 0 || row_set_aside_ < 0) return;
  hot_row_.Enter(row_set_aside_, steps_.BackColorHot(), steps_.ForeColorHot());
}

void GridHandlers::MouseDown(const platform::GridMouseEvent& event) {
  Try([&] {
    if (steps_.RecordCount() < 1) return;
    const int row = ports_.grid.MouseRow();
    const int column = ports_.grid.MouseCol();
    if (event.button == MouseButton::kLeft && event.modifiers.Any()) {
      // For those who help users: which bill and which line this is.
      events_.Notify("BillID:" + std::to_string(steps_.BillID(-1)) + " RecID:" + std::to_string(steps_.RecID(-1)));
    } else if (event.button == MouseButton::kRight && !event.modifiers.Any()) {
      if (row == 0 && column >= 1)
        OpenHeaderMenu(column);
      else
        OpenFastMenu(row, column);
    }
  });
}

void GridHandlers::MouseUp(const platform::GridMouseEvent& event) {
  // The control's event tells codes, and its listeners may write into them.
  auto button = static_cast<int16_t>(event.button);
  int16_t shift = event.modifiers.bits;
  float x = event.x_twips;
  float y = event.y_twips;
  Try([&] {
    if (IsRangeSelected()) events_.AfterRangeSelected();
  });
  Try([&] { events_.MouseUp(button, shift, x, y); });
}

void GridHandlers::DoubleClick() {
  Try([&] {
    const platform::Grid& grid = ports_.grid;
    const int row = grid.MouseRow();
    const bool on_bill = row >= 0 && grid.MouseCol() >= 1 && steps_.BillID(row) > 0;
    if (on_bill && grid.Col() >= 0 && grid.Col() == grid.ColIndex(keys::kBillNo)) Command("Bill");
  });
}

bool GridHandlers::Copy() {
  Try([&] { ports_.grid.CopySelection(ports_.clipboard); });
  return true;
}

platform::Verdict GridHandlers::BeforeUserResize(int /*row*/, int column) {
  return column == 0 ? platform::Verdict::kRefuse : platform::Verdict::kAllow;
}

void GridHandlers::AfterUserResize(int row, int /*column*/) {
  Try([&] {
    if (row < 0 || row >= ports_.grid.Rows()) return;
    const ClampedHeight clamped = ClampRowHeight(ports_.grid, ports_.text_metrics, row);
    steps_.StoreRowHeight(clamped.kind, clamped.twips);
  });
}

void GridHandlers::AfterMoveColumn(int /*column*/, int /*position*/) {
  Try([&] { ports_.grid.SetOutlineCol(ports_.grid.ColIndex(steps_.OutlineColKey())); });
}

// For every command but "Load" the event tells, and nobody reads what is written into Cancel.
void GridHandlers::Command(const char* name) {
  Try([&] {
    bool cancel = false;
    events_.CommandExecute(name, cancel);
  });
}

void GridHandlers::CommandAndNames(const char* name) {
  Command(name);
  Try([&] { steps_.RefreshProductNames(); });
}

void GridHandlers::OpenHeaderMenu(int column) {
  const platform::Grid& grid = ports_.grid;
  const std::string key = grid.ColKey(column);
  const int64_t revision = grid.Revision();
  const Offer hiding = column == grid.OutlineCol() ? Offer::kDisabled : Offer::kEnabled;
  const platform::MenuItem menu = HeaderMenu(grid, steps_.HiddenKeys(), hiding);
  const platform::MenuChoice choice = ports_.menu.PopUp(menu);
  // Should the columns be others now, the one that was meant is found again by its key.
  if (grid.Revision() != revision) column = grid.ColIndex(key);
  if (choice.name == "mnuFrozen") {
    Freeze(column);
  } else if (choice.name == "mnuHiddenCol") {
    HideColumn(column);
  } else if (choice.name == "mnuDefault") {
    Try([&] { steps_.ApplyLayout(); });
    CommandAndNames("SetDefaultFormat");
  } else if (choice.name == "mnuField") {
    if (const platform::MenuItem* field = FindItem(menu, choice.name, choice.index)) ToggleField(*field);
  }
}

void GridHandlers::OpenFastMenu(int row, int column) {
  platform::Grid& grid = ports_.grid;
  if (!IsRangeSelected() && IsDataRow(row)) {
    const int current = column >= grid.FixedCols() ? column : grid.Col();
    if (current >= 0 && (row != grid.Row() || current != grid.Col())) grid.Select(row, current);
  }
  const RowKind kind = row >= 0 && row < grid.Rows() && grid.IsSubtotal(row) ? RowKind::kNode : RowKind::kLine;
  const platform::MenuChoice choice =
      ports_.menu.PopUp(FastMenu(kind, steps_.BillID(row) > 0 ? Offer::kEnabled : Offer::kDisabled));
  if (choice.name == "mnuCollapse")
    grid::SetAllCollapsed(grid, choice.index == 1 ? grid::OutlineState::kCollapsed : grid::OutlineState::kExpanded);
  else if (choice.name == "mnuBill")
    Command("Bill");
  else if (choice.name == "mnuCopy")
    grid.CopySelection(ports_.clipboard);
  else if (choice.name == "mnuFind")
    Command("Find");
  else if (choice.name == "mnuRefresh")
    Command("Refresh");
}

void GridHandlers::Freeze(int column) {
  if (column < 0) return;
  // The frozen columns of the hot row have other colours than the ones that scroll.
  const HotRowAside aside(*this);
  ports_.grid.SetFrozenCols(column);
}

void GridHandlers::HideColumn(int column) {
  platform::Grid& grid = ports_.grid;
  if (column == grid.OutlineCol() || column < grid.FixedCols()) return;
  grid.SetColHidden(column, true);
  CommandAndNames("AfterFieldShow");
}

void GridHandlers::ToggleField(const platform::MenuItem& field) {
  platform::Grid& grid = ports_.grid;
  const int column = grid.ColIndex(field.tag);
  if (column < 0) return;
  if (column == grid.OutlineCol()) {
    // Nothing changes, and the host hears the text of no error.
    Try([&] { events_.Notify(""); });
    return;
  }
  const bool checked = !field.checked;
  grid.SetColHidden(column, !checked);
  CommandAndNames("AfterFieldShow");
}

}  // namespace stockbook::interaction
