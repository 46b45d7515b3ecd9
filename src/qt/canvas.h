// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <memory>
#include <optional>
#include <vector>

#include "qt/glyph_font.h"
#include "qt/pixel_target.h"
#include "sheet/paint/canvas.h"

namespace stockbook::qt {

// The fonts that were painted with, at their sizes; shared by the frames of a view. A few at a time: a change of scale
// or of fonts makes the others leave.
class GlyphFonts {
 public:
  GlyphFont& Find(const platform::Font& font, double scale);
  // After the desktop's fonts changed.
  void Clear() { fonts_.clear(); }

 private:
  std::vector<std::unique_ptr<GlyphFont>> fonts_;
};

// The scale at which a sheet is laid out best for the painter: the device's pixels for each of the painter's units
// where those stand upright, a fine one where there are no pixels to meet (printers, turned painters).
double PaintingScale(const QPainter& painter);

// The sheet's canvas over a painter: fills and pictures through the painter, text by cached glyphs straight onto its
// pixels where they can be reached, as images or as text where not. It lives as long as one painting; the painter is
// left as it was found.
class QtCanvas : public sheet::Canvas {
 public:
  // The sheet's left top corner stands at the painter's origin, and `scale` of its pixels are one unit of the painter.
  QtCanvas(QPainter& painter, GlyphFonts& fonts, double scale);
  ~QtCanvas() override;
  QtCanvas(const QtCanvas&) = delete;
  QtCanvas& operator=(const QtCanvas&) = delete;

  // From here on everything is painted half way to the colour: the sheet cannot be used just now.
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
  bool shaped_ = false;  // the painter draws the texts: printers want text, turned painters turn it
  std::optional<platform::Colour> dim_toward_;
  std::vector<sheet::Rect> clips_;
  std::vector<const Glyph*> glyphs_;  // of the line being drawn
};

}  // namespace stockbook::qt
