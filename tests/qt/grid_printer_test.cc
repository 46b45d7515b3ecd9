// SPDX-License-Identifier: MIT
#include "stockbook/qt/grid_printer.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QPicture>
#include <string>
#include <vector>

#include "qt/application.h"
#include "sheet/outline/outline.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "support/sample_ledger.h"

namespace stockbook::qt {
namespace {

using testing::SampleLedger;

constexpr int kPeriods = 6;
constexpr int kLines = 40;

// Records the drawn texts in order, and where they begin.
class TextEngine : public QPaintEngine {
 public:
  TextEngine() : QPaintEngine(AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { ++pictures; }
  void drawPath(const QPainterPath&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override { ++pictures; }
  void drawTextItem(const QPointF&, const QTextItem& item) override { text += item.text() + '|'; }
  Type type() const override { return User; }

  QString text;
  int pictures = 0;
};

class TextPaper : public QPaintDevice {
 public:
  QPaintEngine* paintEngine() const override { return &engine; }
  mutable TextEngine engine;

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
      case PdmHeight:
        return 4000;
      case PdmDepth:
        return 32;
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      default:
        return 96;
    }
  }
};

class Printing : public WithApplication {
 protected:
  Printing() { SampleLedger({kPeriods, kLines}).Fill(sheet_); }

  // About A4 with its margins.
  static Paper A4() { return {{0, 0, 720, 1050}, 96}; }
  static Paper Wide() { return {{0, 0, 1100, 700}, 96}; }

  // The texts of each page.
  std::vector<QString> Texts(const Paper& paper) {
    GridPrinter printer(sheet_, paper, "商品:六角螺栓");
    std::vector<QString> pages;
    for (int page = 0; page < printer.PageCount(); ++page) {
      TextPaper device;
      QPainter painter(&device);
      printer.PaintPage(painter, page);
      painter.end();
      pages.push_back(device.engine.text);
    }
    return pages;
  }

  static qsizetype CountOf(const std::vector<QString>& pages, const QString& text) {
    qsizetype count = 0;
    for (const QString& page : pages) count += page.count(text);
    return count;
  }
  static QString Number(int line) { return QStringLiteral("-%1").arg(line, 5, 10, QLatin1Char('0')); }

