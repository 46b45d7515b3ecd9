// SPDX-License-Identifier: MIT
// The comparison misses no difference that a person would see.
#include "pictures/picture_comparison.h"

#include <QPainter>
#include <algorithm>
#include <random>

#include "pictures/picture.h"
#include "support/sample_ledger.h"

namespace stockbook::pictures {
namespace {

using platform::GridColour;

class Comparison : public PictureTest {
 protected:
  void SetUp() override {
    PictureTest::SetUp();
    if (IsSkipped()) return;
    FillLedger();
    reference_ = Seen();
  }
  QImage Shifted(int dx, int dy) const {
    QImage image = reference_;
    QPainter(&image).drawImage(dx, dy, reference_);
    return image;
  }
  Difference DifferenceOf(const QImage& image) const { return Compare(reference_, image); }

  QImage reference_;
};

TEST_F(Comparison, APictureIsLikeItself) {
  EXPECT_EQ(DifferenceOf(reference_).unlike_pixels, 0);
  EXPECT_TRUE(DifferenceOf(Seen()).IsSmall());
}

TEST_F(Comparison, APictureShiftedByOnePixelIsUnlike) {
  EXPECT_FALSE(DifferenceOf(Shifted(1, 0)).IsSmall());
  EXPECT_FALSE(DifferenceOf(Shifted(0, 1)).IsSmall());
}

TEST_F(Comparison, OneGridLineShiftedByOnePixelIsUnlike) {
  sheet_.SetColWidth(testing::kLedgerExplain, sheet_.ColWidth(testing::kLedgerExplain) + 15);
  sheet_.SetColWidth(testing::kLedgerPrice, sheet_.ColWidth(testing::kLedgerPrice) - 15);
  EXPECT_FALSE(DifferenceOf(Seen()).IsSmall());
  // A single faint line of a small cell, and no other change.
  QImage image = reference_;
  const sheet::Rect cell = sheet_.view().geometry().CellRect(sheet_.RowOfRecord(0), testing::kLedgerRevQty);
  const QRect line(cell.x, cell.bottom() - 1, 20, 1);
  const QRect above = line.translated(0, -1);
  QPainter painter(&image);
  painter.drawImage(line.topLeft(), reference_, above);
  painter.drawImage(above.topLeft(), reference_, line);
  painter.end();
  EXPECT_FALSE(DifferenceOf(image).IsSmall());
}

TEST_F(Comparison, OneTextShiftedByOnePixelIsUnlike) {
  QImage image = reference_;
  const sheet::Rect cell = sheet_.view().geometry().CellRect(sheet_.RowOfRecord(0), testing::kLedgerRevQty);
  const QRect inside(cell.x + 1, cell.y + 1, cell.width - 3, cell.height - 3);
  QPainter(&image).drawImage(inside.topLeft() + QPoint(0, 1), reference_, inside);
  EXPECT_FALSE(DifferenceOf(image).IsSmall());
}

TEST_F(Comparison, EveryColourThatIsOffByAFewStepsIsUnlike) {
  for (const GridColour which : {GridColour::kBackColor, GridColour::kBackColorFixed, GridColour::kForeColor,
                                 GridColour::kForeColorFixed, GridColour::kGridColor, GridColour::kGridColorFixed}) {
    const platform::Colour right = sheet_.ColourOf(which);
    sheet_.SetColour(which, right ^ 0x00000402);
    EXPECT_FALSE(DifferenceOf(Seen()).IsSmall()) << static_cast<int>(which);
    sheet_.SetColour(which, right);
  }
  EXPECT_TRUE(DifferenceOf(Seen()).IsSmall());
}

TEST_F(Comparison, AnotherDigitIsUnlike) {
  sheet_.SetTextMatrix(sheet_.RowOfRecord(0), testing::kLedgerRevQty, "1");
  const QImage one = Seen();
  sheet_.SetTextMatrix(sheet_.RowOfRecord(0), testing::kLedgerRevQty, "7");
  EXPECT_FALSE(Compare(one, Seen()).IsSmall());
}

TEST_F(Comparison, AnotherSizeIsUnlike) { EXPECT_FALSE(DifferenceOf(reference_.copy(0, 0, 660, 299)).IsSmall()); }

// Fonts antialiased slightly differently: every pixel on the edge of a glyph is off by up to an eighth of its contrast.
TEST_F(Comparison, ALittleSmoothingIsAlike) {
  QImage image = reference_;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> off(-0.125, 0.125);
  int changed = 0;
  for (int y = 1; y + 1 < image.height(); ++y) {
    for (int x = 1; x + 1 < image.width(); ++x) {
      const QRgb was = reference_.pixel(x, y);
      const int around[] = {qGreen(reference_.pixel(x - 1, y)), qGreen(reference_.pixel(x + 1, y)),
                            qGreen(reference_.pixel(x, y - 1)), qGreen(reference_.pixel(x, y + 1)), qGreen(was)};
      const auto [darkest, lightest] = std::minmax_element(std::begin(around), std::end(around));
      const bool text = std::abs(qRed(was) - qBlue(was)) < 24 && qGreen(was) >= 80 && qGreen(was) <= 220;
      if (!text || *darkest > 110) continue;
      const int change = static_cast<int>((*lightest - *darkest) * off(random));
      image.setPixel(x, y, qRgb(qRed(was) + change, qGreen(was) + change, qBlue(was) + change));
      if (change != 0) ++changed;
    }
  }
  EXPECT_GT(changed, 1000);
  const Difference difference = DifferenceOf(image);
  EXPECT_TRUE(difference.IsSmall()) << difference.unlike_pixels << " " << difference.colours;
}

}  // namespace
}  // namespace stockbook::pictures
