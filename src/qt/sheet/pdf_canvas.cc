// SPDX-License-Identifier: MIT
#include "qt/sheet/pdf_canvas.h"

#include <QImage>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

constexpr double kPointsPerPixel = 72.0 / 96.0;
constexpr std::string_view kDots = "…";

// Appends a number and a blank.
void Append(QByteArray& commands, int number) {
  std::array<char, 16> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  commands.append(digits.data(), end - digits.data()).append(' ');
}

// With one digit behind the point, which is a hundredth of a millimetre.
void AppendTenths(QByteArray& commands, double number) {
  const auto tenths = static_cast<int>(std::lround(number * 10));
  if (tenths % 10 == 0) return Append(commands, tenths / 10);
  if (tenths < 0) commands.append('-');
  Append(commands, std::abs(tenths) / 10);
  commands.back() = '.';
  Append(commands, std::abs(tenths) % 10);
}

void AppendReal(QByteArray& commands, double number) {
  const std::string text = PdfNumber(number);
  commands.append(text.data(), static_cast<qsizetype>(text.size())).append(' ');
}

double XOf(const sheet::TextItem& item, double width) {
  switch (item.align) {
    case sheet::HorizontalAlign::kLeft:
      return item.rect.x;
    case sheet::HorizontalAlign::kCenter:
      return item.rect.x + (item.rect.width - width) / 2;
    case sheet::HorizontalAlign::kRight:
      return item.rect.right() - width;
  }
  return item.rect.x;
}

// The colours of the image, and its coverage.
struct Planes {
  QByteArray colours;
  QByteArray coverage;
};

Planes PlanesOf(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
  Planes planes;
  planes.colours.reserve(qsizetype{3} * plain.width() * plain.height());
  planes.coverage.reserve(qsizetype{1} * plain.width() * plain.height());
  for (int y = 0; y < plain.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
    for (int x = 0; x < plain.width(); ++x) {
      planes.coverage.append(static_cast<char>(qAlpha(line[x])));
      for (const int part : {qRed(line[x]), qGreen(line[x]), qBlue(line[x])})
        planes.colours.append(static_cast<char>(part));
    }
  }
  return planes;
}

std::string ImageEntries(const QImage& image, std::string_view colours) {
  return "/Type /XObject /Subtype /Image /Width " + std::to_string(image.width()) + " /Height " +
         std::to_string(image.height()) + " /BitsPerComponent 8 /ColorSpace " + std::string(colours);
}

}  // namespace

PdfFont& PdfResources::FontOf(const platform::Font& font) {
  for (const auto& known : fonts_) {
    if (known->font() == font) return *known;
  }
  return *fonts_.emplace_back(std::make_unique<PdfFont>(font, sheet::PageTarget::kScale, faces_));
}

std::string PdfResources::PictureOf(const platform::Picture& picture, sheet::Size size) {
  for (const Picture& known : pictures_) {
    if (known.picture == &picture && known.size == size) return "/P" + std::to_string(known.object);
  }
  const QImage image = ImageOf(picture, {size.width, size.height});
  if (image.isNull()) return {};
  const Planes planes = PlanesOf(image);
  const int coverage = file_.Number();
  file_.WriteStream(coverage, ImageEntries(image, "/DeviceGray"), planes.coverage);
  const int object = file_.Number();
  file_.WriteStream(object, ImageEntries(image, "/DeviceRGB") + " /SMask " + PdfReference(coverage), planes.colours);
  pictures_.push_back({&picture, size, object});
  return "/P" + std::to_string(object);
}

std::string PdfResources::Write() {
  std::string dictionary = "<< /Font <<";
  for (int face = 0; face < faces_.count(); ++face) {
    if (faces_.At(face).embeddable())
      dictionary += " /F" + std::to_string(face) + " " + PdfReference(faces_.At(face).Write(file_));
  }
  dictionary += " >> /XObject <<";
  for (const Picture& picture : pictures_)
    dictionary += " /P" + std::to_string(picture.object) + " " + PdfReference(picture.object);
  return dictionary + " >> >>";
}

