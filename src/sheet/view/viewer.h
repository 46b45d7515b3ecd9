// SPDX-License-Identifier: MIT
#pragma once

#include "sheet/geometry/rect.h"
#include "sheet/geometry/text_measure.h"

namespace stockbook::sheet {

enum class Cursor { kDefault, kColumnResize, kRowResize, kBusy };

// What the toolkit's widget needs to know to keep up with the sheet.
class SheetViewer {
 public:
  virtual ~SheetViewer() = default;
  // These device pixels of the view are to be painted again; never called while redraw is off.
  virtual void Damaged(const Rect& area) = 0;
  // Content size, scroll position or view changed; the scroll bars are Geometry's content and scroll. The body was
  // moved by scroll alone when nothing was damaged since.
  virtual void ScrollChanged() = 0;
  virtual void CursorChanged(Cursor cursor) = 0;
  // The next two are for those who describe the sheet in words, as a screen reader does; neither is called while redraw
  // is off. Other changes are found by comparing the sheet with what it was at the last call of any kind.
  // The current cell or the selection is another one, in view or not.
  virtual void SelectionChanged() {}
  // This node alone was folded or unfolded; what it governs is already hidden or shown.
  virtual void NodeChanged(int /*row*/) {}
  // What the viewer draws texts with, at the sheet's scale; without one nothing can be fitted to its contents.
  virtual TextMeasure* Measure() { return nullptr; }
};

}  // namespace stockbook::sheet
