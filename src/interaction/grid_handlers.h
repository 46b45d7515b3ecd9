// SPDX-License-Identifier: MIT
#pragma once

#include "interaction/grid_menus.h"
#include "interaction/handler_context.h"
#include "interaction/hot_row.h"
#include "stockbook/platform/grid_observer.h"

namespace stockbook::interaction {

// What the control does with the events of its grid: the hot row, the menus, the range that was selected, the double
// click on a bill, the heights of rows. While the grid's tag marks a bulk operation the row may change unnoticed.
// Nothing is thrown at the grid: an exception of a listener is reported through Notify, and the remaining steps are
// done.
class GridHandlers final : public platform::GridObserver {
 public:
  explicit GridHandlers(HandlerContext context);
  GridHandlers(const GridHandlers&) = delete;
  GridHandlers& operator=(const GridHandlers&) = delete;

  platform::Verdict BeforeRowColChange(platform::CellPosition old_cell, platform::CellPosition new_cell) override;
  void AfterRowColChange(platform::CellPosition old_cell, platform::CellPosition new_cell) override;
  void MouseDown(const platform::GridMouseEvent& event) override;
  void MouseUp(const platform::GridMouseEvent& event) override;
  void DoubleClick() override;
  bool Copy() override;
  platform::Verdict BeforeUserResize(int row, int column) override;
  void AfterUserResize(int row, int column) override;
  void AfterMoveColumn(int column, int position) override;

  HotRow& hot_row() { return hot_row_; }

 private:
  bool IsBusy() const { return !context_.grid.Tag().empty(); }
  template <typename Step>
  void Try(Step step);

  const HandlerContext context_;
  HotRow hot_row_;
  GridMenus menus_;
};

}  // namespace stockbook::interaction
