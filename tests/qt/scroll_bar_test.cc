// SPDX-License-Identifier: MIT
#include "qt/sheet/scroll_bar.h"

#include <gtest/gtest.h>

#include <QEvent>

#include "qt/application.h"

namespace stockbook::qt {
namespace {

// Counts how often a widget is painted.
class Painted : public QObject {
 public:
  int times = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++times;
    return false;
  }
};

class QuietBar : public WithApplication {
 protected:
  QuietBar() {
    bar_.setRange(0, 1'000'000);
    bar_.setPageStep(50);
    bar_.resize(20, 300);
    bar_.show();
    bar_.setValue(412'345);
    bar_.installEventFilter(&painted_);
    // Wait until the window has settled.
    do {
      painted_.times = 0;
      QApplication::processEvents();
    } while (painted_.times > 0);
  }
  int PaintedAfter(int value) {
    painted_.times = 0;
    bar_.setValue(value);
    QApplication::processEvents();
    return painted_.times;
  }

  QuietScrollBar bar_{Qt::Vertical};
  Painted painted_;
};

TEST_F(QuietBar, IsNotPaintedForAMoveThatNobodySees) {
  EXPECT_EQ(PaintedAfter(412'348), 0);
  EXPECT_EQ(bar_.value(), 412'348);
}

TEST_F(QuietBar, IsPaintedWhenItsSliderMovesAndWhenManySmallMovesAddUp) {
  EXPECT_GT(PaintedAfter(600'000), 0);
  int painted = 0;
  for (int value = 600'000; value < 610'000; value += 100) painted += PaintedAfter(value);
  EXPECT_GT(painted, 0);
  EXPECT_LT(painted, 20);
}

TEST_F(QuietBar, IsPaintedAtItsEnds) {
  EXPECT_GT(PaintedAfter(1'000'000), 0);
  EXPECT_GT(PaintedAfter(999'999), 0);
  EXPECT_GT(PaintedAfter(0), 0);
  EXPECT_GT(PaintedAfter(1), 0);
}

}  // namespace
}  // namespace stockbook::qt
