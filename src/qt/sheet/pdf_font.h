// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFont>
#include <QHash>
#include <QRawFont>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qt/sheet/pdf_file.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::qt {

// A face in a PDF, with those of its glyphs that the document shows. The toolkit makes the font object: a document of
// its own with all glyphs in their order, from which the objects are taken over. Only what the glyphs stand for is told
// anew, since the toolkit takes the first character of a glyph, which need not be the one in the text. A face that it
// does not embed, because the licence in it forbids that, has no font object; its glyphs are drawn as shapes.
class PdfFace {
 public:
  explicit PdfFace(const QRawFont& font);

  const QRawFont& font() const { return font_; }
  bool embeddable() const { return embeddable_; }
  // The number of the glyph in the document, where it stands for the character; 0 if that is not known.
  uint16_t NumberOf(uint32_t glyph, char32_t character);
  // Writes the font into the file and returns the number of its object.
  int Write(PdfFile& file) const;

 private:
  QByteArray Document(const std::vector<uint32_t>& glyphs) const;
  QByteArray Characters() const;

  QRawFont font_;
  bool embeddable_ = false;
  std::vector<uint32_t> glyphs_;      // by number, beginning with 1
  std::vector<char32_t> characters_;  // by number, beginning with 1
  QHash<uint32_t, uint16_t> numbers_;
};

// The faces of a document.
class PdfFaces {
 public:
  // The index of the face. Sizes of the same face are one.
  int Find(const QRawFont& font);
  PdfFace& At(int index) { return *faces_[static_cast<size_t>(index)]; }
  int count() const { return static_cast<int>(faces_.size()); }

 private:
  QHash<QString, int> indexes_;
  std::vector<std::unique_ptr<PdfFace>> faces_;
};

// A glyph of a text: the face, its number there, and how far it is from the text's beginning.
struct PdfGlyph {
  int16_t face = 0;
  bool follows = false;  // where the one before it ends, if that is of the same face
  uint16_t number = 0;
  uint32_t glyph = 0;  // in the face
  float x = 0;
  float y = 0;  // downwards
};

// One font at one size: what a text is made of. Characters that stand alone are looked up once; texts with others are
// laid out by the toolkit.
class PdfFont {
 public:
  PdfFont(const platform::Font& font, double scale, PdfFaces& faces);

  const platform::Font& font() const { return font_; }
  double size() const { return qfont_.pixelSize(); }
  double ascent() const { return ascent_; }
  int line_height() const { return line_height_; }
  // Puts the glyphs of the text into `glyphs` and returns its width.
  double Lay(std::string_view text, std::vector<PdfGlyph>& glyphs);

 private:
  static constexpr size_t kPageSize = 256;
  struct Character {
    enum class State : uint8_t { kUnknown, kAlone, kWithOthers };
    State state = State::kUnknown;
    PdfGlyph glyph;
    float advance = 0;
  };
  using Page = std::array<Character, kPageSize>;

  // nullptr if the toolkit must lay the text out.
  const Character* Find(char32_t character);
  Character Learn(char32_t character);
  double LayByToolkit(const QString& text, std::vector<PdfGlyph>& glyphs);

  platform::Font font_;
  QFont qfont_;
  QRawFont raw_font_;
  PdfFaces& faces_;
  double ascent_ = 0;
  int line_height_ = 0;
  std::vector<std::unique_ptr<Page>> pages_;  // by character / kPageSize
};

}  // namespace stockbook::qt
