// SPDX-License-Identifier: MIT
#include "com/window/frames.h"

#include <windows.h>

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "com/window/fonts.h"
#include "com/window/high_contrast.h"

namespace stockbook::com {
namespace {

using platform::Colour;
using sheet::Rect;

constexpr int kMargin = 8;
constexpr int kPicturePx = 20;
constexpr int kLeastHeight = 32;
constexpr double kCaptionSize = 1.1;  // relative to the container's font

// A text colour that is readable on the background, which a host may set to anything.
Colour TextOn(Colour back) {
  constexpr Colour kLight = 0x00F6F4F2;
  constexpr Colour kDark = 0x0028231F;
  const Colour gray = ((back & 0xFFu) * 11 + (back >> 8 & 0xFFu) * 16 + (back >> 16 & 0xFFu) * 5) / 32;
  return gray <= 128 ? kLight : kDark;
}

void FillOne(GdiCanvas& canvas, Colour colour, const Rect& rect) { canvas.FillRects(colour, {&rect, 1}); }

void DrawOne(GdiCanvas& canvas, const platform::PictureRef& picture, const Rect& rect) {
  const sheet::PictureItem item{picture.get(), rect, false};
  canvas.DrawPictures({&item, 1});
}

}  // namespace

FrameLooks DefaultFrameLooks() {
  FrameLooks looks{DefaultGridFont(), GetSysColor(COLOR_BTNFACE), {}};
  if (IsHighContrast()) looks.band_colour = GetSysColor(COLOR_WINDOW);
  return looks;
}

platform::Font Frames::CaptionFont() const {
  platform::Font font = looks_.font;
  font.size_pt *= kCaptionSize;
  font.bold = true;
  return font;
}

std::string Frames::CaptionText() const { return base::OneLine(base::TrimBlanks(control_.C1EHeader().caption), " "); }

FrameLayout Frames::LayOut(sheet::Size size, double scale, GdiFonts& fonts) const {
  const auto scaled = [&](int pixels) { return static_cast<int>(std::lround(std::max(pixels, 0) * scale)); };
  const platform::PictureRef mark = control_.imgMark();
  FrameLayout layout;
  layout.scale = scale;
  layout.whole = {0, 0, size.width, size.height};
  const int margin = scaled(control_.C1EDesk().border_width);
  const int width = std::max(0, size.width - 2 * margin);
  const int caption_height = fonts.Find(CaptionFont(), scale).line_height();
  layout.header = {margin, margin, width, std::max(scaled(kLeastHeight), caption_height + scaled(kMargin))};
  const Rect& band = layout.header;
  int left = band.x + scaled(kMargin);
  if (control_.C1EHeader().picture != nullptr) {
    layout.icon = {left, band.y + (band.height - scaled(kPicturePx)) / 2, scaled(kPicturePx), scaled(kPicturePx)};
    left = layout.icon.right() + scaled(kMargin);
  }
  int right = band.right() - scaled(kMargin);
  if (mark != nullptr) {
    const int mark_width = scaled(mark->WidthPx());
    layout.mark = {band.right() - mark_width, band.y, mark_width, scaled(mark->HeightPx())};
    right -= mark_width;
  }
  layout.caption = {left, band.y, std::max(0, right - left), band.height};
  const int top = band.bottom() + scaled(control_.C1EDesk().child_spacing);
  layout.body = {margin, top, width, std::max(0, size.height - top - margin)};
  const int border = scaled(control_.C1EBody().border_width);
  layout.sheet = layout.body.Inset(border, border);
  layout.sheet.width = std::max(0, layout.sheet.width);
  layout.sheet.height = std::max(0, layout.sheet.height);
  return layout;
}

std::string Frames::CutCaption(const FrameLayout& layout, GdiFonts& fonts) const {
  const std::string caption = CaptionText();
  const int width = fonts.Find(CaptionFont(), layout.scale).Width(caption);
  return width > layout.caption.width ? caption : std::string();
}

void Frames::PaintHeader(GdiCanvas& canvas, const FrameLayout& layout) const {
  const control::Container& header = control_.C1EHeader();
  FillOne(canvas, BandColour(), layout.header);
  if (!layout.icon.IsEmpty()) DrawOne(canvas, header.picture, layout.icon);
  if (!layout.mark.IsEmpty()) DrawOne(canvas, control_.imgMark(), layout.mark);
  const std::string caption = CaptionText();
  if (caption.empty()) return;
  const platform::Font font = CaptionFont();
  const sheet::TextItem item{caption, layout.caption, sheet::HorizontalAlign::kLeft, sheet::TextOverflow::kEllipsis,
                             true};
  canvas.DrawTexts(font, TextOn(BandColour()), {&item, 1});
}

void Frames::PaintAround(GdiCanvas& canvas, const FrameLayout& layout) const {
  const Rect& whole = layout.whole;
  const Rect& inner = layout.header;
  const Rect desk[] = {{0, 0, whole.width, inner.y},
                       {0, layout.body.bottom(), whole.width, whole.height - layout.body.bottom()},
                       {0, inner.y, inner.x, whole.height},
                       {inner.right(), inner.y, whole.width - inner.right(), whole.height},
                       {inner.x, inner.bottom(), inner.width, layout.body.y - inner.bottom()}};
  canvas.FillRects(looks_.desk_colour, desk);
  const Rect& body = layout.body;
  const Rect& cells = layout.sheet;
  const Rect frame[] = {{body.x, body.y, body.width, cells.y - body.y},
                        {body.x, cells.bottom(), body.width, body.bottom() - cells.bottom()},
                        {body.x, cells.y, cells.x - body.x, cells.height},
                        {cells.right(), cells.y, body.right() - cells.right(), cells.height}};
  canvas.FillRects(control_.C1EBody().back_color, frame);
}

}  // namespace stockbook::com
