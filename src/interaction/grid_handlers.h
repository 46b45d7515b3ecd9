// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "grid/hidden_keys.h"
#include "interaction/events.h"
#include "interaction/hot_row.h"
#include "interaction/row_clamp.h"
#include "platform/clipboard.h"
#include "platform/grid.h"
#include "platform/grid_observer.h"
#include "platform/menu.h"
#include "platform/text_metrics.h"

namespace stockbook::interaction {

// What the handlers ask of the control around them.
class HandlerSteps {
 public:
  virtual ~HandlerSteps() = default;
  // Records of the last load; -1 before the first.
  virtual int64_t RecordCount() const = 0;
  virtual int32_t BillID(int row) const = 0;
  virtual int32_t RecID(int row) const = 0;
  // Where the stock of the row's issue came from; "" where there is nothing to tell.
  virtual std::string DescribeRow(int row) const = 0;
  virtual std::string OutlineColKey() const = 0;
  virtual const grid::HiddenKeys& HiddenKeys() const = 0;
  virtual platform::Colour BackColorHot() const = 0;
  virtual platform::Colour ForeColorHot() const = 0;
  // The height that all rows of the kind have from now on.
  virtual void StoreRowHeight(ResizedRow kind, int twips) = 0;
  // The default layout; raises AfterFormatted.
  virtual void ApplyLayout() = 0;
  virtual void RefreshProductNames() = 0;
};

// What the control does with the events of its grid: the hot row, the menus and their items, the range that was
// selected, the double click on a bill, the heights of rows. While the grid's tag marks a bulk operation the row may
// change unnoticed. Nothing is thrown at the grid: what a listener throws is told through Notify, and the rest is done.
class GridHandlers final : public platform::GridObserver {
 public:
  struct Ports {
    platform::Grid& grid;
    platform::Menu& menu;
    platform::Clipboard& clipboard;
    const platform::TextMetrics& text_metrics;
  };

  // Borrows all of it.
  GridHandlers(const Ports& ports, Events& events, HandlerSteps& steps);

  platform::Verdict BeforeRowColChange(platform::CellPosition old_cell, platform::CellPosition new_cell) override;
  void AfterRowColChange(platform::CellPosition old_cell, platform::CellPosition new_cell) override;
  void MouseDown(const platform::GridMouseEvent& event) override;
  void MouseUp(const platform::GridMouseEvent& event) override;
  void DoubleClick() override;
  bool Copy() override;
  platform::Verdict BeforeUserResize(int row, int column) override;
  void AfterUserResize(int row, int column) override;
  void AfterMoveColumn(int column, int position) override;

  // The rows are others now: none is hot.
  void ForgetHotRow() { hot_row_.Forget(); }
  // Whether more than the current cell is selected.
  bool IsRangeSelected() const;

  // While one lives the hot row has its own colours, and afterwards, if it is there still, the hot ones of then: for
  // what it is not to be seen in, or changes its looks (a printed page, other colours).
  class HotRowAside {
   public:
    explicit HotRowAside(GridHandlers& handlers);
    ~HotRowAside();
    HotRowAside(const HotRowAside&) = delete;
    HotRowAside& operator=(const HotRowAside&) = delete;

   private:
    void ShowAgain() noexcept;

    GridHandlers& handlers_;
  };

 private:
  void SetHotRowAside();
  void ShowHotRowAgain();
  bool IsBusy() const { return !ports_.grid.Tag().empty(); }
  bool IsDataRow(int row) const { return row >= ports_.grid.FixedRows() && row < ports_.grid.Rows(); }
  // Runs a step that may raise an event; what a listener throws is told, and the next step follows.
  template <typename Call>
  void Try(Call call);
  void Tell(const char* message);
  void Command(const char* name);
  void CommandAndNames(const char* name);
  void OpenHeaderMenu(int column);
  void OpenFastMenu(int row, int column);
  void Freeze(int column);
  void HideColumn(int column);
  void ToggleField(const platform::MenuItem& field);

  Ports ports_;
  Events& events_;
  HandlerSteps& steps_;
  HotRow hot_row_;
  int set_aside_ = 0;       // how many want it aside
  int row_set_aside_ = -1;  // where it was
};

}  // namespace stockbook::interaction
