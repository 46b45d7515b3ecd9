// SPDX-License-Identifier: MIT
#include "qt/glyph_font.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "qt/fonts.h"
#include "qt/text.h"

namespace stockbook::qt {
namespace {

constexpr size_t kPageSize = 256;
constexpr size_t kCharacters = 0x40000;  // the toolkit draws the symbols and tags beyond
constexpr int kMostGlyphPixels = 400;    // side of a glyph; larger ones are not worth keeping
constexpr char32_t kReplacement = U'\uFFFD';

// The next character of well-formed UTF-8; U+FFFD for a byte that cannot start one.
char32_t NextCharacter(std::string_view text, size_t& at) {
  const auto byte = [&](size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char first = byte(at);
  if (first < 0x80) {
    ++at;
    return first;
  }
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || at + length > text.size()) {
    ++at;
    return kReplacement;
  }
  char32_t character = first & (0x7Fu >> length);
  for (size_t index = 1; index < length; ++index) character = character << 6 | (byte(at + index) & 0x3Fu);
  at += length;
  return character;
}

// Whether a character looks the same whatever its neighbours.
bool StandsAlone(char32_t character) {
  if (character < 0x300) return true;
  if (character > 0xFFFF) return character >= 0x20000 && character < 0x40000;
  if (QChar::isSurrogate(character) || QChar::isNonCharacter(character)) return false;
  switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
      return false;
    default:
      break;
  }
  switch (QChar::script(character)) {
    case QChar::Script_Common:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
      return true;
    case QChar::Script_Hangul:
      return character >= 0xAC00 && character < 0xD7A4;
    default:
      return false;
  }
}

bool IsBlank(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

// The face and the glyph with which the toolkit shows a character.
QGlyphRun RunOf(char32_t character, const QFont& font, const QRawFont& raw_font) {
  const QString text = QString::fromUcs4(&character, 1);
  QList<quint32> indexes = raw_font.glyphIndexesForString(text);
  if (raw_font.supportsCharacter(character) && indexes.size() == 1 && indexes.front() != 0) {
    QGlyphRun run;
    run.setRawFont(raw_font);
    run.setGlyphIndexes(indexes);
    run.setPositions({QPointF()});
    return run;
  }
  QTextLayout layout(text, font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  if (runs.size() != 1 || runs.front().glyphIndexes().size() != 1) return {};
  QGlyphRun run = runs.front();
  run.setPositions({QPointF()});
  return run;
}

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
