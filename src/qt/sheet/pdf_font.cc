// SPDX-License-Identifier: MIT
#include "qt/sheet/pdf_font.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <utility>

#include "qt/sheet/characters.h"
#include "qt/sheet/text.h"
#include "stockbook/qt/fonts.h"

namespace stockbook::qt {
namespace {

constexpr size_t kLookedUp = 0x40000;  // the toolkit lays out texts with symbols and tags beyond

// The objects of a PDF that the toolkit wrote: it has one table of their places, at its end.
class ToolkitPdf {
 public:
  explicit ToolkitPdf(const QByteArray& bytes) {
    const qsizetype table = bytes.lastIndexOf("\nxref\n");
    if (table < 0) return;
    // Its lines after "xref", the number of objects, and the free object 0.
    const QList<QByteArray> lines = bytes.mid(table + 1).split('\n');
    constexpr int kHead = 3;
    constexpr int kDigits = 10;
    std::map<qsizetype, int> places{{table + 1, 0}};
    for (int line = kHead; line < lines.size() && lines[line].endsWith("n "); ++line)
      places[lines[line].left(kDigits).toLongLong()] = line - kHead + 1;
    for (auto place = places.begin(); place->second != 0; ++place) {
      const qsizetype begin = bytes.indexOf("obj\n", place->first) + 4;
      const qsizetype end = bytes.lastIndexOf("\nendobj", std::next(place)->first);
      if (end > begin) bodies_[place->second] = bytes.mid(begin, end - begin);
    }
  }

  const std::map<int, QByteArray>& bodies() const { return bodies_; }
  // The object of the only font, or 0.
  int Font() const {
    for (const auto& [number, body] : bodies_) {
      if (DictionaryOf(body).contains("/Subtype /Type0")) return number;
    }
    return 0;
  }
  // The object that tells what the font's glyphs stand for, or 0.
  int CharactersOfFont() const {
    constexpr QByteArrayView kKey("/ToUnicode ");
    const auto font = bodies_.find(Font());
    const qsizetype key = font == bodies_.end() ? -1 : font->second.indexOf(kKey);
    if (key < 0) return 0;
    const qsizetype digits = key + kKey.size();
    return font->second.mid(digits, font->second.indexOf(' ', digits) - digits).toInt();
  }
  // What stands before an object's stream.
  static QByteArray DictionaryOf(const QByteArray& body) {
    const qsizetype stream = body.indexOf("stream\n");
    return stream < 0 ? body : body.left(stream);
  }

 private:
  std::map<int, QByteArray> bodies_;
};

// Takes an object and those that it refers to over into another file, but for those that are there already.
class Transfer {
 public:
  Transfer(const ToolkitPdf& from, PdfFile& to, std::map<int, int> taken)
      : from_(from), to_(to), taken_(std::move(taken)) {}

  int Take(int number) {
    if (const auto known = taken_.find(number); known != taken_.end()) return known->second;
    const int target = taken_[number] = to_.Number();
    const auto body = from_.bodies().find(number);
    if (body == from_.bodies().end()) return target;
    const QByteArray dictionary = ToolkitPdf::DictionaryOf(body->second);
    to_.WriteWhole(target, Renumbered(dictionary) + body->second.mid(dictionary.size()));
    return target;
  }

 private:
  // Each "12 0 R" as it is called here.
  QByteArray Renumbered(const QByteArray& dictionary) {
    constexpr QByteArrayView kReference(" 0 R");
    QByteArray text;
    qsizetype copied = 0;
    for (qsizetype at = dictionary.indexOf(kReference); at >= 0; at = dictionary.indexOf(kReference, at + 1)) {
      qsizetype digits = at;
      while (digits > copied && dictionary[digits - 1] >= '0' && dictionary[digits - 1] <= '9') --digits;
      if (digits == at) continue;
      const int target = Take(dictionary.mid(digits, at - digits).toInt());
      text += dictionary.mid(copied, digits - copied) + QByteArray::number(target);
      copied = at;
    }
    return text + dictionary.mid(copied);
  }

