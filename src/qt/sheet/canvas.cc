// SPDX-License-Identifier: MIT
#include "qt/sheet/canvas.h"

#include <QFontMetrics>
#include <QPaintEngine>
#include <algorithm>
#include <cmath>

#include "qt/sheet/rectangle.h"
#include "qt/sheet/text.h"
#include "stockbook/qt/colour.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

constexpr size_t kMostFonts = 16;
constexpr char32_t kEllipsis = U'…';
constexpr sheet::Rect kEverywhere{-(1 << 28), -(1 << 28), 1 << 29, 1 << 29};

bool WantsVectors(const QPaintEngine* engine) {
  if (engine == nullptr) return false;
  switch (engine->type()) {
    case QPaintEngine::Pdf:
    case QPaintEngine::Picture:
    case QPaintEngine::SVG:
    case QPaintEngine::MacPrinter:
      return true;
    default:
      return false;
  }
}

bool IsUpright(const QTransform& transform) {
  return transform.type() <= QTransform::TxScale && transform.m11() > 0 && transform.m22() > 0;
}

// Whether the painter's device pixels coincide with those of a sheet laid out at the scale.
bool MeetsPixels(const QPainter& painter, double scale) {
  const QTransform transform = painter.deviceTransform();
  return !WantsVectors(painter.paintEngine()) && IsUpright(transform) && transform.m11() == scale &&
         transform.m22() == scale;
}

int AlignedX(const sheet::TextItem& item, int width) {
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

int Baseline(const sheet::TextItem& item, const GlyphFont& font) {
  return item.rect.y + (item.rect.height - font.line_height()) / 2 + font.ascent();
}

}  // namespace

double PaintingScale(const QPainter& painter) {
  constexpr double kFine = 8;
  constexpr double kMost = 64;
  const double scale = painter.deviceTransform().m11();
  return MeetsPixels(painter, scale) && scale <= kMost ? scale : kFine;
}

GlyphFont& GlyphFonts::Find(const platform::Font& font, double scale) {
  for (const auto& known : fonts_) {
    if (known->scale() == scale && known->font() == font) return *known;
  }
  if (fonts_.size() == kMostFonts) fonts_.erase(fonts_.begin());
  return *fonts_.emplace_back(std::make_unique<GlyphFont>(font, scale));
}

QtCanvas::QtCanvas(QPainter& painter, GlyphFonts& fonts, double scale, double zoom)
    : painter_(painter), fonts_(fonts), scale_(scale * zoom), shaped_(!MeetsPixels(painter, scale)) {
  painter_.save();
  if (!shaped_) {
    // From here on the painter's unit is the device pixel, and its origin is on a whole one.
    const QPointF corner = painter_.deviceTransform().map(QPointF());
    const QPoint origin(static_cast<int>(std::lround(corner.x())), static_cast<int>(std::lround(corner.y())));
    painter_.translate(QPointF(origin - corner) / scale);
    painter_.scale(1 / scale, 1 / scale);
    target_ = PixelTarget::Of(painter_, origin);
  } else {
    painter_.scale(1 / scale, 1 / scale);
  }
  clips_.push_back(painter_.hasClipping() ? FromQRect(painter_.clipBoundingRect().toAlignedRect()) : kEverywhere);
}

QtCanvas::~QtCanvas() {
  while (clips_.size() > 1) PopClip();
  painter_.restore();
}

void QtCanvas::PushClip(const sheet::Rect& rect) {
  clips_.push_back(clips_.back().Intersected(rect));
  painter_.save();
  painter_.setClipRect(ToQRect(rect), Qt::IntersectClip);
}

void QtCanvas::PopClip() {
  if (clips_.size() < 2) return;
  clips_.pop_back();
  painter_.restore();
}

QColor QtCanvas::ColourOf(platform::Colour colour) const {
  return dim_toward_ ? Dimmed(ToQColor(colour), ToQColor(*dim_toward_)) : ToQColor(colour);
}

void QtCanvas::FillRects(platform::Colour colour, std::span<const sheet::Rect> rects) {
  const QColor brush = ColourOf(colour);
  for (const sheet::Rect& rect : rects) {
    if (!rect.IsEmpty()) painter_.fillRect(ToQRect(rect), brush);
  }
}

void QtCanvas::DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const sheet::TextItem> items) {
  GlyphFont& glyph_font = fonts_.Find(font, scale_);
  const QRgb rgb = ColourOf(colour).rgb();
  for (const sheet::TextItem& item : items) {
    if (!item.text.empty() && clips_.back().Intersects(item.rect)) DrawLine(glyph_font, rgb, item);
  }
}

// Texts may extend beyond the height of their rectangle unless they are clipped, but never beyond its width.
sheet::Rect QtCanvas::ClipOf(const sheet::TextItem& item) const {
  const sheet::Rect& clip = clips_.back();
  if (item.clip) return clip.Intersected(item.rect);
  return clip.Intersected({item.rect.x, clip.y, item.rect.width, clip.height});
}

