// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/geometry/text_measure.h"

namespace stockbook::sheet {

// What the mouse looks like over a view.
enum class Cursor { kDefault, kColumnResize, kRowResize, kBusy };

// Notifies the toolkit's widget of changes.
class STOCKBOOK_API SheetViewer {
 public:
  virtual ~SheetViewer() = default;
  // These device pixels of the view must be repainted; never called while redraw is off.
  virtual void Damaged(const Rect& area) = 0;
  // Content size, scroll position or view changed; the scroll bars are Geometry's content and scroll. If nothing has
  // been damaged since, the body only scrolled.
  virtual void ScrollChanged() = 0;
  // Another one than before, or the same again.
  virtual void CursorChanged(Cursor cursor) = 0;
  // SelectionChanged and NodeChanged are for screen readers; neither is called while redraw is off. Other changes can
  // be found by comparing the sheet with its state at the last call of any kind.

  // The current cell or the selection has changed, in view or not.
  virtual void SelectionChanged() {}
  // Only this node was folded or unfolded; its lines are already hidden or shown.
  virtual void NodeChanged(int /*row*/) {}
  // The view or its sheet is being destroyed, or another viewer has taken the view over: nothing may be asked of them
  // any more, and they will not call again.
  virtual void ViewGone() {}
  // Measures texts as the viewer draws them, at the view's scale; without it nothing can be fitted to its contents.
  virtual TextMeasure* Measure() { return nullptr; }
};

}  // namespace stockbook::sheet
