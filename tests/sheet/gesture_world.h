// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <utility>
#include <vector>

#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "sheet/recording_canvas.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_ports.h"

namespace stockbook::sheet::test {

// A sheet with a keyboard, a mouse and a host that may do anything at any time, even inside the sheet's own calls.
// Everything follows from one seed, or from the numbers that it is given. It makes no call that the sheet may reject
// with an error.
class GestureWorld final : public platform::GridObserver, public SheetViewer {
 public:
  using Chance = std::function<unsigned()>;

  GestureWorld(unsigned seed, int records, int periods);
  GestureWorld(Chance chance, int records, int periods);
  ~GestureWorld() override;

  // Performs one gesture or one call of the host.
  void Act();
  const GridSheet& sheet() const { return sheet_; }
  // The damage since the last call.
  std::vector<Rect> TakeDamage() { return std::exchange(damaged_, {}); }
  // The invariants hold afterwards.
  ::testing::AssertionResult Holds() const;
  // Everything painted lies within the view.
  ::testing::AssertionResult PaintsWithinTheView() const;

  platform::Verdict BeforeRowColChange(CellPosition old_cell, CellPosition new_cell) override;
  void AfterRowColChange(CellPosition old_cell, CellPosition new_cell) override;
  void MouseDown(const platform::GridMouseEvent& event) override;
  void MouseUp(const platform::GridMouseEvent& event) override;
  void DoubleClick() override;
  platform::Verdict BeforeUserResize(int row, int column) override;
  void AfterUserResize(int row, int column) override;
  void AfterMoveColumn(int column, int position) override;
  void Damaged(const Rect& area) override;
  void ScrollChanged() override;
  void CursorChanged(Cursor cursor) override;
  TextMeasure* Measure() override { return &measure_; }

 private:
  int Below(int limit) { return limit <= 1 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  int AnyRow() { return Below(sheet_.Rows()); }
  int AnyColumn() { return Below(sheet_.Cols()); }
  bool HasCells() const { return sheet_.Rows() > 0 && sheet_.Cols() > 0; }
  MouseEvent AnyMouse();
  KeyEvent AnyKey();

  void Gesture();
  void Drag();
  void HostCall();
  void ChangeRows();
  void ChangeColumns();
  void ChangeOutline();
  void ChangeCells();
  void ChangeSizes();
  void ChangeView();
  void Load();
  // Now and then the host does something inside a call of the sheet.
  platform::Verdict React();

  Chance random_;
  int records_ = 0;
  int periods_ = 1;
  testing::FakeClipboard clipboard_;
  RecordingCanvas measure_;
  GridSheet sheet_;
  Keyboard keyboard_{sheet_.view()};
  Mouse mouse_{sheet_.view()};
  bool reacting_ = false;
  std::vector<Rect> damaged_;
  bool damaged_outside_ = false;
  bool told_while_off_ = false;
};

}  // namespace stockbook::sheet::test