// A page of a PDF counts from its lower left corner upwards, a canvas from its upper left one downwards.
void PdfPage::Paint(const sheet::PagePlace& place, const sheet::PageRoom& room,
                    const std::function<void(sheet::Canvas&)>& paint) {
  const double unit = kPointsPerPixel * place.zoom / kScale;
  commands_ += "q ";
  for (const double number : {unit, 0.0, 0.0, -unit, frame_.left + place.x * kPointsPerPixel,
                              frame_.height - frame_.top - place.y * kPointsPerPixel})
    commands_ += QByteArray::number(number, 'f', 6) + ' ';
  commands_ += "cm\n";
  PdfCanvas canvas(resources_, commands_);
  canvas.PushClip({0, 0, static_cast<int>(room.width * kScale), static_cast<int>(room.height * kScale)});
  paint(canvas);
  canvas.PopClip();
  commands_ += "Q\n";
}

void PdfCanvas::PushClip(const sheet::Rect& rect) {
  commands_ += "q ";
  AddRect(rect);
  commands_ += "W n\n";
}

void PdfCanvas::PopClip() { commands_ += "Q\n"; }

void PdfCanvas::AddRect(const sheet::Rect& rect) {
  for (const int number : {rect.x, rect.y, rect.width, rect.height}) Append(commands_, number);
  commands_ += "re ";
}

void PdfCanvas::SetColour(platform::Colour colour) {
  for (const int shift : {0, 8, 16}) AppendReal(commands_, (colour >> shift & 0xFF) / 255.0);
  commands_ += "rg\n";
}

void PdfCanvas::FillRects(platform::Colour colour, std::span<const sheet::Rect> rects) {
  if (rects.empty()) return;
  SetColour(colour);
  for (const sheet::Rect& rect : rects) {
    if (!rect.IsEmpty()) AddRect(rect);
  }
  commands_ += "f\n";
}

void PdfCanvas::DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const sheet::TextItem> items) {
  if (items.empty()) return;
  SetColour(colour);
  PdfFont& pdf_font = resources_.FontOf(font);
  for (const sheet::TextItem& item : items) {
    if (!item.text.empty()) DrawLine(pdf_font, item);
  }
}

void PdfCanvas::DrawLine(PdfFont& font, const sheet::TextItem& item) {
  double width = font.Lay(item.text, glyphs_);
  const double room = item.rect.width;
  if (width > room && item.overflow == sheet::TextOverflow::kEllipsis) Shorten(font, width, room);
  const double baseline = item.rect.y + (item.rect.height - font.line_height()) / 2.0 + font.ascent();
  // A text that fits is not clipped, so that a printer's rounding cannot shave off a digit.
  const bool clip = item.clip || width > room;
  if (clip) {
    const int margin = item.clip ? 0 : font.line_height();
    PushClip(item.rect.Inset(0, -margin));
  }
  ShowGlyphs(font, XOf(item, width), baseline);
  if (clip) PopClip();
}

// Drops glyphs from the end until the rest and an ellipsis fit.
void PdfCanvas::Shorten(PdfFont& font, double& width, double most) {
  std::vector<PdfGlyph> dots;
  const double dots_width = font.Lay(kDots, dots);
  double end = width;
  while (!glyphs_.empty() && end + dots_width > most) {
    end = glyphs_.back().x;
    glyphs_.pop_back();
  }
  for (PdfGlyph& dot : dots) {
    dot.x += static_cast<float>(end);
    glyphs_.push_back(dot);
  }
  width = end + dots_width;
}

