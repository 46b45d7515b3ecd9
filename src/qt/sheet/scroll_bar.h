// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QScrollBar>

namespace stockbook::qt {

// The style's scroll bar, repainted only when its slider moves visibly: scrolling by a few rows of a million moves it
// by less than a pixel, and painting it can cost more than painting the rows.
class QuietScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit QuietScrollBar(Qt::Orientation orientation, QWidget* parent = nullptr);

 protected:
  void sliderChange(SliderChange change) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QRect SliderRect() const;

  QRect painted_;  // the slider's place when last painted
};

}  // namespace stockbook::qt
