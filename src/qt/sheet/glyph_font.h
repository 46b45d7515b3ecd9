// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPoint>
#include <QRawFont>
#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "stockbook/platform/text_metrics.h"

namespace stockbook::qt {

// The image of one character: its coverage, 0..255 per pixel, and the position of the coverage. In device pixels.
struct Glyph {
  int16_t left = 0;  // left edge of the coverage, from the pen position
  int16_t top = 0;   // top edge of the coverage, from the baseline; negative is above
  int16_t width = 0;
  int16_t height = 0;
  int16_t advance = 0;
  uint32_t coverage = 0;  // offset of width * height bytes
};

// One font at one size, character by character: the toolkit rasterises each character once and chooses another face
// where the font lacks it. Advances are whole pixels, so digits line up in columns and every line is equally sharp.
// Characters whose shape depends on their neighbours (combining marks, joining and right-to-left scripts) are not
// covered; the toolkit has to draw such texts itself.
class GlyphFont {
 public:
  // `scale` is device pixels per logical pixel.
  GlyphFont(const platform::Font& font, double scale);

  const platform::Font& font() const { return font_; }
  double scale() const { return scale_; }
  const QFont& qfont() const { return qfont_; }
  int ascent() const { return ascent_; }
  int line_height() const { return line_height_; }

  // Puts the glyphs of the text into `glyphs` and returns their width, or -1 if the toolkit must draw the text.
  int Lay(std::string_view text, std::vector<const Glyph*>& glyphs);
  // The width of one line, whoever draws it.
  int Width(std::string_view line);
  // nullptr if the toolkit must draw the character. Valid as long as the font.
  const Glyph* Find(char32_t character);
  // Valid until the next call of Lay or Find.
  const uint8_t* Coverage(const Glyph& glyph) const { return coverage_.data() + glyph.coverage; }

 private:
  // What is known of a character: nothing yet, its glyph, or that the toolkit must draw it.
  struct Slot {
    const Glyph* glyph = nullptr;
    bool known = false;
  };
  using Page = std::array<Slot, 256>;

  const Glyph* Rasterise(char32_t character);
  const Glyph* Store(const QImage& image, QPoint origin, int advance);

  platform::Font font_;
  double scale_;
  QFont qfont_;
  QRawFont raw_font_;
  int ascent_ = 0;
  int line_height_ = 0;
  std::vector<std::unique_ptr<Page>> pages_;  // by character / 256
  std::vector<const Glyph*> measured_;
  std::deque<Glyph> glyphs_;
  std::vector<uint8_t> coverage_;
};

}  // namespace stockbook::qt
