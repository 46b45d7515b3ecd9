// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

#include "stockbook/control/container.h"
#include "stockbook/platform/picture.h"

namespace stockbook::qt {

// The band above the grid: the picture of the journal type, the caption, and the mark at the right end. A caption that
// is too long ends in an ellipsis, and the tooltip shows all of it. It paints itself; it is a label for screen readers.
class HeaderBand : public QLabel {
  Q_OBJECT

 public:
  explicit HeaderBand(QWidget* parent = nullptr);

  void Show(const control::Container& header, platform::PictureRef mark);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QFont CaptionFont() const;
  QRect CaptionRect() const;
  QRect Placed(const QRect& place) const;
  void UpdateToolTip();

  control::Container header_;
  platform::PictureRef mark_;
};

}  // namespace stockbook::qt
