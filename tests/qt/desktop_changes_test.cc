// SPDX-License-Identifier: MIT
// Changes by the desktop or the host while the journal is shown.
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPdfWriter>
#include <QScreen>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <QWindow>

#include "qt/application.h"
#include "qt/header_band.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/grid.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/contents/sheet.h"
#include "stockbook/sheet/view/view.h"
#include "support/sample_ledger.h"

namespace stockbook::qt {
namespace {

using testing::SampleLedger;

// The ledger in a window, and what is visible of it.
class Desktop : public WithApplication {
 protected:
  Desktop() {
    SampleLedger({4, 12}).Fill(sheet());
    // The control's own layout has hidden columns at the same positions.
    for (int column = 0; column < sheet().Cols(); ++column)
      sheet().SetColHidden(column, column == testing::kLedgerPeriod);
    widget_.resize(760, 360);
    widget_.show();
    QApplication::processEvents();
  }
  ~Desktop() override {
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QApplication::setPalette(QPalette());
  }

  sheet::GridSheet& sheet() { return widget_.sheet(); }
  SheetWidget& View() { return *qobject_cast<SheetWidget*>(widget_.viewport()->parentWidget()); }
  HeaderBand& Band() { return *widget_.findChild<HeaderBand*>(); }
  QImage Grid() { return widget_.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QImage Whole() { return widget_.grab().toImage().convertToFormat(QImage::Format_RGB32); }

  void Click(QPoint at) {
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, widget_.viewport()->mapToGlobal(at), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(widget_.viewport(), &event);
    }
  }
  QPoint CenterOf(int row, int column) {
    const sheet::Rect cell = sheet().view().geometry().VisibleCellRect(row, column);
    return QPoint(cell.x + cell.width / 2, cell.y + cell.height / 2) / sheet().view().scale();
  }
  void Turn(QPoint angle) {
    const QPointF at = widget_.viewport()->rect().center();
    QWheelEvent event(at, widget_.viewport()->mapToGlobal(at), {}, angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget_.viewport(), &event);
  }

  // The difference between the darkest and the lightest pixel.
  static int Contrast(const QImage& image) {
    int least = 255;
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        least = std::min(least, qGray(image.pixel(x, y)));
        most = std::max(most, qGray(image.pixel(x, y)));
      }
    }
    return most - least;
  }

  StockbookWidget widget_;
};

TEST_F(Desktop, ShowsADisabledJournalDimmedAndAnEnabledOneAsBefore) {
  const QImage before = Whole();
  widget_.setEnabled(false);
  const QImage dimmed = Grid();
  EXPECT_LT(Contrast(dimmed), Contrast(before) * 6 / 10);
  EXPECT_GT(Contrast(dimmed), Contrast(before) * 3 / 10) << "it can still be read";
  EXPECT_LT(Contrast(Band().grab().toImage()), 200);
  widget_.setEnabled(true);
  // A disabled widget loses the keyboard focus.
  EXPECT_NE(Whole(), before);
  widget_.setFocus();
  EXPECT_EQ(Whole(), before);
}

TEST_F(Desktop, TakesNoInputWhileItIsDisabled) {
  Click(CenterOf(3, testing::kLedgerBill));
  ASSERT_EQ(sheet().Row(), 3);
  const sheet::Selection selection = sheet().view().selection();
  widget_.setEnabled(false);
  Click(CenterOf(5, testing::kLedgerRevQty));
  Turn({0, -240});
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QApplication::sendEvent(&View(), &key);
  EXPECT_EQ(sheet().view().selection(), selection);
  EXPECT_EQ(sheet().view().geometry().scroll(), sheet::ScrollPosition());
  widget_.setEnabled(true);
  Click(CenterOf(5, testing::kLedgerRevQty));
  EXPECT_EQ(sheet().Row(), 5);
}

