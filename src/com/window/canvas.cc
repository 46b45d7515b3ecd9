// SPDX-License-Identifier: MIT
#include "com/window/canvas.h"

#include <algorithm>
#include <cmath>

#include "com/window/rectangle.h"

namespace stockbook::com {
namespace {

using platform::Colour;

int AlignedX(const sheet::TextItem& item, int width) {
  switch (item.align) {
    case sheet::HorizontalAlign::kLeft:
      return item.rect.x;
    case sheet::HorizontalAlign::kCenter:
      return item.rect.x + (item.rect.width - width) / 2;
    case sheet::HorizontalAlign::kRight:
      return item.rect.right() - width;
  }
  return item.rect.x;
}

// Halfway from one colour to another, channel by channel.
Colour Halfway(Colour from, Colour to) {
  const auto channel = [&](int shift) { return ((from >> shift & 0xFFu) + (to >> shift & 0xFFu)) / 2 << shift; };
  return channel(0) | channel(8) | channel(16);
}

// `above`, which is multiplied by its alpha already, over an opaque value.
uint32_t Over(uint32_t below, uint32_t above) {
  const uint32_t keep = 255 - (above >> 24);
  const auto channel = [&](int shift) {
    return std::min(255u, (above >> shift & 0xFFu) + ((below >> shift & 0xFFu) * keep + 127) / 255) << shift;
  };
  return channel(16) | channel(8) | channel(0);
}

BITMAPINFO InfoOf(const Pixels& picture) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), picture.width, -picture.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  return info;
}

// A picture as a bitmap of the system, for devices whose pixels are out of reach.
class PictureBitmap {
 public:
  explicit PictureBitmap(const Pixels& picture) : dc_(CreateCompatibleDC(nullptr)) {
    const BITMAPINFO info = InfoOf(picture);
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bits != nullptr) std::copy(picture.values.begin(), picture.values.end(), static_cast<uint32_t*>(bits));
    old_ = SelectObject(dc_, bitmap_);
  }
  ~PictureBitmap() {
    SelectObject(dc_, old_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  PictureBitmap(const PictureBitmap&) = delete;
  PictureBitmap& operator=(const PictureBitmap&) = delete;

  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_ = nullptr;
};

int NumberAt(double size) { return std::max(1, static_cast<int>(std::lround(size))); }

}  // namespace

GdiCanvas::GdiCanvas(HDC dc, GdiFonts& fonts, double scale) : dc_(dc), fonts_(fonts), scale_(scale) {
  SaveDC(dc_);
  SetBkMode(dc_, TRANSPARENT);
  SetTextAlign(dc_, TA_LEFT | TA_TOP);
  RECT box{};
  constexpr sheet::Rect kEverywhere{-(1 << 28), -(1 << 28), 1 << 29, 1 << 29};
  // A metafile does not know its clip.
  const int kind = GetClipBox(dc_, &box);
  clips_.push_back(kind == ERROR || kind == NULLREGION || IsRectEmpty(&box) != 0 ? kEverywhere : FromRECT(box));
}

// Step by step: a metafile does not know which state has which number.
GdiCanvas::~GdiCanvas() {
  while (clips_.size() > 1) PopClip();
  RestoreDC(dc_, -1);
}

void GdiCanvas::PushClip(const sheet::Rect& rect) {
  clips_.push_back(clips_.back().Intersected(rect));
  SaveDC(dc_);
  IntersectClipRect(dc_, rect.x, rect.y, rect.right(), rect.bottom());
}

void GdiCanvas::PopClip() {
  if (clips_.size() < 2) return;
  clips_.pop_back();
  RestoreDC(dc_, -1);
}

Colour GdiCanvas::ColourOf(Colour colour) const {
  return (dim_toward_ ? Halfway(colour, *dim_toward_) : colour) & 0x00FFFFFFu;
}

void GdiCanvas::FillRects(Colour colour, std::span<const sheet::Rect> rects) {
  const HBRUSH brush = CreateSolidBrush(ColourOf(colour));
  for (const sheet::Rect& rect : rects) {
    if (rect.IsEmpty()) continue;
    const RECT area = ToRECT(rect);
    FillRect(dc_, &area, brush);
  }
  DeleteObject(brush);
}

void GdiCanvas::DrawTexts(const platform::Font& font, Colour colour, std::span<const sheet::TextItem> items) {
  GdiFont& gdi_font = fonts_.Find(font, scale_);
  const HGDIOBJ old = SelectObject(dc_, gdi_font.handle());
  SetTextColor(dc_, ColourOf(colour));
  for (const sheet::TextItem& item : items) {
    if (!item.text.empty() && clips_.back().Intersects(item.rect)) DrawLine(gdi_font, item);
  }
  SelectObject(dc_, old);
}

