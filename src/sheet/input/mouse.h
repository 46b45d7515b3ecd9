// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "sheet/input/events.h"
#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/selection/selection.h"
#include "stockbook/sheet/view/viewer.h"

namespace stockbook::sheet {

class Sheet;
class View;

// What the mouse does: select by pressing and dragging (rows from the fixed columns, columns from the captions, all
// from the corner), open and close nodes, resize columns and rows at their edges, move columns by their captions. The
// sheet does its part first, then its observer hears of the event.
class STOCKBOOK_API Mouse {
 public:
  explicit Mouse(View& view);

  void Press(const MouseEvent& event);
  void Move(const MouseEvent& event);
  void Release(const MouseEvent& event);
  // Takes the place of the second press.
  void DoubleClick(const MouseEvent& event);
  // Ends a drag as if it had not begun, where that can be. False when there is none.
  bool Cancel();
  void Wheel(int64_t dx_px, int64_t dy_px);

  // True while a selection or a caption is dragged beyond the part that scrolls: call AutoScroll by a timer, some 20
  // times a second.
  bool WantsAutoScroll() const;
  void AutoScroll();

  // What is remembered belongs to the drag under way, and the sheet shows a drop mark only while a caption is dragged.
  bool CheckInvariants() const;

 private:
  enum class Drag { kNone, kCells, kRows, kColumns, kColumnEdge, kRowEdge, kCaption };
  // The row or column whose end edge is under the point, -1 for none.
  struct Edge {
    int row = -1;
    int column = -1;
    bool IsNone() const { return row < 0 && column < 0; }
  };

  // Whether the sheet has the row or column still: its observer may have taken it away.
  bool Exists(const Edge& edge) const;

  struct Distance {
    int64_t dx = 0;
    int64_t dy = 0;
  };

  Edge EdgeAt(Point at) const;
  Distance BeyondBody() const;
  int ColumnEdgeAt(int x) const;
  int RowEdgeAt(int y) const;
  int SizeOf(const Edge& edge) const;
  bool ToggleNodeAt(Point at);
  void PressLeft(const MouseEvent& event);
  void Fit(const Edge& edge);
  // Asks the observer.
  bool Refuses(const Edge& edge) const;
  void BeginResize(const Edge& edge, Point at);
  // From the cell itself, or from the current one to it.
  enum class Start { kCell, kCurrent };
  void BeginSelection(CellPosition cell, Start start);
  void ExtendSelection(Point at);
  void Resize(Point at);
  void MoveCaption(Point at);
  void EndCaption(Point at);
  void ShowCursor(Point at);
  int Scaled(int pixels) const;

  View& view_;
  Sheet& sheet_;
  Drag drag_ = Drag::kNone;
  Point pressed_;
  Point last_;
  Edge resized_;
  int size_before_ = 0;  // twips
  int own_height_before_ = 0;
  int moved_column_ = -1;
  bool moving_ = false;  // the caption was dragged far enough
  Cursor cursor_ = Cursor::kDefault;
};

}  // namespace stockbook::sheet
