// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <memory>
#include <optional>
#include <vector>

#include "qt/sheet/glyph_font.h"
#include "qt/sheet/pixel_target.h"
#include "sheet/paint/canvas.h"

namespace stockbook::qt {

// The glyph fonts in use, by size, shared by the frames of a view. Only a few are kept: changing the scale or the fonts
// drops the others.
class GlyphFonts {
 public:
  GlyphFont& Find(const platform::Font& font, double scale);
  // To be called after the desktop's fonts have changed.
  void Clear() { fonts_.clear(); }

 private:
  std::vector<std::unique_ptr<GlyphFont>> fonts_;
};

// The best scale to lay a sheet out for the painter: device pixels per painter unit for an unrotated painter, and a
// fine one where there are no pixels to align with (printers, rotated painters).
double PaintingScale(const QPainter& painter);

// The sheet's canvas over a painter: fills and pictures through the painter, text as cached glyphs straight onto its
// pixels if they are accessible, otherwise as images or as text. It lives for one painting and restores the painter's
// state.
class QtCanvas : public sheet::Canvas {
 public:
  // The sheet's top left corner is at the painter's origin, and `scale` of its pixels make one unit of the painter.
  // Fonts and pictures are as large as at that scale times the zoom.
  QtCanvas(QPainter& painter, GlyphFonts& fonts, double scale, double zoom = 1.0);
  ~QtCanvas() override;
  QtCanvas(const QtCanvas&) = delete;
  QtCanvas& operator=(const QtCanvas&) = delete;

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
  struct Line {
    int x = 0;
    int baseline = 0;
    sheet::Rect clip;
  };

  void DrawLine(GlyphFont& font, QRgb colour, const sheet::TextItem& item);
  void DrawShaped(const GlyphFont& font, QRgb colour, const sheet::TextItem& item);
  void DrawGlyphs(const PixelTarget& target, const GlyphFont& font, QRgb colour, const Line& line);
  void DrawGlyphImage(const GlyphFont& font, QRgb colour, const Line& line, int width);
  int ShortenToFit(GlyphFont& font, int width, int most);
  sheet::Rect ClipOf(const sheet::TextItem& item) const;
  QColor ColourOf(platform::Colour colour) const;

  QPainter& painter_;
  GlyphFonts& fonts_;
  double scale_;
  std::optional<PixelTarget> target_;
  bool shaped_ = false;  // the painter draws the texts: on printers, and when rotated
  std::optional<platform::Colour> dim_toward_;
  std::vector<sheet::Rect> clips_;
  std::vector<const Glyph*> glyphs_;  // the line being drawn
};

}  // namespace stockbook::qt
