// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_types.h"

namespace stockbook::platform {

// A button of the mouse.
enum class MouseButton : int16_t { kNone = 0, kLeft = 1, kRight = 2, kMiddle = 4 };

// The modifier keys that are held: the sum of their bits.
struct Modifiers {
  // These are the codes of the control's event MouseUp.
  static constexpr int16_t kShift = 1;
  static constexpr int16_t kControl = 2;
  static constexpr int16_t kAlt = 4;

  // 0 to 7.
  int16_t bits = 0;

  // These tell whether the key is held; Any of one of the three.
  bool Any() const { return bits != 0; }
  bool Shift() const { return (bits & kShift) != 0; }
  bool Control() const { return (bits & kControl) != 0; }
  bool Alt() const { return (bits & kAlt) != 0; }
};

// A button that was pressed or released, in twips from the grid's top left corner.
struct GridMouseEvent {
  MouseButton button = MouseButton::kNone;
  Modifiers modifiers;
  float x_twips = 0;
  float y_twips = 0;
};

// Whether what is about to happen may.
enum class Verdict { kAllow, kRefuse };

// Receives what the user does to a grid. Every call may change the grid and may remove the observer. Calls do not
// throw.
class STOCKBOOK_API GridObserver {
 public:
  virtual ~GridObserver() = default;

  // The current cell is about to change; a refusal keeps it.
  virtual Verdict BeforeRowColChange(CellPosition /*old_cell*/, CellPosition /*new_cell*/) { return Verdict::kAllow; }
  // It has changed; also within a row. Positions are -1 where there was or is no cell.
  virtual void AfterRowColChange(CellPosition /*old_cell*/, CellPosition /*new_cell*/) {}
  // Both come for every button; the grid has already done its own part for the left one (selection, folding).
  virtual void MouseDown(const GridMouseEvent& /*event*/) {}
  virtual void MouseUp(const GridMouseEvent& /*event*/) {}
  // By the left button, or by the key that stands for it, on the cell under the mouse.
  virtual void DoubleClick() {}
  // The copy key was pressed. True when the observer has copied; otherwise the grid does what it can by itself.
  virtual bool Copy() { return false; }
  // A row (column -1) or a column (row -1) is about to be resized; a refusal leaves its size.
  virtual Verdict BeforeUserResize(int /*row*/, int /*column*/) { return Verdict::kAllow; }
  // The size is set; row or column is -1 as before.
  virtual void AfterUserResize(int /*row*/, int /*column*/) {}
  // The column moved to the position.
  virtual void AfterMoveColumn(int /*column*/, int /*position*/) {}
};

}  // namespace stockbook::platform
