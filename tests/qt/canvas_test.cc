// SPDX-License-Identifier: MIT
#include "qt/sheet/canvas.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QPixmap>

#include "qt/application.h"
#include "stockbook/qt/fonts.h"
#include "stockbook/qt/images.h"

namespace stockbook::qt {
namespace {

constexpr QRgb kWhite = 0xFFFFFFFF;

class Canvas : public WithApplication {
 protected:
  static QImage Blank(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
  }

  QImage DrawText(const sheet::TextItem& item, const platform::Font& font = DefaultGridFont()) {
    QImage image = Blank(200, 40);
    QPainter painter(&image);
    QtCanvas(painter, fonts_, 1).DrawTexts(font, 0, {&item, 1});
    return image;
  }

  // The columns of pixels that have ink.
  static std::pair<int, int> InkColumns(const QImage& image) {
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
      if (PixelsUnlike(image, {x, 0, 1, image.height()}, kWhite) == 0) continue;
      first = std::min(first, x);
      last = x;
    }
    return {first, last};
  }

  GlyphFonts fonts_;
};

TEST_F(Canvas, ShowsChineseAsCharactersWhateverTheMainFont) {
  for (const char* family : {"DejaVu Sans", "Arial", "Noto Sans CJK SC", "no such font"}) {
    const platform::Font font{family, 9};
    const QImage stock = DrawText({"库", {0, 0, 40, 40}}, font);
    const QImage issue = DrawText({"出", {0, 0, 40, 40}}, font);
    const QImage missing = DrawText({"\xF3\xB0\x80\x80", {0, 0, 40, 40}}, font);
    EXPECT_GT(PixelsUnlike(stock, stock.rect(), kWhite), 20) << family;
    EXPECT_NE(stock, issue) << family << ": every character looks the same";
    EXPECT_NE(stock, missing) << family << ": a box";
  }
}

TEST_F(Canvas, StandsTextsWhereTheyAreAligned) {
  const auto left = InkColumns(DrawText({"100", {50, 0, 100, 40}, sheet::HorizontalAlign::kLeft}));
  const auto center = InkColumns(DrawText({"100", {50, 0, 100, 40}, sheet::HorizontalAlign::kCenter}));
  const auto right = InkColumns(DrawText({"100", {50, 0, 100, 40}, sheet::HorizontalAlign::kRight}));
  EXPECT_GE(left.first, 50);
  EXPECT_LT(left.first, 53);
  EXPECT_LT(right.second, 150);
  EXPECT_GE(right.second, 147);
  EXPECT_NEAR(center.first + center.second, 200, 3);
}

TEST_F(Canvas, GivesAllDigitsOneWidth) {
  QImage image = Blank(10, 10);
  QPainter painter(&image);
  QtCanvas canvas(painter, fonts_, 1);
  for (const char* digit : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_EQ(canvas.TextWidth(DefaultGridFont(), digit), canvas.TextWidth(DefaultGridFont(), "0")) << digit;
  }
}

TEST_F(Canvas, EndsATextThatIsTooLongInAnEllipsis) {
  const std::string text = "2025-01-16 采购单 CG202501-0009";
  const QImage shortened = DrawText({text, {10, 0, 80, 40}});
  const QImage cut = DrawText({text, {10, 0, 80, 40}, sheet::HorizontalAlign::kLeft, sheet::TextOverflow::kClip});
  const QImage whole = DrawText({text, {10, 0, 190, 40}});
  EXPECT_LT(InkColumns(shortened).second, 90);
  EXPECT_LT(InkColumns(cut).second, 90);
  EXPECT_GT(InkColumns(whole).second, 90);
  EXPECT_NE(shortened, cut);
}

TEST_F(Canvas, ShowsOnlyTheEllipsisWhereNothingElseFits) {
  EXPECT_LT(InkColumns(DrawText({"采购单", {10, 0, 14, 40}})).second, 24);
  EXPECT_EQ(InkColumns(DrawText({"采购单", {10, 0, 0, 40}})).second, -1);
}

TEST_F(Canvas, PaintsNothingOutsideOfItsClips) {
  QImage image = Blank(100, 40);
  QPainter painter(&image);
  QtCanvas canvas(painter, fonts_, 1);
  canvas.PushClip({20, 10, 30, 20});
  canvas.PushClip({0, 0, 40, 40});
  const sheet::Rect all{0, 0, 100, 40};
  const sheet::TextItem text{"采购单采购单采购单", all};
  canvas.FillRects(0x00EEDDCC, {&all, 1});
  canvas.DrawTexts(DefaultGridFont(), 0, {&text, 1});
  EXPECT_EQ(PixelsUnlike(image, {20, 10, 20, 20}, kWhite), 400);
  EXPECT_EQ(PixelsUnlike(image, image.rect(), kWhite), 400);
  canvas.PopClip();
  canvas.FillRects(0x00EEDDCC, {&all, 1});
  EXPECT_EQ(PixelsUnlike(image, image.rect(), kWhite), 600);
}

TEST_F(Canvas, KeepsToTheClipThatThePainterCameWith) {
  QImage image = Blank(100, 40);
  QPainter painter(&image);
  painter.setClipRect(30, 0, 10, 40);
  const sheet::TextItem text{"采购单采购单采购单", {0, 0, 100, 40}};
  QtCanvas(painter, fonts_, 1).DrawTexts(DefaultGridFont(), 0, {&text, 1});
  EXPECT_GT(PixelsUnlike(image, {30, 0, 10, 40}, kWhite), 0);
  EXPECT_EQ(PixelsUnlike(image, {0, 0, 30, 40}, kWhite) + PixelsUnlike(image, {40, 0, 60, 40}, kWhite), 0);
}

TEST_F(Canvas, LooksTheSameWhereThePixelsCannotBeReached) {
  const std::string text = "2025-01-16 采购单 1,234.50";
  const sheet::TextItem item{text, {3, 2, 90, 30}};
  QPixmap pixmap(200, 40);
  pixmap.fill(Qt::white);
  {
    QPainter painter(&pixmap);
    QtCanvas(painter, fonts_, 1).DrawTexts(DefaultGridFont(), 0x00332211, {&item, 1});
  }
  QImage image = Blank(200, 40);
  {
    QPainter painter(&image);
    QtCanvas(painter, fonts_, 1).DrawTexts(DefaultGridFont(), 0x00332211, {&item, 1});
  }
  const QImage other = pixmap.toImage().convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 200; ++x) {
      ASSERT_NEAR(qRed(image.pixel(x, y)), qRed(other.pixel(x, y)), 3) << x << " " << y;
      ASSERT_NEAR(qBlue(image.pixel(x, y)), qBlue(other.pixel(x, y)), 3) << x << " " << y;
    }
  }
}

