// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "sheet/input/events.h"
#include "stockbook/base/api.h"
#include "stockbook/sheet/selection/selection.h"

namespace stockbook::sheet {

class Sheet;
class View;

// What the keys do: move the current cell over shown cells, extend the selection with Shift, open and close nodes,
// copy, and stand for the mouse on the current cell. The cell moved to is brought into view.
class STOCKBOOK_API Keyboard {
 public:
  explicit Keyboard(View& view);

  // False if the key has no meaning for the sheet.
  bool Press(const KeyEvent& event);

 private:
  // Where the key leads from the cell; the cell itself if there is no further one.
  CellPosition Target(const KeyEvent& event, CellPosition from) const;
  int RowStep(int row, int direction) const;
  int ColumnStep(int column, int direction) const;
  int EdgeRow(int direction) const;
  int EdgeColumn(int direction) const;
  int PageRow(int row, int direction) const;
  static bool IsCopying(const KeyEvent& event);
  // What a key does that does not move the current cell, and whether it had a meaning; nothing for the other keys.
  std::optional<bool> Command(const KeyEvent& event);
  bool Copy();
  bool SelectWhole(Modifiers modifiers);
  // Opens all nodes, or closes them if the key is minus.
  void FoldAll(Key key);
  // Selects and scrolls the end of the selection into view, if the observer allows it.
  void MoveTo(const Selection& wanted);
  bool GoToNode(CellPosition cell);
  // Mouse actions on the current cell by key: a double click, or the right button on it or on its caption.
  bool DoubleClick();
  bool PressRight(Modifiers modifiers);
  // Opens or closes the node of the current cell; false if the key moves instead.
  bool FoldNode(const KeyEvent& event);
  void SelectAll();

  View& view_;
  Sheet& sheet_;
};

}  // namespace stockbook::sheet
