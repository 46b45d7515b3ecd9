// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/grid.h"

namespace stockbook::platform {

// What a bulk operation changes of a grid while it runs, given back when it ends, by an error too. A guard borrows the
// grid; giving back never throws.

// Redraw is off.
class RedrawOff {
 public:
  explicit RedrawOff(GridView& grid) : grid_(grid), redraw_(grid.Redraw()) { grid_.SetRedraw(false); }
  ~RedrawOff() {
    try {
      grid_.SetRedraw(redraw_);
    } catch (...) {
      // A grid that cannot be told stays as it is.
    }
  }
  RedrawOff(const RedrawOff&) = delete;
  RedrawOff& operator=(const RedrawOff&) = delete;

 private:
  GridView& grid_;
  bool redraw_;
};

// The tag holds a busy marker.
class BusyTag {
 public:
  BusyTag(GridView& grid, std::string_view marker) : grid_(grid), tag_(grid.Tag()) { grid_.SetTag(marker); }
  ~BusyTag() {
    try {
      grid_.SetTag(tag_);
    } catch (...) {
      // As above.
    }
  }
  BusyTag(const BusyTag&) = delete;
  BusyTag& operator=(const BusyTag&) = delete;

 private:
  GridView& grid_;
  std::string tag_;
};

// The mouse pointer comes back as it was.
class PointerKept {
 public:
  explicit PointerKept(GridView& grid) : grid_(grid), pointer_(grid.Pointer()) {}
  ~PointerKept() {
    try {
      if (grid_.Pointer() != pointer_) grid_.SetPointer(pointer_);
    } catch (...) {
      // As above.
    }
  }
  PointerKept(const PointerKept&) = delete;
  PointerKept& operator=(const PointerKept&) = delete;

 private:
  GridView& grid_;
  MousePointer pointer_;
};

}  // namespace stockbook::platform
