// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <cstdlib>

#include "stockbook/command/gui_session.h"
#include "stockbook/window/window_colours.h"

namespace stockbook::app {
namespace {

constexpr int kBoxSide = 16;

// A box that is not ticked, drawn by the style on the window's colour.
QImage UntickedBox(const QStyle& style, const QPalette& palette, QStyle::PrimitiveElement element) {
  QStyleOptionButton option;
  option.rect = QRect(0, 0, kBoxSide, kBoxSide);
  option.palette = palette;
  option.state = QStyle::State_Enabled | QStyle::State_Off;
  QImage image(kBoxSide, kBoxSide, QImage::Format_RGB32);
  image.fill(palette.color(QPalette::Window));
  QPainter painter(&image);
  style.drawPrimitive(element, &option, &painter);
  return image;
}

class Boxes : public ::testing::Test {
 protected:
  GuiSession session_{GuiNeed::kPicture};
  WindowStyle style_;
  QProxyStyle usual_;
};

TEST_F(Boxes, ThatAreNotTickedCanBeSeenOnADarkDesktop) {
  const QPalette dark = DarkPalette();
  const int window = qGray(dark.color(QPalette::Window).rgb());
  for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorItemViewItemCheck}) {
    const QImage box = UntickedBox(style_, dark, element);
    for (const QPoint edge : {QPoint(kBoxSide / 2, 0), QPoint(0, kBoxSide / 2), QPoint(kBoxSide - 1, kBoxSide / 2)})
      EXPECT_GT(std::abs(qGray(box.pixel(edge)) - window), 60) << edge.x() << ' ' << edge.y();
  }
}

TEST_F(Boxes, LookAsUsualOnALightDesktop) {
  const QPalette light(QColor(0xEF, 0xEF, 0xEF), QColor(0xEF, 0xEF, 0xEF));
  EXPECT_EQ(UntickedBox(style_, light, QStyle::PE_IndicatorCheckBox),
            UntickedBox(usual_, light, QStyle::PE_IndicatorCheckBox));
}

}  // namespace
}  // namespace stockbook::app
