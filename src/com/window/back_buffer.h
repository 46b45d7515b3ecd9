// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>

#include "com/window/canvas.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::com {

// The pixels of a window in memory, on which it is painted before they are shown all at once.
class BackBuffer {
 public:
  BackBuffer();
  ~BackBuffer();
  BackBuffer(const BackBuffer&) = delete;
  BackBuffer& operator=(const BackBuffer&) = delete;

  // What both sizes have stays; new pixels are white. Throws std::bad_alloc.
  void Resize(sheet::Size size);
  sheet::Size size() const { return {pixels_.width, pixels_.height}; }
  HDC dc() const { return dc_; }
  const PixelField& pixels() const { return pixels_; }

  // Moves the pixels of the part, within it.
  void Move(const sheet::Rect& part, int dx, int dy);
  void Show(HDC to, const sheet::Rect& area, sheet::Point at) const;

 private:
  HDC dc_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_;
  PixelField pixels_;
};

}  // namespace stockbook::com
