// SPDX-License-Identifier: MIT
#include "qt/sheet/glyph_font.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "qt/sheet/characters.h"
#include "qt/sheet/text.h"
#include "stockbook/qt/fonts.h"

namespace stockbook::qt {
namespace {

constexpr size_t kPageSize = 256;
constexpr size_t kCharacters = 0x40000;  // the toolkit draws the symbols and tags beyond
constexpr int kMostGlyphPixels = 400;    // side of a glyph; larger ones are not worth keeping

bool IsBlank(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace

GlyphFont::GlyphFont(const platform::Font& font, double scale)
    : font_(font),
      scale_(scale),
      qfont_(ToQFont(font, scale)),
      raw_font_(QRawFont::fromFont(qfont_)),
      pages_(kCharacters / kPageSize) {
  const QFontMetricsF metrics(qfont_);
  ascent_ = static_cast<int>(std::ceil(metrics.ascent()));
  line_height_ = LineHeight(qfont_);
}

int GlyphFont::Lay(std::string_view text, std::vector<const Glyph*>& glyphs) {
  glyphs.clear();
  int width = 0;
  for (size_t at = 0; at < text.size();) {
    const Glyph* glyph = Find(NextCharacter(text, at));
    if (glyph == nullptr) return -1;
    glyphs.push_back(glyph);
    width += glyph->advance;
  }
  return width;
}

int GlyphFont::Width(std::string_view line) {
  const int width = Lay(line, measured_);
  return width >= 0 ? width : QFontMetrics(qfont_).horizontalAdvance(ToQString(line));
}

const Glyph* GlyphFont::Find(char32_t character) {
  if (character >= kCharacters) return nullptr;
  std::unique_ptr<Page>& page = pages_[character / kPageSize];
  if (page == nullptr) page = std::make_unique<Page>();
  Slot& slot = (*page)[character % kPageSize];
  if (!slot.known) slot = {Rasterise(character), true};
  return slot.glyph;
}

const Glyph* GlyphFont::Rasterise(char32_t character) {
  if (!StandsAlone(character)) return nullptr;
  const QGlyphRun run = RunOf(IsBlank(character) ? U' ' : character, qfont_, raw_font_);
  const QList<quint32> indexes = run.glyphIndexes();
  if (indexes.size() != 1) return nullptr;
  const QRawFont face = run.rawFont();
  const int advance = static_cast<int>(std::lround(face.advancesForGlyphIndexes(indexes).front().x()));
  const QRectF box = face.boundingRect(indexes.front());
  if (!box.isValid() || box.isEmpty()) return Store({}, {}, advance);
  // A hinted shape may extend slightly beyond the box that the face reports.
  const QRect area = box.toAlignedRect().adjusted(-2, -2, 2, 2);
  if (area.width() > kMostGlyphPixels || area.height() > kMostGlyphPixels) return nullptr;
  QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setPen(Qt::black);
  painter.drawGlyphRun(-area.topLeft(), run);
  painter.end();
  return Store(image, -area.topLeft(), advance);
}

// Crops the image to the part with coverage.
const Glyph* GlyphFont::Store(const QImage& image, QPoint origin, int advance) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(line[x]) != 0) ink |= QRect(x, y, 1, 1);
    }
  }
  Glyph glyph;
  glyph.advance = static_cast<int16_t>(std::clamp(advance, 0, 0x7FFF));
  glyph.coverage = static_cast<uint32_t>(coverage_.size());
  if (!ink.isEmpty()) {
    glyph.left = static_cast<int16_t>(ink.left() - origin.x());
    glyph.top = static_cast<int16_t>(ink.top() - origin.y());
    glyph.width = static_cast<int16_t>(ink.width());
    glyph.height = static_cast<int16_t>(ink.height());
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
      const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
      for (int x = ink.left(); x <= ink.right(); ++x) coverage_.push_back(static_cast<uint8_t>(qAlpha(line[x])));
    }
  }
  return &glyphs_.emplace_back(glyph);
}

}  // namespace stockbook::qt