TEST_F(Desktop, EndsADragWhenItIsDisabled) {
  const auto send = [&](QEvent::Type type, QPoint at) {
    QMouseEvent event(type, at, widget_.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget_.viewport(), &event);
  };
  const int width = sheet().ColWidth(testing::kLedgerBill);
  const sheet::Rect caption = sheet().view().geometry().CellRect(0, testing::kLedgerBill);
  send(QEvent::MouseButtonPress, {caption.right() - 1, 10});
  send(QEvent::MouseMove, {caption.right() + 49, 10});
  EXPECT_GT(sheet().ColWidth(testing::kLedgerBill), width);
  widget_.setEnabled(false);
  EXPECT_EQ(sheet().ColWidth(testing::kLedgerBill), width) << "as if it had not begun";
  widget_.setEnabled(true);
  send(QEvent::MouseMove, {caption.right() + 99, 10});
  EXPECT_EQ(sheet().ColWidth(testing::kLedgerBill), width);
}

TEST_F(Desktop, FollowsTheFontThatTheWidgetGets) {
  const QImage before = Grid();
  const int band = Band().height();
  QFont larger = widget_.font();
  larger.setPointSizeF(16);
  widget_.setFont(larger);
  QApplication::processEvents();
  EXPECT_EQ(sheet().GridFont().size_pt, 16);
  EXPECT_NE(Grid(), before);
  EXPECT_GT(Band().height(), band);
  EXPECT_EQ(Band().height(), Band().sizeHint().height());
  EXPECT_GE(widget_.viewport()->mapTo(&widget_, QPoint()).y(), Band().height()) << "the grid makes room for the band";
  widget_.setFont(QFont());
  QApplication::processEvents();
  EXPECT_EQ(Grid(), before);
}

TEST_F(Desktop, FollowsTheFontOfTheApplication) {
  const QFont before = QApplication::font();
  QFont larger = before;
  larger.setPointSizeF(18);
  QApplication::setFont(larger);
  QApplication::processEvents();
  EXPECT_EQ(sheet().GridFont().size_pt, 18);
  EXPECT_EQ(Band().height(), Band().sizeHint().height());
  QApplication::setFont(before);
  QApplication::processEvents();
  EXPECT_EQ(sheet().GridFont().size_pt, before.pointSizeF());
}

TEST_F(Desktop, LeavesTheFontThatAHostGaveTheGrid) {
  sheet().SetGridFont({"DejaVu Sans", 11});
  QFont larger = widget_.font();
  larger.setPointSizeF(20);
  widget_.setFont(larger);
  EXPECT_EQ(sheet().GridFont().size_pt, 11);
}

TEST_F(Desktop, ShowsNoOldFrameAfterAnotherPaletteOrStyle) {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(0x40, 0x20, 0x20));
  widget_.control().SetBorderWidth(6);
  QApplication::setPalette(palette);
  QApplication::processEvents();
  EXPECT_EQ(Whole().pixel(2, 200), 0xFF402020) << "the desk around the grid";
  for (const QString& style : QStyleFactory::keys()) {
    QApplication::setStyle(style);
    QApplication::processEvents();
    EXPECT_EQ(sheet().view().size().width, widget_.viewport()->width()) << style.toStdString();
    EXPECT_EQ(sheet().view().size().height, widget_.viewport()->height());
    EXPECT_EQ(Band().height(), Band().sizeHint().height());
  }
}

TEST_F(Desktop, KeepsTheLedgerLeftToRightInAWindowThatIsNot) {
  widget_.resize(500, 360);
  QApplication::processEvents();
  sheet().view().ScrollTo({40, 22});
  QApplication::processEvents();
  const QImage before = Grid();
  const QImage band = Band().grab().toImage();
  QApplication::setLayoutDirection(Qt::RightToLeft);
  QApplication::processEvents();
  EXPECT_EQ(Grid(), before);
  EXPECT_NE(Band().grab().toImage(), band) << "the band is the window's and turns round";
  QScrollBar* across = View().horizontalScrollBar();
  QScrollBar* down = View().verticalScrollBar();
  EXPECT_EQ(across->layoutDirection(), Qt::LeftToRight);
  EXPECT_EQ(across->value(), 40);
  EXPECT_EQ(down->value(), 22);
  EXPECT_LT(down->mapTo(&widget_, QPoint()).x(), 50) << "the bar of the rows went to the other side";
  across->setValue(90);
  EXPECT_EQ(sheet().view().geometry().scroll().x, 90);
  sheet().view().ScrollTo({0, 0});
  EXPECT_EQ(across->value(), 0);
  Click(CenterOf(4, testing::kLedgerExplain));
  EXPECT_EQ(sheet().Row(), 4);
  EXPECT_EQ(sheet().Col(), testing::kLedgerExplain);
}

