// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QScrollBar>

namespace stockbook::qt {

// The style's scroll bar, painted again only when its slider is seen to move: a few rows of a million move it by less
// than a pixel, and painting it can cost more than the rows do.
class QuietScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit QuietScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

 protected:
  void sliderChange(SliderChange change) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect SliderRect() const;

  QRect painted_;  // where the slider was when it was painted last
};

}  // namespace stockbook::qt
