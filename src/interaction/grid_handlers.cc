// SPDX-License-Identifier: MIT
#include "interaction/grid_handlers.h"

#include <utility>

#include "interaction/tell_errors.h"
#include "stockbook/base/column_keys.h"

namespace stockbook::interaction {
namespace {

using platform::CellPosition;
using platform::MouseButton;

}  // namespace

GridHandlers::GridHandlers(HandlerContext context)
    : context_(std::move(context)),
      hot_row_(context_.grid, context_.grid, context_.grid, context_.back_color_hot, context_.fore_color_hot),
      menus_(context_, hot_row_) {}

template <typename Step>
void GridHandlers::Try(Step step) {
  TellErrors(context_.events, std::move(step));
}

platform::Verdict GridHandlers::BeforeRowColChange(CellPosition old_cell, CellPosition /*new_cell*/) {
  Try([&] {
    if (!IsBusy() && IsDataRow(context_.grid, old_cell.row)) hot_row_.Leave();
  });
  return platform::Verdict::kAllow;
}

void GridHandlers::AfterRowColChange(CellPosition old_cell, CellPosition new_cell) {
  bool busy = true;
  Try([&] { busy = IsBusy(); });
  if (busy) return;
  Try([&] { hot_row_.Enter(new_cell.row); });
  if (old_cell.row != new_cell.row) Try([&] { context_.events.AfterRowChanged(); });
  Try([&] { context_.events.Notify(context_.describe(new_cell.row)); });
}

void GridHandlers::MouseDown(const platform::GridMouseEvent& event) {
  Try([&] {
    if (context_.record_count < 1) return;
    if (event.button == MouseButton::kLeft && event.modifiers.Any()) {
      // For support: which bill and which line this is.
      const RowIds ids = context_.ids_of(-1);
      context_.events.Notify("BillID:" + std::to_string(ids.bill) + " RecID:" + std::to_string(ids.line));
    } else if (event.button == MouseButton::kRight && !event.modifiers.Any()) {
      menus_.Open(context_.grid.MouseRow(), context_.grid.MouseCol());
    }
  });
}

void GridHandlers::MouseUp(const platform::GridMouseEvent& event) {
  // The control's event passes codes, and its listeners may write them.
  auto button = static_cast<int16_t>(event.button);
  int16_t shift = event.modifiers.bits;
  float x = event.x_twips;
  float y = event.y_twips;
  Try([&] {
    if (IsRangeSelected(context_.grid)) context_.events.AfterRangeSelected();
  });
  Try([&] { context_.events.MouseUp(button, shift, x, y); });
}

void GridHandlers::DoubleClick() {
  Try([&] {
    const platform::Grid& grid = context_.grid;
    const int row = grid.MouseRow();
    const bool on_bill = row >= 0 && grid.MouseCol() >= 1 && context_.ids_of(row).bill > 0;
    if (on_bill && grid.Col() >= 0 && grid.Col() == grid.ColIndex(base::keys::kBillNo))
      Announce(context_.events, "Bill");
  });
}

bool GridHandlers::Copy() {
  Try([&] { context_.grid.CopySelection(context_.clipboard); });
  return true;
}

platform::Verdict GridHandlers::BeforeUserResize(int /*row*/, int column) {
  return column == 0 ? platform::Verdict::kRefuse : platform::Verdict::kAllow;
}

void GridHandlers::AfterUserResize(int row, int /*column*/) {
  Try([&] {
    if (row < 0 || row >= context_.grid.Rows()) return;
    const ClampedHeight clamped = ClampRowHeight(context_.grid, context_.text_metrics, context_.grid.GridFont(), row);
    context_.store_row_height(clamped.kind, clamped.twips);
  });
}

void GridHandlers::AfterMoveColumn(int /*column*/, int /*position*/) {
  Try([&] { context_.grid.SetOutlineCol(context_.grid.ColIndex(context_.outline_key)); });
}

}  // namespace stockbook::interaction
