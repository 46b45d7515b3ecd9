// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSize>
#include <functional>
#include <vector>

#include "platform/picture.h"

namespace stockbook::qt {

// A picture of the toolkit. It draws itself anew for every size it is asked for and keeps the last few, so it is sharp
// at every scale.
class QtPicture : public platform::Picture {
 public:
  // Draws the picture into the square or rectangle from (0, 0) of the size, in device pixels.
  using Painting = std::function<void(QPainter& painter, QSizeF size)>;

  QtPicture(QSize size, Painting painting) : size_(size), painting_(std::move(painting)) {}

  int WidthPx() const override { return size_.width(); }
  int HeightPx() const override { return size_.height(); }

  // The picture at a size in device pixels, premultiplied.
  const QImage& At(QSize device_size) const;
  // The pixmap that the picture was made of, else one of it at its own size; always the same.
  QPixmap Pixmap() const;
  // Whether it was made of a pixmap, and has no more to show than that.
  bool IsPixmap() const { return is_pixmap_; }

 private:
  friend platform::PictureRef MakePicture(const QPixmap& pixmap);

  QSize size_;  // logical pixels
  Painting painting_;
  mutable QPixmap pixmap_;
  bool is_pixmap_ = false;
  mutable std::vector<QImage> drawn_;
};

// Pictures of a host: a pixmap (its device pixel ratio is heeded), or an icon at a logical size. Empty ones give no
// picture.
platform::PictureRef MakePicture(const QPixmap& pixmap);
platform::PictureRef MakePicture(const QIcon& icon, QSize size);

// The picture at a size in device pixels; a null image for pictures that another toolkit made.
QImage ImageOf(const platform::Picture& picture, QSize device_size);

// The picture as a host's; a null pixmap for none and for pictures that another toolkit made.
QPixmap PixmapOf(const platform::PictureRef& picture);

}  // namespace stockbook::qt
