// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>
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

TEST_F(Boxes, AndHintsInEmptyFieldsCanBeReadOnADarkDesktop) {
  WindowStyle style;
  QPalette desktop = DarkPalette();
  desktop.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
  style.polish(desktop);
  EXPECT_GT(qGray(desktop.color(QPalette::PlaceholderText).rgb()), 180);
  QPalette light(QColor(0xEF, 0xEF, 0xEF));
  const QColor hint = light.color(QPalette::PlaceholderText);
  style.polish(light);
  EXPECT_EQ(light.color(QPalette::PlaceholderText), hint);
}

TEST_F(Boxes, AndTheSignsOfButtonsCanBeSeenOnADarkDesktop) {
  const QPalette dark = DarkPalette();
  QApplication::setPalette(dark);
  for (const auto icon : {QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_TitleBarCloseButton,
                          QStyle::SP_TitleBarNormalButton, QStyle::SP_DockWidgetCloseButton}) {
    const QImage sign = style_.standardIcon(icon).pixmap(kBoxSide).toImage();
    int brightest = 0;
    for (int y = 0; y < sign.height(); ++y)
      for (int x = 0; x < sign.width(); ++x)
        if (qAlpha(sign.pixel(x, y)) > 0)
          brightest = std::max(brightest, qGray(sign.pixel(x, y)) * qAlpha(sign.pixel(x, y)) / 255);
    EXPECT_GT(brightest, qGray(dark.color(QPalette::Window).rgb()) + 80) << icon;
  }
  QApplication::setPalette(QPalette());
}

TEST_F(Boxes, AndTheEdgesOfMenusCanBeSeenOnADarkDesktop) {
  const QPalette dark = DarkPalette();
  const int window = qGray(dark.color(QPalette::Window).rgb());
  for (const auto element : {QStyle::PE_PanelMenu, QStyle::PE_FrameMenu}) {
    const QImage menu = UntickedBox(style_, dark, element);
    for (const QPoint edge : {QPoint(kBoxSide / 2, 0), QPoint(0, kBoxSide / 2), QPoint(kBoxSide - 1, kBoxSide / 2)})
      EXPECT_GT(qGray(menu.pixel(edge)) - window, 30) << edge.x() << ' ' << edge.y();
  }
}

}  // namespace
}  // namespace stockbook::app
