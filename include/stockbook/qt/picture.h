// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QSize>
#include <functional>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/platform/picture.h"

namespace stockbook::qt {

// A picture drawn by the toolkit. It is redrawn for every requested size, so it is sharp at every scale; the last few
// sizes are kept.
class STOCKBOOK_API QtPicture : public platform::Picture {
 public:
  // Draws the picture into a rectangle of the size at (0, 0), in device pixels.
  using Painting = std::function<void(QPainter& painter, QSizeF size)>;

  // Of a size in logical pixels; the painting is called once for each size that is kept.
  QtPicture(QSize size, Painting painting) : size_(size), painting_(std::move(painting)) {}

  // Both in logical pixels.
  int WidthPx() const override { return size_.width(); }
  int HeightPx() const override { return size_.height(); }

  // The picture at a size in device pixels, from 1 to 8192 each way, premultiplied. Valid until another size is asked
  // for.
  const QImage& At(QSize device_size) const;
  // The pixmap that the picture was made from, or one of its own size; always the same one.
  QPixmap Pixmap() const;
  // Whether it was made from a pixmap, and so has no more detail than that.
  bool IsPixmap() const { return is_pixmap_; }

 private:
  friend platform::PictureRef MakePicture(const QPixmap& pixmap);

  QSize size_;  // logical pixels
  Painting painting_;
  mutable QPixmap pixmap_;
  bool is_pixmap_ = false;
  mutable std::vector<QImage> drawn_;
};

// Pictures given by a host: a pixmap, whose device pixel ratio is respected, or an icon with a logical size. An empty
// one gives no picture.
STOCKBOOK_API platform::PictureRef MakePicture(const QPixmap& pixmap);
STOCKBOOK_API platform::PictureRef MakePicture(const QIcon& icon, QSize size);

// The picture at a size in device pixels; a null image for pictures of another toolkit.
STOCKBOOK_API QImage ImageOf(const platform::Picture& picture, QSize device_size);

// The picture as a pixmap for the host; a null pixmap for no picture and for pictures of another toolkit.
STOCKBOOK_API QPixmap PixmapOf(const platform::PictureRef& picture);

}  // namespace stockbook::qt
