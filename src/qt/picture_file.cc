// SPDX-License-Identifier: MIT
#include "qt/picture_file.h"

#include <QBuffer>
#include <QImage>

#include "stockbook/qt/picture.h"

namespace stockbook::qt {
namespace {

constexpr const char* kScaleKey = "Scale";
constexpr int kDrawnScale = 4;
constexpr double kMostScale = 16;

QImage Written(const QtPicture& picture) {
  if (picture.IsPixmap()) return picture.Pixmap().toImage();
  QImage image = picture.At(QSize(picture.WidthPx(), picture.HeightPx()) * kDrawnScale);
  image.setDevicePixelRatio(kDrawnScale);
  return image;
}

}  // namespace

std::optional<QByteArray> ToPng(const platform::Picture& picture) {
  const auto* own = dynamic_cast<const QtPicture*>(&picture);
  if (own == nullptr) return std::nullopt;
  QImage image = Written(*own);
  image.setText(QString::fromLatin1(kScaleKey), QString::number(image.devicePixelRatio()));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) return std::nullopt;
  return bytes;
}

platform::PictureRef FromPng(const QByteArray& bytes) {
  QImage image = QImage::fromData(bytes, "PNG");
  if (image.isNull()) return nullptr;
  const double scale = image.text(QString::fromLatin1(kScaleKey)).toDouble();
  if (scale > 0 && scale <= kMostScale) image.setDevicePixelRatio(scale);
  return MakePicture(QPixmap::fromImage(image));
}

}  // namespace stockbook::qt