  const ToolkitPdf& from_;
  PdfFile& to_;
  std::map<int, int> taken_;
};

QString NameOf(const QRawFont& font) {
  return font.familyName() + QLatin1Char('\n') + font.styleName() + QLatin1Char('\n') + QString::number(font.weight()) +
         QLatin1Char(' ') + QString::number(static_cast<int>(font.style()));
}

// Throws std::bad_alloc where there is no room for the toolkit to make a font of so many glyphs: it does not look
// whether it got the memory that it asks for, and would crash.
void ExpectRoom(size_t glyphs) {
  constexpr size_t kFont = size_t{40} << 20;  // of which its buffers are 32
  constexpr size_t kGlyph = size_t{4} << 10;
  const auto room = std::make_unique_for_overwrite<char[]>(kFont + glyphs * kGlyph);
  // What is not used might be left out.
  *static_cast<volatile char*>(room.get()) = 0;
}

// The characters of a text by the glyphs that the face has for each of them alone.
QHash<uint32_t, char32_t> CharactersOf(const QString& text, const QRawFont& face) {
  QHash<uint32_t, char32_t> characters;
  for (const uint unit : text.toUcs4()) {
    const auto character = static_cast<char32_t>(unit);
    const QList<quint32> glyphs = face.glyphIndexesForString(QString::fromUcs4(&character, 1));
    if (glyphs.size() == 1) characters.insert(glyphs.front(), character);
  }
  return characters;
}

}  // namespace

PdfFace::PdfFace(const QRawFont& font) : font_(font) {
  // Any glyph but 0, which stands for what is missing.
  embeddable_ = ToolkitPdf(Document({1})).Font() != 0;
}

uint16_t PdfFace::NumberOf(uint32_t glyph, char32_t character) {
  // The toolkit puts the glyph for what is missing before all others.
  if (glyph == 0) return 0;
  uint16_t& number = numbers_[glyph];
  if (number == 0) {
    glyphs_.push_back(glyph);
    characters_.push_back(0);
    number = static_cast<uint16_t>(glyphs_.size());
  }
  char32_t& known = characters_[size_t{number} - 1];
  if (known == 0) known = character;
  return number;
}

QByteArray PdfFace::Document(const std::vector<uint32_t>& glyphs) const {
  ExpectRoom(glyphs.size());
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  QPainter painter(&writer);
  QGlyphRun run;
  run.setRawFont(font_);
  run.setGlyphIndexes(QList<quint32>(glyphs.begin(), glyphs.end()));
  run.setPositions(QList<QPointF>(static_cast<qsizetype>(glyphs.size()), QPointF()));
  painter.drawGlyphRun(QPointF(), run);
  painter.end();
  return bytes;
}

// The table by which readers copy and find texts.
QByteArray PdfFace::Characters() const {
  constexpr size_t kMostOfBlock = 100;
  QByteArray table(
      "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
      "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n");
  for (size_t first = 0; first < characters_.size(); first += kMostOfBlock) {
    const size_t last = std::min(first + kMostOfBlock, characters_.size());
    table += QByteArray::number(static_cast<qulonglong>(last - first)) + " beginbfchar\n";
    for (size_t at = first; at < last; ++at) {
      const char32_t character = characters_[at] == 0 ? U'\uFFFD' : characters_[at];
      table += '<' + QByteArray::number(static_cast<qulonglong>(at) + 1, 16).rightJustified(4, '0') + "> <";
      for (const QChar unit : QString::fromUcs4(&character, 1))
        table += QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
      table += ">\n";
    }
    table += "endbfchar\n";
  }
  return table + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

int PdfFace::Write(PdfFile& file) const {
  const ToolkitPdf document(Document(glyphs_));
  const int characters = file.Number();
  file.WriteStream(characters, "", Characters());
  return Transfer(document, file, {{document.CharactersOfFont(), characters}}).Take(document.Font());
}

int PdfFaces::Find(const QRawFont& font) {
  const QString name = NameOf(font);
  const auto known = indexes_.constFind(name);
  if (known != indexes_.constEnd()) return known.value();
  faces_.push_back(std::make_unique<PdfFace>(font));
  indexes_.insert(name, count() - 1);
  return count() - 1;
}

PdfFont::PdfFont(const platform::Font& font, double scale, PdfFaces& faces)
    : font_(font),
      qfont_(ToQFont(font, scale)),
      raw_font_(QRawFont::fromFont(qfont_)),
      faces_(faces),
      line_height_(LineHeight(qfont_)),
      pages_(kLookedUp / kPageSize) {
  ascent_ = std::ceil(QFontMetricsF(qfont_).ascent());
}

double PdfFont::Lay(std::string_view text, std::vector<PdfGlyph>& glyphs) {
  glyphs.clear();
  double width = 0;
  for (size_t at = 0; at < text.size();) {
    const Character* known = Find(NextCharacter(text, at));
    if (known == nullptr) return LayByToolkit(ToQString(text), glyphs);
    glyphs.push_back(known->glyph);
    glyphs.back().x = static_cast<float>(width);
    width += known->advance;
  }
  return width;
}

const PdfFont::Character* PdfFont::Find(char32_t character) {
  if (character >= kLookedUp) return nullptr;
  std::unique_ptr<Page>& page = pages_[character / kPageSize];
  if (page == nullptr) page = std::make_unique<Page>();
  Character& known = (*page)[character % kPageSize];
  if (known.state == Character::State::kUnknown) known = Learn(character);
  return known.state == Character::State::kAlone ? &known : nullptr;
}

PdfFont::Character PdfFont::Learn(char32_t character) {
  Character learnt;
  learnt.state = Character::State::kWithOthers;
  if (!StandsAlone(character)) return learnt;
  const bool blank = character < 0x20 || (character >= 0x7F && character < 0xA0);
  const QGlyphRun run = RunOf(blank ? U' ' : character, qfont_, raw_font_);
  const QList<quint32> indexes = run.glyphIndexes();
  if (indexes.size() != 1) return learnt;
  const QRawFont face = run.rawFont();
  const int index = faces_.Find(face);
  learnt.state = Character::State::kAlone;
  learnt.glyph.follows = true;
  learnt.glyph.face = static_cast<int16_t>(index);
  learnt.glyph.glyph = indexes.front();
  learnt.glyph.number = faces_.At(index).NumberOf(indexes.front(), blank ? U' ' : character);
  learnt.advance = static_cast<float>(face.advancesForGlyphIndexes(indexes).front().x());
  return learnt;
}

double PdfFont::LayByToolkit(const QString& text, std::vector<PdfGlyph>& glyphs) {
  glyphs.clear();
  QTextLayout layout(text, qfont_);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  for (const QGlyphRun& run : layout.glyphRuns()) {
    const int face = faces_.Find(run.rawFont());
    const QList<quint32> indexes = run.glyphIndexes();
    const QList<QPointF> positions = run.positions();
    const QHash<uint32_t, char32_t> characters = CharactersOf(text, run.rawFont());
    for (qsizetype at = 0; at < indexes.size(); ++at) {
      PdfGlyph glyph;
      glyph.face = static_cast<int16_t>(face);
      glyph.glyph = indexes[at];
      glyph.number = faces_.At(face).NumberOf(indexes[at], characters.value(indexes[at], 0));
      glyph.x = static_cast<float>(positions[at].x());
      // Positions count from the line's top.
      glyph.y = static_cast<float>(positions[at].y() - line.ascent());
      glyphs.push_back(glyph);
    }
  }
  return line.naturalTextWidth();
}

}  // namespace stockbook::qt
