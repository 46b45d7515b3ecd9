// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "com/automation/pixel_picture.h"
#include "com/window/gdi_font.h"
#include "sheet/paint/canvas.h"

namespace stockbook::com {

// The pixels of a device context that is in memory: 0x00RRGGBB from the top left corner, row by row without gaps.
struct PixelField {
  uint32_t* values = nullptr;
  int width = 0;
  int height = 0;
};

// The sheet's canvas over a device context: fills and texts through the system, one call a text; pictures blended
// straight onto the pixels if they are accessible, otherwise by the system, or put on white where that cannot blend. It
// lives for one painting and restores the device context.
class GdiCanvas : public sheet::Canvas {
 public:
  // One unit of the device context is a pixel of a sheet at `scale`, and the sheet's top left corner is at its origin.
  GdiCanvas(HDC dc, GdiFonts& fonts, double scale);
  ~GdiCanvas() override;
  GdiCanvas(const GdiCanvas&) = delete;
  GdiCanvas& operator=(const GdiCanvas&) = delete;

  // These are the pixels under the device context, whose origin is their top left corner.
  void SetPixels(const PixelField& pixels) { pixels_ = pixels; }
  // From here on all colours are blended halfway to this one: the sheet is disabled.
  void DimToward(platform::Colour colour) { dim_toward_ = colour; }

  void PushClip(const sheet::Rect& rect) override;
  void PopClip() override;
  void FillRects(platform::Colour colour, std::span<const sheet::Rect> rects) override;
  void DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const sheet::TextItem> items) override;
  void DrawPictures(std::span<const sheet::PictureItem> items) override;
  int TextWidth(const platform::Font& font, std::string_view line) override;
  int LineHeight(const platform::Font& font) override;

 private:
  void DrawLine(GdiFont& font, const sheet::TextItem& item);
  void DrawPicture(const sheet::PictureItem& item);
  // The picture in the rectangle; what is out of the clip is left out.
  void Place(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip);
  void BlendOntoPixels(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip);
  void BlendBySystem(const Pixels& picture, const sheet::Rect& rect, const sheet::Rect& clip);
  void CopyOnWhite(const Pixels& picture, const sheet::Rect& rect);
  platform::Colour ColourOf(platform::Colour colour) const;

  HDC dc_;
  GdiFonts& fonts_;
  double scale_;
  PixelField pixels_;
  std::optional<platform::Colour> dim_toward_;
  std::vector<sheet::Rect> clips_;
  LaidText laid_;  // the line being drawn
};

}  // namespace stockbook::com