// One piece for each stretch of glyphs of one face that stand beside each other on the baseline.
void PdfCanvas::ShowGlyphs(const PdfFont& font, double x, double baseline) {
  face_ = -1;
  commands_ += "BT\n";
  for (size_t first = 0; first < glyphs_.size();) {
    const PdfGlyph& glyph = glyphs_[first];
    size_t last = first + 1;
    if (!resources_.faces().At(glyph.face).embeddable()) {
      commands_ += "ET\n";
      DrawShapes(font, glyph, x, baseline);
      commands_ += "BT\n";
      face_ = -1;
      first = last;
      continue;
    }
    while (last < glyphs_.size() && glyphs_[last].face == glyph.face && glyphs_[last].follows) ++last;
    if (face_ != glyph.face) {
      face_ = glyph.face;
      commands_ += "/F";
      Append(commands_, face_);
      AppendTenths(commands_, font.size());
      commands_ += "Tf\n";
    }
    ShowRun(first, last, x, baseline);
    first = last;
  }
  commands_ += "ET\n";
}

void PdfCanvas::ShowRun(size_t first, size_t last, double x, double baseline) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  commands_ += "1 0 0 -1 ";
  AppendTenths(commands_, x + glyphs_[first].x);
  AppendTenths(commands_, baseline + glyphs_[first].y);
  commands_ += "Tm <";
  for (size_t at = first; at < last; ++at) {
    for (int shift = 12; shift >= 0; shift -= 4) commands_ += kHex[glyphs_[at].number >> shift & 15];
  }
  commands_ += "> Tj\n";
}

void PdfCanvas::DrawShapes(const PdfFont& font, const PdfGlyph& glyph, double x, double baseline) {
  QRawFont face = resources_.faces().At(glyph.face).font();
  face.setPixelSize(font.size());
  const QPainterPath path = face.pathForGlyph(glyph.glyph);
  const auto add = [&](QPointF point) {
    AppendTenths(commands_, x + glyph.x + point.x());
    AppendTenths(commands_, baseline + glyph.y + point.y());
  };
  for (int at = 0; at < path.elementCount(); ++at) {
    const QPainterPath::Element& element = path.elementAt(at);
    add(element);
    if (element.isMoveTo()) commands_ += "m\n";
    if (element.isLineTo()) commands_ += "l\n";
    if (element.isCurveTo()) {
      for (int control = 0; control < 2; ++control) add(path.elementAt(++at));
      commands_ += "c\n";
    }
  }
  commands_ += "f\n";
}

void PdfCanvas::DrawPictures(std::span<const sheet::PictureItem> items) {
  for (const sheet::PictureItem& item : items) {
    if (item.picture == nullptr || item.rect.IsEmpty()) continue;
    sheet::Size size{item.rect.width, item.rect.height};
    if (item.tile) {
      size.width = std::max(1, static_cast<int>(item.picture->WidthPx() * sheet::PageTarget::kScale));
      size.height = std::max(1, static_cast<int>(item.picture->HeightPx() * sheet::PageTarget::kScale));
    }
    const std::string name = resources_.PictureOf(*item.picture, size);
    if (name.empty()) continue;
    if (item.tile) PushClip(item.rect);
    for (int y = item.rect.y; y < item.rect.bottom(); y += size.height) {
      for (int x = item.rect.x; x < item.rect.right(); x += size.width) {
        commands_ += "q ";
        // A picture fills the square from 0 to 1, upwards.
        for (const int number : {size.width, 0, 0, -size.height, x, y + size.height}) Append(commands_, number);
        commands_ += "cm ";
        commands_.append(name.data(), static_cast<qsizetype>(name.size())).append(" Do Q\n");
      }
    }
    if (item.tile) PopClip();
  }
}

int PdfCanvas::TextWidth(const platform::Font& font, std::string_view line) {
  return static_cast<int>(std::ceil(resources_.FontOf(font).Lay(line, glyphs_)));
}

int PdfCanvas::LineHeight(const platform::Font& font) { return resources_.FontOf(font).line_height(); }

}  // namespace stockbook::qt
