// SPDX-License-Identifier: MIT
#include "stockbook/window/window_style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStyleOptionSlider>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "stockbook/command/gui_session.h"
#include "stockbook/platform/menu.h"
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

TEST_F(Boxes, AndTheLinesInMenusCanBeSeenOnADarkDesktop) {
  if (style_.baseStyle()->name() != QLatin1String("fusion")) GTEST_SKIP() << "another style draws menus here";
  QStyleOptionMenuItem line;
  line.rect = QRect(0, 0, 10 * kBoxSide, 5);
  line.palette = DarkPalette();
  line.menuItemType = QStyleOptionMenuItem::Separator;
  QImage menu(line.rect.size(), QImage::Format_RGB32);
  const QColor window = line.palette.color(QPalette::Window);
  menu.fill(window);
  QPainter painter(&menu);
  style_.drawControl(QStyle::CE_MenuItem, &line, &painter);
  painter.end();
  EXPECT_GT(qGray(menu.pixel(menu.rect().center())) - qGray(window.rgb()), 40);
}

// The middle of a vertical scroll bar's rows, from above.
std::vector<int> GreysOfBar(const QStyle& style, const QPalette& palette, int position) {
  QStyleOptionSlider bar;
  bar.rect = QRect(0, 0, kBoxSide, 300);
  bar.orientation = Qt::Vertical;
  bar.state = QStyle::State_Enabled | QStyle::State_Active;
  bar.palette = palette;
  bar.minimum = 0;
  bar.maximum = 100;
  bar.pageStep = 50;
  bar.sliderPosition = bar.sliderValue = position;
  bar.subControls = QStyle::SC_All;
  QImage image(bar.rect.size(), QImage::Format_RGB32);
  image.fill(palette.color(QPalette::Window));
  QPainter painter(&image);
  style.drawComplexControl(QStyle::CC_ScrollBar, &bar, &painter);
  painter.end();
  std::vector<int> greys;
  for (int y = 0; y < image.height(); ++y) greys.push_back(qGray(image.pixel(kBoxSide / 2, y)));
  return greys;
}

TEST_F(Boxes, AndTheSliderOfAScrollBarStandsOutWhereItIs) {
  if (style_.baseStyle()->name() != QLatin1String("fusion")) GTEST_SKIP() << "another style draws scroll bars here";
  const QColor pale(0xEF, 0xEF, 0xEF);
  for (const QPalette& palette : {QPalette(pale, pale), DarkPalette()}) {
    const std::vector<int> top = GreysOfBar(style_, palette, 0);
    const std::vector<int> bottom = GreysOfBar(style_, palette, 100);
    EXPECT_GT(std::abs(top[60] - top[240]), 40);
    EXPECT_EQ(bottom[240], top[60]);
    EXPECT_EQ(bottom[60], top[240]);
  }
}

}  // namespace
}  // namespace stockbook::app