void QtCanvas::DrawLine(GlyphFont& font, QRgb colour, const sheet::TextItem& item) {
  const int whole = shaped_ ? -1 : font.Lay(item.text, glyphs_);
  if (whole < 0) {
    DrawShaped(font, colour, item);
    return;
  }
  const bool shorten = whole > item.rect.width && item.overflow == sheet::TextOverflow::kEllipsis;
  const int width = shorten ? ShortenToFit(font, whole, item.rect.width) : whole;
  const Line line{AlignedX(item, width), Baseline(item, font), ClipOf(item)};
  if (target_) {
    DrawGlyphs(*target_, font, colour, line);
  } else {
    DrawGlyphImage(font, colour, line, width);
  }
}

// Drops glyphs from the end until the rest and an ellipsis fit; returns the new width.
int QtCanvas::ShortenToFit(GlyphFont& font, int width, int most) {
  const Glyph* ellipsis = font.Find(kEllipsis);
  if (ellipsis == nullptr) return width;
  while (!glyphs_.empty() && width + ellipsis->advance > most) {
    width -= glyphs_.back()->advance;
    glyphs_.pop_back();
  }
  glyphs_.push_back(ellipsis);
  return width + ellipsis->advance;
}

void QtCanvas::DrawGlyphs(const PixelTarget& target, const GlyphFont& font, QRgb colour, const Line& line) {
  int x = line.x;
  for (const Glyph* glyph : glyphs_) {
    if (x >= line.clip.right()) break;
    if (glyph->width > 0) target.BlendGlyph(font, *glyph, x, line.baseline, colour, line.clip);
    x += glyph->advance;
  }
}

// For devices whose pixels are out of reach: draws the line as an image.
void QtCanvas::DrawGlyphImage(const GlyphFont& font, QRgb colour, const Line& line, int width) {
  constexpr int kMargin = 4;
  const sheet::Rect ink{line.x - kMargin, line.baseline - font.ascent() - kMargin, width + 2 * kMargin,
                        font.line_height() + 2 * kMargin};
  const sheet::Rect box = ink.Intersected(line.clip);
  if (box.IsEmpty()) return;
  QImage image(box.width, box.height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  DrawGlyphs(PixelTarget::Of(image, QPoint(-box.x, -box.y)), font, colour, line);
  painter_.drawImage(QPoint(box.x, box.y), image);
}

// The toolkit shapes and draws texts whose characters depend on their neighbours, and all texts on printers and rotated
// painters.
void QtCanvas::DrawShaped(const GlyphFont& font, QRgb colour, const sheet::TextItem& item) {
  const QFontMetrics metrics(font.qfont());
  QString text = ToQString(item.text);
  int width = metrics.horizontalAdvance(text);
  if (width > item.rect.width && item.overflow == sheet::TextOverflow::kEllipsis) {
    text = metrics.elidedText(text, Qt::ElideRight, item.rect.width);
    width = metrics.horizontalAdvance(text);
  }
  painter_.save();
  // Do not clip a text that fits, so that a printer's rounding cannot shave off a digit.
  if (item.clip || width > item.rect.width) painter_.setClipRect(ToQRect(ClipOf(item)), Qt::IntersectClip);
  painter_.setFont(font.qfont());
  painter_.setPen(QColor(colour));
  painter_.drawText(AlignedX(item, width), Baseline(item, font), text);
  painter_.restore();
}

void QtCanvas::DrawPictures(std::span<const sheet::PictureItem> items) {
  const double opacity = painter_.opacity();
  if (dim_toward_) painter_.setOpacity(opacity / 2);
  for (const sheet::PictureItem& item : items) {
    if (item.picture == nullptr || item.rect.IsEmpty() || !clips_.back().Intersects(item.rect)) continue;
    const QRect rect = ToQRect(item.rect);
    if (item.tile) {
      const QSize size(std::max(1, static_cast<int>(std::lround(item.picture->WidthPx() * scale_))),
                       std::max(1, static_cast<int>(std::lround(item.picture->HeightPx() * scale_))));
      painter_.drawTiledPixmap(rect, QPixmap::fromImage(ImageOf(*item.picture, size)));
    } else if (const QImage image = ImageOf(*item.picture, rect.size()); !image.isNull()) {
      painter_.drawImage(rect.topLeft(), image);
    }
  }
  painter_.setOpacity(opacity);
}

int QtCanvas::TextWidth(const platform::Font& font, std::string_view line) {
  GlyphFont& glyph_font = fonts_.Find(font, scale_);
  return shaped_ ? QFontMetrics(glyph_font.qfont()).horizontalAdvance(ToQString(line)) : glyph_font.Width(line);
}

int QtCanvas::LineHeight(const platform::Font& font) { return fonts_.Find(font, scale_).line_height(); }

}  // namespace stockbook::qt
