// SPDX-License-Identifier: MIT
#include "stockbook/qt/picture.h"

#include <algorithm>
#include <cmath>

namespace stockbook::qt {
namespace {

// How many sizes of one picture are kept: those of the grid, the header and a second screen.
constexpr size_t kMostDrawn = 6;
constexpr int kMostPixels = 8192;

}  // namespace

const QImage& QtPicture::At(QSize device_size) const {
  const QSize size = device_size.expandedTo({1, 1}).boundedTo({kMostPixels, kMostPixels});
  const auto found =
      std::find_if(drawn_.begin(), drawn_.end(), [&](const QImage& image) { return image.size() == size; });
  if (found != drawn_.end()) return *found;
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painting_(painter, QSizeF(size));
  painter.end();
  if (drawn_.size() == kMostDrawn) drawn_.erase(drawn_.begin());
  return drawn_.emplace_back(std::move(image));
}

QPixmap QtPicture::Pixmap() const {
  if (pixmap_.isNull()) pixmap_ = QPixmap::fromImage(At(size_));
  return pixmap_;
}

platform::PictureRef MakePicture(const QPixmap& pixmap) {
  if (pixmap.isNull()) return nullptr;
  const QSizeF size = pixmap.deviceIndependentSize();
  const QSize logical(std::max(1, static_cast<int>(std::lround(size.width()))),
                      std::max(1, static_cast<int>(std::lround(size.height()))));
  auto picture = std::make_shared<QtPicture>(logical, [pixmap](QPainter& painter, QSizeF device_size) {
    const QSize device = device_size.toSize();
    // A painter scales down by skipping pixels; this averages them.
    if (device.width() < pixmap.width() && device.height() < pixmap.height()) {
      painter.drawImage(QRectF(QPointF(), device_size),
                        pixmap.toImage().scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    } else {
      painter.drawPixmap(QRectF(QPointF(), device_size), pixmap, QRectF(pixmap.rect()));
    }
  });
  picture->pixmap_ = pixmap;
  picture->is_pixmap_ = true;
  return picture;
}

platform::PictureRef MakePicture(const QIcon& icon, QSize size) {
  if (icon.isNull() || size.isEmpty()) return nullptr;
  return std::make_shared<QtPicture>(size, [icon](QPainter& painter, QSizeF device_size) {
    icon.paint(&painter, QRectF(QPointF(), device_size).toRect());
  });
}

QImage ImageOf(const platform::Picture& picture, QSize device_size) {
  const auto* own = dynamic_cast<const QtPicture*>(&picture);
  return own == nullptr ? QImage() : own->At(device_size);
}

QPixmap PixmapOf(const platform::PictureRef& picture) {
  const auto* own = dynamic_cast<const QtPicture*>(picture.get());
  return own == nullptr ? QPixmap() : own->Pixmap();
}

}  // namespace stockbook::qt