  sheet::GridSheet sheet_;
};

TEST_F(Printing, PutsEveryRowOnExactlyOnePage) {
  const std::vector<QString> pages = Texts(Wide());
  EXPECT_GT(pages.size(), 5U);
  for (int line = 1; line <= kPeriods * kLines; ++line) ASSERT_EQ(CountOf(pages, Number(line)), 1) << line;
  EXPECT_EQ(CountOf(pages, "合计"), kPeriods);
}

TEST_F(Printing, RepeatsHeadingCaptionsAndPageNumbers) {
  const std::vector<QString> pages = Texts(Wide());
  for (size_t page = 0; page < pages.size(); ++page) {
    EXPECT_TRUE(pages[page].contains("六角螺栓"));
    EXPECT_EQ(pages[page].count("摘要"), 1);
    QString plain = pages[page];
    plain.remove('|');
    EXPECT_TRUE(plain.contains(QStringLiteral("第 %1 页 共 %2 页").arg(page + 1).arg(pages.size())))
        << plain.toStdString();
  }
}

TEST_F(Printing, GivesTextAsTextAndCutsNone) {
  sheet_.SetColWidth(testing::kLedgerExplain, 3900);
  for (const QString& page : Texts(Wide())) {
    EXPECT_FALSE(page.contains(QChar(0x2026))) << page.toStdString();
    EXPECT_FALSE(page.contains("##")) << page.toStdString();
  }
}

TEST_F(Printing, MakesColumnsSmallerBeforeItParts) {
  const GridPrinter wide(sheet_, {{0, 0, 1400, 700}, 96}, "");
  EXPECT_EQ(wide.PageAt(0).columns, (sheet::Span{1, sheet_.Cols()}));
  const GridPrinter fitted(sheet_, {{0, 0, 900, 700}, 96}, "");
  EXPECT_EQ(fitted.PageAt(0).columns, (sheet::Span{1, sheet_.Cols()}));
  EXPECT_LT(fitted.PageCount(), wide.PageCount()) << "smaller rows, fewer pages";
  const GridPrinter narrow(sheet_, {{0, 0, 400, 700}, 96}, "");
  EXPECT_LT(narrow.PageAt(0).columns.last, sheet_.Cols());
  EXPECT_EQ(narrow.PageAt(1).columns.first, narrow.PageAt(0).columns.last);
  EXPECT_EQ(narrow.PageAt(0).rows, narrow.PageAt(1).rows);
}

TEST_F(Printing, PutsEveryCellOnExactlyOnePageWhenColumnsGoOnOnFurtherPages) {
  const std::vector<QString> pages = Texts({{0, 0, 400, 700}, 96});
  for (int line = 1; line <= kPeriods * kLines; ++line) ASSERT_EQ(CountOf(pages, Number(line)), 1) << line;
  EXPECT_EQ(CountOf(pages, "仓库"), CountOf(pages, "摘要")) << "as many pages with the last column as with the first";
}

TEST_F(Printing, RepeatsFrozenColumnsUnlessTheyTakeThePage) {
  sheet_.SetFrozenCols(testing::kLedgerBill);
  const std::vector<QString> pages = Texts({{0, 0, 560, 700}, 96});
  EXPECT_GT(CountOf(pages, Number(7)), 1) << "beside each part of the columns";
  EXPECT_EQ(sheet_.FrozenCols(), testing::kLedgerBill);
  sheet_.SetFrozenCols(testing::kLedgerIssAcc);
  EXPECT_EQ(CountOf(Texts({{0, 0, 400, 700}, 96}), Number(7)), 1);
  EXPECT_EQ(sheet_.FrozenCols(), testing::kLedgerIssAcc);
}

TEST_F(Printing, LeavesOutWhatIsFoldedOrHidden) {
  sheet_.SetIsCollapsed(1, true);
  sheet_.SetColHidden(testing::kLedgerExplain, true);
  const std::vector<QString> pages = Texts(Wide());
  for (int line = 1; line <= kLines; ++line) ASSERT_EQ(CountOf(pages, Number(line)), 0) << line;
  ASSERT_EQ(CountOf(pages, Number(kLines + 1)), 1);
  EXPECT_EQ(CountOf(pages, "摘要"), 0);
  EXPECT_EQ(CountOf(pages, "合计"), kPeriods);
}

TEST_F(Printing, LeavesNoNodeAtTheFootOfAPage) {
  const GridPrinter printer(sheet_, A4(), "");
  for (double height = 300; height < 700; height += 7) {
    const GridPrinter other(sheet_, {{0, 0, 1100, height}, 96}, "");
    for (int page = 0; page < other.PageCount(); ++page) {
      const int last = other.PageAt(page).rows.last - 1;
      EXPECT_FALSE(sheet_.IsSubtotal(last) && sheet_.outline().Governs(last)) << height;
    }
  }
}

TEST_F(Printing, PrintsAnEmptySheetsCaptions) {
  sheet_.SetRows(1);
  const std::vector<QString> pages = Texts(A4());
  ASSERT_EQ(pages.size(), 1U);
  EXPECT_TRUE(pages[0].contains("摘要"));
  sheet_.SetRows(0);
  EXPECT_EQ(Texts(A4()).size(), 1U);
  sheet_.SetCols(0);
  EXPECT_EQ(Texts(A4()).size(), 1U);
}

TEST_F(Printing, EndsOnAnyPaper) {
  for (const Paper& paper : {Paper{{0, 0, 0, 0}, 96}, Paper{{0, 0, 5, 5}, 96}, Paper{{0, 0, 900, 40}, 96}}) {
    GridPrinter printer(sheet_, paper, "");
    EXPECT_GE(printer.PageCount(), 1);
    EXPECT_LE(printer.PageCount(), sheet_.Rows() * sheet_.Cols());
    TextPaper device;
    QPainter painter(&device);
    printer.PaintPage(painter, printer.PageCount() - 1);
    printer.PaintPage(painter, printer.PageCount());
    printer.PaintPage(painter, -1);
  }
}

TEST_F(Printing, BreaksThePagesAtTheSameRowsWhateverThePaintersUnits) {
  const GridPrinter coarse(sheet_, A4(), "");
  const GridPrinter fine(sheet_, {{0, 0, 9000, 13125}, 1200}, "");
  ASSERT_EQ(coarse.PageCount(), fine.PageCount());
  for (int page = 0; page < coarse.PageCount(); ++page) EXPECT_EQ(coarse.PageAt(page).rows, fine.PageAt(page).rows);
}

QImage PageImage(GridPrinter& printer, double turn) {
  QImage image(720, 1050, QImage::Format_RGB32);
  if (turn != 0) image = QImage(1050, 720, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  if (turn != 0) {
    painter.translate(image.width(), 0);
    painter.rotate(turn);
  }
  printer.PaintPage(painter, 1);
  painter.end();
  return image;
}

TEST_F(Printing, PrintsTheSameOntoAPainterThatIsTurned) {
  GridPrinter printer(sheet_, A4(), "商品:六角螺栓");
  const QImage upright = PageImage(printer, 0).scaled(36, 52, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const QImage turned = PageImage(printer, 90).transformed(QTransform().rotate(-90));
  const QImage back = turned.scaled(36, 52, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  int ink = 0;
  for (int y = 0; y < back.height(); ++y) {
    for (int x = 0; x < back.width(); ++x) {
      ASSERT_NEAR(qGray(back.pixel(x, y)), qGray(upright.pixel(x, y)), 20) << x << " " << y;
      ink += qGray(upright.pixel(x, y)) < 240 ? 1 : 0;
    }
  }
  EXPECT_GT(ink, 300);
}

TEST_F(Printing, DoesNotTellWhatIsSelected) {
  GridPrinter printer(sheet_, A4(), "");
  const QImage before = PageImage(printer, 0);
  const sheet::PageCells page = printer.PageAt(1);
  sheet_.SelectRange(page.rows.first + 2, 3, page.rows.first + 6, 5);
  EXPECT_EQ(PageImage(printer, 0), before);
}

TEST_F(Printing, LeavesTheLineAtTheFootToThePagesNumberThoughARowIsHigherThanAPage) {
  const QRect foot(0, 1050 - 24, 720, 24);
  GridPrinter usual(sheet_, A4(), "");
  const QImage before = PageImage(usual, 0).copy(foot);
  sheet_.SetRowHeight(-1, 15 * 2000);
  sheet_.SetRowHeight(0, 15 * 40);
  GridPrinter printer(sheet_, A4(), "");
  ASSERT_GT(printer.PageCount(), 10);
  const QImage after = PageImage(printer, 0);
  EXPECT_EQ(PixelsUnlike(after, {0, foot.y(), 300, foot.height()}, before.pixel(0, 0)), 0);
  EXPECT_GT(PixelsUnlike(after, foot, before.pixel(0, 0)), 20) << "the number";
}

TEST_F(Printing, PrintsADarkSheetInLightColours) {
  GridPrinter printer(sheet_, A4(), "");
  const QImage light = PageImage(printer, 0);
  sheet::Appearance dark = sheet::Appearance::Dark();
  dark.font = sheet_.appearance().font;
  sheet_.SetAppearance(dark);
  EXPECT_EQ(PageImage(printer, 0), light);
  EXPECT_EQ(sheet_.ColourOf(platform::GridColour::kBackColor), dark.Of(platform::GridColour::kBackColor));
}

TEST_F(Printing, PlaysAPictureBack) {
  GridPrinter printer(sheet_, A4(), "商品");
  QPicture picture;
  QPainter recorder(&picture);
  printer.PaintPage(recorder, 0);
  recorder.end();
  QImage image(720, 1050, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.drawPicture(0, 0, picture);
  painter.end();
  EXPECT_GT(PixelsUnlike(image, {0, 0, 720, 30}, 0xFFFFFFFF), 50) << "the heading";
  EXPECT_GT(PixelsUnlike(image, {0, 100, 720, 800}, 0xFFFFFFFF), 10000) << "the rows";
}

// A widget whose window must not change while it is printed.
class PrintingWidget : public WithApplication {};

TEST_F(PrintingWidget, WritesAPdfAndDoesNotNotice) {
  StockbookWidget widget;
  SampleLedger({kPeriods, kLines}).Fill(widget.sheet());
  widget.resize(700, 400);
  widget.show();
  sheet::GridSheet& sheet = widget.sheet();
  sheet.SetFrozenCols(testing::kLedgerBill);
  sheet.view().ScrollTo({60, 777});
  sheet.SelectRange(40, 3, 44, 6);
  QApplication::processEvents();
  const QImage before = widget.grab().toImage();
  const sheet::ScrollPosition scroll = sheet.view().geometry().scroll();
  const sheet::Selection selection = sheet.view().selection();
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    EXPECT_TRUE(widget.Print(writer));
  }
  EXPECT_TRUE(buffer.data().startsWith("%PDF"));
  EXPECT_TRUE(buffer.data().contains("/FontFile")) << "fonts are in it, so texts are";
  EXPECT_GT(buffer.data().count("/Type /Page\n"), 3);
  EXPECT_EQ(sheet.view().geometry().scroll(), scroll);
  EXPECT_EQ(sheet.view().selection(), selection);
  EXPECT_EQ(sheet.view().scale(), 1.0);
  EXPECT_EQ(widget.grab().toImage(), before);
  EXPECT_TRUE(sheet.CheckInvariants());
}

TEST_F(PrintingWidget, ComesBackToWhereAFoldedSheetWasScrolledTo) {
  StockbookWidget widget;
  sheet::GridSheet& sheet = widget.sheet();
  SampleLedger({kPeriods, kLines}).Fill(sheet);
  widget.resize(700, 400);
  widget.show();
  sheet.view().ScrollTo({0, 900});
  sheet.CollapseAll();
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    EXPECT_TRUE(widget.Print(writer));
  }
  sheet.ExpandAll();
  EXPECT_EQ(sheet.view().geometry().scroll().y, 900);
}

TEST_F(PrintingWidget, SaysThatADeviceTakesNothing) {
  StockbookWidget widget;
  QPdfWriter writer(QStringLiteral("/no/such/folder/x.pdf"));
  EXPECT_FALSE(widget.Print(writer));
}

}  // namespace
}  // namespace stockbook::qt