TEST_F(Canvas, LeavesThePainterAsItFoundIt) {
  QImage image = Blank(100, 40);
  image.setDevicePixelRatio(2);
  QPainter painter(&image);
  painter.translate(3, 5);
  const QTransform before = painter.transform();
  {
    QtCanvas canvas(painter, fonts_, 2);
    canvas.PushClip({0, 0, 10, 10});
  }
  EXPECT_EQ(painter.transform(), before);
  EXPECT_FALSE(painter.hasClipping());
}

TEST_F(Canvas, CountsInDevicePixelsFromThePaintersOrigin) {
  QImage image = Blank(100, 100);
  image.setDevicePixelRatio(2);
  QPainter painter(&image);
  painter.translate(10, 20);
  const sheet::Rect one{0, 0, 1, 1};
  QtCanvas(painter, fonts_, 2).FillRects(0, {&one, 1});
  EXPECT_EQ(PixelsUnlike(image, {20, 40, 1, 1}, kWhite), 1);
  EXPECT_EQ(PixelsUnlike(image, image.rect(), kWhite), 1);
}

TEST_F(Canvas, LeavesTextsThatNeedShapingToTheToolkit) {
  for (const char* text : {"e\u0301te\u0301", "שלום", "نص", "\U0001F600", "กำ"}) {
    const QImage image = DrawText({text, {0, 0, 100, 40}});
    EXPECT_GT(PixelsUnlike(image, image.rect(), kWhite), 5) << text;
    EXPECT_LT(InkColumns(image).second, 100) << text;
  }
}

TEST_F(Canvas, SurvivesTextThatIsNone) {
  const std::string long_text(1 << 20, 'x');
  for (const std::string& text :
       {std::string("\xFF\xFE\x80", 3), std::string("\xE5\xBA", 2), std::string("a\0b", 3), long_text}) {
    const QImage image = DrawText({text, {0, 0, 100, 40}});
    EXPECT_LT(InkColumns(image).second, 100);
  }
}

TEST_F(Canvas, IsAsTallAsItsLinesAtEveryScale) {
  QImage image = Blank(10, 10);
  QPainter painter(&image);
  const int height = QtCanvas(painter, fonts_, 1).LineHeight(DefaultGridFont());
  EXPECT_GT(height, 10);
  EXPECT_NEAR(QtCanvas(painter, fonts_, 2).LineHeight(DefaultGridFont()), 2 * height, 2);
  EXPECT_NEAR(QtCanvas(painter, fonts_, 1.25).LineHeight(DefaultGridFont()), 1.25 * height, 2);
}

TEST_F(Canvas, WritesTextAsTextToPrinters) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&buffer);
    QPainter painter(&pdf);
    const sheet::TextItem text{"采购单 1,234.50", {0, 0, 2000, 400}};
    QtCanvas(painter, fonts_, 8).DrawTexts(DefaultGridFont(), 0, {&text, 1});
  }
  EXPECT_TRUE(bytes.contains("/FontFile"));
}

TEST_F(Canvas, TilesAndScalesPictures) {
  const platform::PictureRef picture = QtImages().Find("Mtr");
  QImage image = Blank(100, 40);
  QPainter painter(&image);
  QtCanvas canvas(painter, fonts_, 1);
  const sheet::PictureItem scaled{picture.get(), {0, 0, 32, 32}, false};
  canvas.DrawPictures({&scaled, 1});
  EXPECT_GT(PixelsUnlike(image, {16, 16, 16, 16}, kWhite), 50);
  EXPECT_EQ(PixelsUnlike(image, {32, 0, 68, 40}, kWhite), 0);
  const sheet::PictureItem tiled{picture.get(), {48, 0, 40, 16}, true};
  canvas.DrawPictures({&tiled, 1});
  EXPECT_EQ(image.copy(48, 0, 16, 16), image.copy(64, 0, 16, 16));
  EXPECT_EQ(PixelsUnlike(image, {88, 0, 12, 40}, kWhite), 0);
}

}  // namespace
}  // namespace stockbook::qt