TEST_F(Desktop, PaintsTheSameOntoAPainterThatIsTurned) {
  const QImage upright = Grid();
  QImage turned(upright.height(), upright.width(), QImage::Format_RGB32);
  turned.fill(Qt::white);
  QPainter painter(&turned);
  painter.translate(turned.width(), 0);
  painter.rotate(90);
  widget_.viewport()->render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
  painter.end();
  const QImage back = turned.transformed(QTransform().rotate(-90));
  ASSERT_EQ(back.size(), upright.size());
  // The frame of the current cell and the backgrounds of a caption and a node: their positions to the pixel.
  for (const QPoint& at : {QPoint(150, 40), QPoint(5, 5), QPoint(600, 50), QPoint(400, 80)}) {
    EXPECT_EQ(back.pixel(at), upright.pixel(at)) << at.x() << " " << at.y();
  }
  const QImage small = back.scaled(40, 20, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  const QImage wanted = upright.scaled(40, 20, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  for (int y = 0; y < small.height(); ++y) {
    for (int x = 0; x < small.width(); ++x) {
      ASSERT_NEAR(qGray(small.pixel(x, y)), qGray(wanted.pixel(x, y)), 45) << x << " " << y;
    }
  }
  EXPECT_EQ(Grid(), upright) << "the window does not notice";
}

TEST_F(Desktop, GivesTextAsTextToAPdfOfTheWidget) {
  const QTemporaryDir folder;
  const auto size_of = [&](const char* name, bool texts) {
    QPdfWriter writer(folder.filePath(name));
    writer.setResolution(96);
    sheet().SetColHidden(testing::kLedgerBill, !texts);
    QPainter painter(&writer);
    widget_.render(&painter);
    painter.end();
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_TRUE(bytes.contains("/FontFile")) << "fonts are in it, so texts are";
    return bytes.size();
  };
  EXPECT_GT(size_of("with.pdf", true), 2000);
}

// Two screens, the second of twice the resolution.
class TwoScreens : public WithApplication {
 protected:
  static void SetUpTestSuite() {
    static QTemporaryDir folder;
    QFile file(folder.filePath("screens.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const char* screen = R"({"name": "%1", "x": %2, "y": 0, "width": 1000, "height": 800, "logicalDpi": 96,
        "logicalBaseDpi": 96, "dpr": %3})";
    const QString text =
        QStringLiteral("{\"screens\": [%1, %2]}")
            .arg(QString(screen).arg("plain").arg(0).arg(1), QString(screen).arg("fine").arg(1000).arg(2));
    file.write(text.toUtf8());
    file.close();
    StartOn("offscreen:configfile=" + file.fileName().toUtf8());
  }
};

TEST_F(TwoScreens, LaysTheSheetOutAnewOnAScreenOfAnotherResolution) {
  ASSERT_EQ(QGuiApplication::screens().size(), 2);
  StockbookWidget widget;
  SampleLedger({4, 12}).Fill(widget.sheet());
  widget.resize(760, 360);
  widget.show();
  widget.sheet().view().ScrollTo({0, 100});
  QApplication::processEvents();
  ASSERT_EQ(widget.sheet().view().scale(), 1.0);
  const int top = widget.sheet().TopRow();
  const auto move_to = [&](const char* name) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    QScreen* screen = screens[0]->name() == QLatin1String(name) ? screens[0] : screens[1];
    widget.windowHandle()->setScreen(screen);
    widget.move(screen->geometry().topLeft() + QPoint(10, 10));
    QApplication::processEvents();
  };
  move_to("fine");
  EXPECT_EQ(widget.sheet().view().scale(), 2.0);
  EXPECT_EQ(widget.sheet().view().size().width, 2 * widget.viewport()->width());
  EXPECT_EQ(widget.sheet().TopRow(), top) << "the same rows are in view";
  const QImage fine = widget.viewport()->grab().toImage();
  EXPECT_EQ(fine.size(), 2 * widget.viewport()->size());
  move_to("plain");
  EXPECT_EQ(widget.sheet().view().scale(), 1.0);
  EXPECT_EQ(widget.sheet().view().geometry().scroll().y, 100);
}

}  // namespace
}  // namespace stockbook::qt
