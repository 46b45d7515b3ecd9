// SPDX-License-Identifier: MIT
#include "qt/header_band.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "qt/sheet/text.h"
#include "qt/sheet/tool_tip.h"
#include "stockbook/qt/colour.h"
#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

constexpr int kMargin = 8;
constexpr int kPicturePx = 20;
constexpr int kLeastHeight = 32;
constexpr double kCaptionSize = 1.1;  // relative to the widget's font
constexpr double kDimmed = 0.5;       // opacity of picture and caption while disabled

// A text colour that is readable on the background, which a host may set to anything.
QColor TextOn(const QColor& back) { return IsDark(back) ? QColor(0xF2, 0xF4, 0xF6) : QColor(0x1F, 0x23, 0x28); }

void DrawPicture(QPainter& painter, const platform::Picture& picture, const QRect& rect) {
  const double scale = painter.deviceTransform().m11();
  const QImage image = ImageOf(picture, (QSizeF(rect.size()) * scale).toSize());
  if (!image.isNull()) painter.drawImage(rect, image);
}

}  // namespace

HeaderBand::HeaderBand(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void HeaderBand::Show(const control::Container& header, platform::PictureRef mark) {
  header_ = header;
  mark_ = std::move(mark);
  // Every call is announced.
  const QString name = ToQString(header_.caption).trimmed();
  if (accessibleName() != name) setAccessibleName(name);
  UpdateToolTip();
  updateGeometry();
  update();
}

QFont HeaderBand::CaptionFont() const {
  QFont caption_font = font();
  if (caption_font.pointSizeF() > 0) caption_font.setPointSizeF(caption_font.pointSizeF() * kCaptionSize);
  caption_font.setBold(true);
  return caption_font;
}

QSize HeaderBand::sizeHint() const {
  return {0, std::max(kLeastHeight, QFontMetrics(CaptionFont()).height() + kMargin)};
}

QRect HeaderBand::CaptionRect() const {
  const int left = header_.picture != nullptr ? kMargin + kPicturePx + kMargin : kMargin;
  const int right = mark_ != nullptr ? mark_->WidthPx() + kMargin : kMargin;
  return Placed(rect().adjusted(left, 0, -right, 0));
}

// The band belongs to the window, so it is mirrored with it.
QRect HeaderBand::Placed(const QRect& place) const { return QStyle::visualRect(layoutDirection(), rect(), place); }

void HeaderBand::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QColor back = ToQColor(header_.back_color);
  painter.fillRect(rect(), back);
  if (!isEnabled()) painter.setOpacity(kDimmed);
  if (header_.picture != nullptr) {
    DrawPicture(painter, *header_.picture, Placed({kMargin, (height() - kPicturePx) / 2, kPicturePx, kPicturePx}));
  }
  if (mark_ != nullptr)
    DrawPicture(painter, *mark_, Placed({width() - mark_->WidthPx(), 0, mark_->WidthPx(), mark_->HeightPx()}));
  painter.setFont(CaptionFont());
  painter.setPen(TextOn(back));
  const QRect place = CaptionRect();
  const QString caption =
      painter.fontMetrics().elidedText(ToQString(header_.caption).trimmed(), Qt::ElideRight, place.width());
  const Qt::Alignment side = layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
  painter.setLayoutDirection(Qt::LeftToRight);
  painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, caption);
}

void HeaderBand::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  UpdateToolTip();
}

void HeaderBand::UpdateToolTip() {
  const QString caption = ToQString(header_.caption).trimmed();
  const bool cut_off = QFontMetrics(CaptionFont()).horizontalAdvance(caption) > CaptionRect().width();
  setToolTip(cut_off ? PlainToolTip(caption) : QString());
  // A tooltip is read aloud as a description, with its markup.
  const QString description = cut_off ? caption : QString();
  if (accessibleDescription() != description) setAccessibleDescription(description);
}

}  // namespace stockbook::qt
