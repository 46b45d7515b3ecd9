// SPDX-License-Identifier: MIT
#include "qt/sheet/characters.h"

#include <QChar>
#include <QList>
#include <QPointF>
#include <QString>
#include <QTextLayout>

namespace stockbook::qt {
namespace {

constexpr char32_t kReplacement = U'\uFFFD';

}  // namespace

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

}  // namespace stockbook::qt