// Texts may extend beyond the height of their rectangle unless they are clipped, but never beyond its width. What fits
// is not clipped, so that a printer's rounding cannot shave off a digit.
void GdiCanvas::DrawLine(GdiFont& font, const sheet::TextItem& item) {
  font.Lay(item.text, laid_);
  const bool wide = laid_.width > item.rect.width;
  if (wide && item.overflow == sheet::TextOverflow::kEllipsis) font.ShortenToFit(laid_, item.rect.width);
  const int y = item.rect.y + (item.rect.height - font.line_height()) / 2;
  RECT clip = ToRECT(item.rect);
  // Not endless, because old metafiles have 16 bits for it.
  if (!item.clip) InflateRect(&clip, 0, 2 * font.line_height());
  constexpr size_t kMostUnits = 8192;  // the system draws nothing of a longer text
  ExtTextOutW(dc_, AlignedX(item, laid_.width), y, item.clip || wide ? ETO_CLIPPED : 0, &clip, laid_.units.data(),
              static_cast<UINT>(std::min(laid_.units.size(), kMostUnits)),
              laid_.IsPlaced() ? laid_.advances.data() : nullptr);
}

void GdiCanvas::DrawPictures(std::span<const sheet::PictureItem> items) {
  for (const sheet::PictureItem& item : items) {
    if (item.picture != nullptr && !item.rect.IsEmpty() && clips_.back().Intersects(item.rect)) DrawPicture(item);
  }
}

void GdiCanvas::DrawPicture(const sheet::PictureItem& item) {
  const auto* picture = dynamic_cast<const PixelPicture*>(item.picture);
  if (picture == nullptr) return;
  const sheet::Rect clip = item.rect.Intersected(clips_.back());
  if (!item.tile) {
    Place(picture->At(item.rect.width, item.rect.height), item.rect, clip);
    return;
  }
  const int width = NumberAt(picture->WidthPx() * scale_);
  const int height = NumberAt(picture->HeightPx() * scale_);
  const Pixels& tile = picture->At(width, height);
  for (int y = item.rect.y; y < clip.bottom(); y += height) {
    for (int x = item.rect.x; x < clip.right(); x += width) {
      const sheet::Rect place{x, y, width, height};
      if (place.Intersects(clip)) Place(tile, place, clip.Intersected(place));
    }
  }
}

void GdiCanvas::Place(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip) {
  if (picture.IsEmpty() || clip.IsEmpty()) return;
  const bool same = picture.width == rect.width && picture.height == rect.height;
  if (pixels_.values != nullptr && same) {
    BlendOntoPixels(picture, rect, clip);
  } else {
    BlendBySystem(picture, rect, clip);
  }
}

void GdiCanvas::BlendOntoPixels(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip) {
  GdiFlush();
  const sheet::Rect seen = clip.Intersected({0, 0, pixels_.width, pixels_.height});
  for (int y = seen.y; y < seen.bottom(); ++y) {
    uint32_t* line = pixels_.values + static_cast<ptrdiff_t>(y) * pixels_.width;
    for (int x = seen.x; x < seen.right(); ++x) {
      uint32_t above = picture.At(x - rect.x, y - rect.y);
      if (dim_toward_) above = (above >> 1) & 0x7F7F7F7Fu;
      line[x] = Over(line[x], above);
    }
  }
}

void GdiCanvas::BlendBySystem(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip) {
  const PictureBitmap bitmap(picture);
  constexpr BYTE kOpaque = 255;
  const BLENDFUNCTION over{AC_SRC_OVER, 0, static_cast<BYTE>(dim_toward_ ? kOpaque / 2 : kOpaque), AC_SRC_ALPHA};
  SaveDC(dc_);
  IntersectClipRect(dc_, clip.x, clip.y, clip.right(), clip.bottom());
  if (GdiAlphaBlend(dc_, rect.x, rect.y, rect.width, rect.height, bitmap.dc(), 0, 0, picture.width, picture.height,
                    over) == 0)
    CopyOnWhite(picture, rect);
  RestoreDC(dc_, -1);
}

// Old metafiles and some printers blend nothing; what is under a picture is paper there.
void GdiCanvas::CopyOnWhite(const Pixels& picture, const sheet::Rect& rect) {
  std::vector<uint32_t> values(picture.values.size());
  std::transform(picture.values.begin(), picture.values.end(), values.begin(), [this](uint32_t above) {
    return Over(0x00FFFFFFu, dim_toward_ ? (above >> 1) & 0x7F7F7F7Fu : above);
  });
  const BITMAPINFO info = InfoOf(picture);
  StretchDIBits(dc_, rect.x, rect.y, rect.width, rect.height, 0, 0, picture.width, picture.height, values.data(), &info,
                DIB_RGB_COLORS, SRCCOPY);
}

int GdiCanvas::TextWidth(const platform::Font& font, std::string_view line) {
  return fonts_.Find(font, scale_).Width(line);
}

int GdiCanvas::LineHeight(const platform::Font& font) { return fonts_.Find(font, scale_).line_height(); }

}  // namespace stockbook::com
