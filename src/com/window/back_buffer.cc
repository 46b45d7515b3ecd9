// SPDX-License-Identifier: MIT
#include "com/window/back_buffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace stockbook::com {

BackBuffer::BackBuffer() : dc_(CreateCompatibleDC(nullptr)), old_(GetCurrentObject(dc_, OBJ_BITMAP)) {}

BackBuffer::~BackBuffer() {
  SelectObject(dc_, old_);
  DeleteObject(bitmap_);
  DeleteDC(dc_);
}

void BackBuffer::Resize(sheet::Size size) {
  size = {std::max(1, size.width), std::max(1, size.height)};
  if (size == this->size()) return;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.width, -size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap == nullptr) throw std::bad_alloc();
  GdiFlush();
  auto* values = static_cast<uint32_t*>(bits);
  std::fill_n(values, static_cast<size_t>(size.width) * static_cast<size_t>(size.height), 0x00FFFFFFu);
  const int kept = std::min(size.width, pixels_.width);
  for (int y = 0; y < std::min(size.height, pixels_.height); ++y)
    std::copy_n(pixels_.values + static_cast<ptrdiff_t>(y) * pixels_.width, kept,
                values + static_cast<ptrdiff_t>(y) * size.width);
  SelectObject(dc_, bitmap);
  DeleteObject(bitmap_);
  bitmap_ = bitmap;
  pixels_ = {values, size.width, size.height};
}

void BackBuffer::Move(const sheet::Rect& part, int dx, int dy) {
  const int width = part.width - std::abs(dx);
  const int height = part.height - std::abs(dy);
  if (width <= 0 || height <= 0) return;
  BitBlt(dc_, part.x + std::max(dx, 0), part.y + std::max(dy, 0), width, height, dc_, part.x + std::max(-dx, 0),
         part.y + std::max(-dy, 0), SRCCOPY);
}

void BackBuffer::Show(HDC to, const sheet::Rect& area, sheet::Point at) const {
  BitBlt(to, at.x, at.y, area.width, area.height, dc_, area.x, area.y, SRCCOPY);
}

}  // namespace stockbook::com
