// SPDX-License-Identifier: MIT
#include "stockbook/qt/stockbook_widget.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QBackingStore>
#include <QMouseEvent>
#include <QPaintDevice>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <string>
#include <vector>

#include "qt/application.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/fake_connection.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::FakeConnection;
using testing::JournalLine;

constexpr int kJournalLines = 200;
constexpr int kHeaderRow = 0;
constexpr int kFirstNode = 2;

std::vector<JournalLine> ManyLines() {
  std::vector<JournalLine> lines;
  for (int index = 0; index < kJournalLines; ++index) {
    JournalLine line;
    line.period = index < kJournalLines / 2 ? "2004-03" : "2004-04";
    line.bill_no = "2004-03-05 入库单 " + std::to_string(1000 + index);
    line.quantity = index;
    line.amount = std::to_string(index * 3);
    line.rec_id = index + 1;
    lines.push_back(line);
  }
  return lines;
}

// A widget in a window, with a journal of 200 lines to load.
class Widget : public WithApplication {
 protected:
  Widget() : connection_(std::make_shared<FakeConnection>()), widget_(std::make_unique<StockbookWidget>()) {
    AnswerJournal(*connection_, ManyLines());
    widget_->resize(900, 400);
    widget_->control().SetConn(connection_);
  }

  void ShowLoaded() {
    widget_->show();
    ASSERT_TRUE(widget_->Load(7, 0));
    QApplication::processEvents();
  }

  sheet::GridSheet& sheet() { return widget_->sheet(); }
  QScrollBar* Bar() {
    return qobject_cast<QAbstractScrollArea*>(widget_->viewport()->parentWidget())->verticalScrollBar();
  }

  // The pixels in the window, not the result of repainting it.
  QImage Window() {
    const auto* pixels = dynamic_cast<QImage*>(widget_->backingStore()->paintDevice());
    if (pixels == nullptr) return {};
    const QRect place(widget_->viewport()->mapTo(widget_.get(), QPoint()), widget_->viewport()->size());
    return pixels->copy(place).convertToFormat(QImage::Format_RGB32);
  }
  QImage PaintedAnew() {
    QImage image(widget_->viewport()->size(), QImage::Format_RGB32);
    widget_->viewport()->render(&image);
    return image;
  }

  QPoint CenterOf(int row, const char* key) {
    const sheet::Rect rect = sheet().view().geometry().VisibleCellRect(row, sheet().ColIndex(key));
    return {rect.x + rect.width / 2, rect.y + rect.height / 2};
  }
  void Send(QEvent::Type type, QPoint at, Qt::MouseButton button) {
    const bool held = type == QEvent::MouseButtonPress || type == QEvent::MouseMove;
    QMouseEvent event(type, at, widget_->viewport()->mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button,
                      held ? button : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget_->viewport(), &event);
  }
  void Click(QPoint at) {
    Send(QEvent::MouseButtonPress, at, Qt::LeftButton);
    Send(QEvent::MouseButtonRelease, at, Qt::LeftButton);
  }
  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(widget_->focusProxy(), &event);
  }
  void Turn(QPoint pixels, QPoint angle) {
    const QPointF at = widget_->viewport()->rect().center();
    QWheelEvent event(at, widget_->viewport()->mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget_->viewport(), &event);
  }
  int64_t ScrolledTo() { return sheet().view().geometry().scroll().y; }

  std::shared_ptr<FakeConnection> connection_;
  std::unique_ptr<StockbookWidget> widget_;
};

TEST_F(Widget, ShowsTheJournalThatItLoads) {
  widget_->show();
  QApplication::processEvents();
  const QImage empty = Window();
  ShowLoaded();
  const QImage loaded = Window();
  EXPECT_NE(loaded, empty);
  EXPECT_EQ(loaded, PaintedAnew());
  EXPECT_EQ(sheet().Rows(), 1 + 1 + kJournalLines + 4);
  EXPECT_EQ(Bar()->maximum(), sheet().view().geometry().max_scroll().y);
  EXPECT_EQ(widget_->control().Caption(), "商品:六角螺栓[1001]{M8\\GB5783} 单位:箱 [全部仓库]");
}

TEST_F(Widget, RaisesTheEventsOfALoadInTheirOrder) {
  std::vector<std::string> diary;
  QObject::connect(widget_.get(), &StockbookWidget::Process, [&](int at) {
    if (diary.empty() || diary.back() != "Process") diary.emplace_back("Process");
    if (at == -1) diary.back() = "Process -1";
  });
  QObject::connect(widget_.get(), &StockbookWidget::AfterLoaded, [&] { diary.emplace_back("AfterLoaded"); });
  QObject::connect(widget_.get(), &StockbookWidget::AfterFormatted, [&] { diary.emplace_back("AfterFormatted"); });
  QObject::connect(widget_.get(), &StockbookWidget::CommandExecute,
                   [&](const QString& name) { diary.push_back("CommandExecute " + name.toStdString()); });
  QObject::connect(widget_.get(), &StockbookWidget::Notify,
                   [&](const QString& text) { diary.push_back(text.left(5).toStdString()); });
  ASSERT_TRUE(widget_->Load(7, 0));
  EXPECT_EQ(diary, (std::vector<std::string>{"CommandExecute Load", "正在读入：", "Process", "AfterFormatted",
                                             "Process", "AfterLoaded", "已读入：商", "Process -1"}));
}

TEST_F(Widget, LetsAHostCancelTheLoad) {
  QObject::connect(widget_.get(), &StockbookWidget::CommandExecute,
                   [](const QString&, const BooleanReference& cancel) { cancel.SetValue(true); });
  EXPECT_FALSE(widget_->Load(7, 0));
  EXPECT_EQ(sheet().Rows(), 1);
}

TEST_F(Widget, SaysWhyItCannotLoadWithoutAConnection) {
  widget_->control().SetConn(nullptr);
  QStringList messages;
  QObject::connect(widget_.get(), &StockbookWidget::Notify, [&](const QString& text) { messages.append(text); });
  widget_->show();
  EXPECT_FALSE(widget_->Load(7, 0));
  EXPECT_FALSE(messages.isEmpty());
  EXPECT_TRUE(sheet().Redraw());
}

TEST_F(Widget, KeepsTheLastFrameWhileRedrawIsOff) {
  ShowLoaded();
  const QImage before = Window();
  sheet().SetRedraw(false);
  sheet().SetTextMatrix(1, sheet().ColIndex("BillNo"), "changed");
  widget_->viewport()->update();
  QApplication::processEvents();
  EXPECT_EQ(Window(), before);
  sheet().SetRedraw(true);
  QApplication::processEvents();
  EXPECT_NE(Window(), before);
}

TEST_F(Widget, PaintsOnlyTheCellThatChanged) {
  ShowLoaded();
  const QImage before = Window();
  sheet().SetTextMatrix(1, sheet().ColIndex("BillNo"), "changed");
  QApplication::processEvents();
  const QImage after = Window();
  EXPECT_NE(after, before);
  EXPECT_EQ(after, PaintedAnew());
}

TEST_F(Widget, ScrollsByTheRowsThatAWheelTurns) {
  ShowLoaded();
  Turn({}, {0, -120});
  EXPECT_EQ(ScrolledTo(), QApplication::wheelScrollLines() * sheet().view().geometry().CellRect(3, 0).height);
  Turn({}, {0, 240});
  EXPECT_EQ(ScrolledTo(), 0);
}

TEST_F(Widget, LosesNothingOfSlowTurning) {
  ShowLoaded();
  for (int turn = 0; turn < 120; ++turn) Turn({}, {0, -1});
  EXPECT_EQ(ScrolledTo(), QApplication::wheelScrollLines() * sheet().view().geometry().CellRect(3, 0).height);
}

TEST_F(Widget, ScrollsByThePixelsThatATouchpadTells) {
  ShowLoaded();
  Turn({0, -7}, {0, -50});
  EXPECT_EQ(ScrolledTo(), 7);
}

TEST_F(Widget, ShowsAfterEveryScrollWhatPaintingAnewShows) {
  ShowLoaded();
  widget_->resize(500, 300);
  QApplication::processEvents();
  const std::vector<std::pair<int64_t, int64_t>> steps{{0, 66}, {0, -5},     {13, 0},  {40, 29},    {-20, 300},
                                                       {0, 1},  {0, 100000}, {0, -77}, {5, -100000}};
  for (const auto& [dx, dy] : steps) {
    sheet().view().ScrollBy(dx, dy);
    sheet().SetTextMatrix(sheet().TopRow(), sheet().ColIndex("BillNo"), "seen " + std::to_string(dy));
    sheet().view().ScrollBy(0, 3);
    QApplication::processEvents();
    ASSERT_EQ(Window(), PaintedAnew()) << dx << " " << dy;
  }
}

TEST_F(Widget, FollowsItsScrollBars) {
  ShowLoaded();
  Bar()->setValue(100);
  EXPECT_EQ(ScrolledTo(), 100);
  sheet().view().ScrollTo({0, 40});
  EXPECT_EQ(Bar()->value(), 40);
  Bar()->setValue(Bar()->maximum());
  EXPECT_EQ(sheet().BottomRow(), sheet().Rows() - 1);
}

TEST_F(Widget, MovesItsScrollBarsOnceForColumnsThatChangeWhileRedrawIsOff) {
  ShowLoaded();
  QScrollBar& bar = *qobject_cast<QAbstractScrollArea*>(widget_->viewport()->parentWidget())->horizontalScrollBar();
  int times = 0;
  QObject::connect(&bar, &QScrollBar::rangeChanged, &bar, [&] { ++times; });
  const int before = bar.maximum();
  sheet().SetRedraw(false);
  for (int column = sheet().FixedCols(); column < sheet().Cols(); ++column) sheet().SetColWidth(column, 9000 + column);
  EXPECT_EQ(times, 0);
  sheet().SetRedraw(true);
  EXPECT_EQ(times, 1);
  EXPECT_GT(bar.maximum(), before);
}

TEST_F(Widget, MovesTheCurrentCellByTheKeys) {
  ShowLoaded();
  Click(CenterOf(3, "BillNo"));
  EXPECT_EQ(sheet().Row(), 3);
  Press(Qt::Key_Down);
  EXPECT_EQ(sheet().Row(), 4);
  Press(Qt::Key_End, Qt::ControlModifier);
  QApplication::processEvents();
  EXPECT_EQ(sheet().Row(), sheet().Rows() - 1);
  EXPECT_TRUE(sheet().RowIsVisible(sheet().Row()));
  EXPECT_EQ(Window(), PaintedAnew());
}

TEST_F(Widget, ClosesAndOpensAPeriodByAClickOnItsSign) {
  ShowLoaded();
  const sheet::Rect node = sheet().view().geometry().CellRect(kFirstNode, sheet().ColIndex("BillNo"));
  const QPoint sign(node.x + 7, node.y + node.height / 2);
  Click(sign);
  EXPECT_TRUE(sheet().IsCollapsed(kFirstNode));
  EXPECT_EQ(sheet().view().geometry().CellRect(3, sheet().ColIndex("BillNo")).height, 0);
  Click(sign);
  EXPECT_FALSE(sheet().IsCollapsed(kFirstNode));
}

TEST_F(Widget, ResizesAColumnByItsCaptionsEdge) {
  ShowLoaded();
  const int column = sheet().ColIndex("BillNo");
  const int width = sheet().ColWidth(column);
  const sheet::Rect caption = sheet().view().geometry().CellRect(kHeaderRow, column);
  const QPoint edge(caption.right() - 1, caption.y + caption.height / 2);
  Send(QEvent::MouseMove, edge, Qt::NoButton);
  EXPECT_EQ(widget_->viewport()->cursor().shape(), Qt::SplitHCursor);
  Send(QEvent::MouseButtonPress, edge, Qt::LeftButton);
  Send(QEvent::MouseMove, edge + QPoint(40, 0), Qt::LeftButton);
  Send(QEvent::MouseButtonRelease, edge + QPoint(40, 0), Qt::LeftButton);
  EXPECT_EQ(sheet().ColWidth(column), width + 40 * 15);
}

TEST_F(Widget, SelectsTheCellsThatAreDraggedOver) {
  ShowLoaded();
  Send(QEvent::MouseButtonPress, CenterOf(3, "BillNo"), Qt::LeftButton);
  Send(QEvent::MouseMove, CenterOf(6, "Explain"), Qt::LeftButton);
  Send(QEvent::MouseButtonRelease, CenterOf(6, "Explain"), Qt::LeftButton);
  EXPECT_TRUE(widget_->control().IsRangeSelected());
  EXPECT_EQ(sheet().RowSel(), 6);
  QApplication::processEvents();
  EXPECT_EQ(Window(), PaintedAnew());
}

TEST_F(Widget, SurvivesBeingClosedWhileItLoads) {
  widget_->show();
  int told = 0;
  QObject::connect(widget_.get(), &StockbookWidget::Process, [&](int) {
    ++told;
    widget_->close();
  });
  EXPECT_TRUE(widget_->Load(7, 0));
  EXPECT_GT(told, 3);
  QApplication::processEvents();
  EXPECT_FALSE(widget_->isVisible());
  widget_.reset();
}

TEST_F(Widget, LetsAHostRepaintItsProgressWhileItLoads) {
  widget_->show();
  QObject::connect(widget_.get(), &StockbookWidget::Process, [&](int) { widget_->viewport()->repaint(); });
  EXPECT_TRUE(widget_->Load(7, 0));
  QApplication::processEvents();
  EXPECT_EQ(Window(), PaintedAnew());
}

TEST_F(Widget, PaintsSharplyOnAPictureOfAnotherScale) {
  ShowLoaded();
  const QImage before = Window();
  const int64_t scrolled = ScrolledTo();
  QImage large(widget_->viewport()->size() * 2, QImage::Format_RGB32);
  large.setDevicePixelRatio(2);
  widget_->viewport()->render(&large);
  EXPECT_NE(large, PaintedAnew().scaled(large.size()));
  EXPECT_EQ(sheet().view().scale(), 1.0);
  EXPECT_EQ(ScrolledTo(), scrolled);
  EXPECT_EQ(Window(), before);
}

TEST_F(Widget, DrawsTheFramesThatTheControlAsksFor) {
  widget_->control().SetBorderColor(0x000000FF);
  widget_->control().SetBorderWidth(0);
  widget_->show();
  const int top = widget_->viewport()->mapTo(widget_.get(), QPoint()).y();
  QImage image(widget_->size(), QImage::Format_RGB32);
  widget_->render(&image);
  EXPECT_EQ(image.pixel(0, top + 10), 0xFFFF0000) << "without a border of the desk the body draws a line";
  widget_->control().SetBorderWidth(5);
  widget_->control().SetChildSpacing(3);
  const QPoint corner = widget_->viewport()->mapTo(widget_.get(), QPoint());
  EXPECT_EQ(corner.x(), 5);
  EXPECT_EQ(corner.y(), top - 1 + 5 + 3);
}

TEST_F(Widget, TellsWhichSavedPropertyChanged) {
  QStringList keys;
  QObject::connect(widget_.get(), &StockbookWidget::PropertyChanged, [&](const QString& key) { keys.append(key); });
  widget_->control().SetBackColor(0x00FFFF00);
  EXPECT_EQ(keys, QStringList{"BackColor"});
}

TEST_F(Widget, TellsTheSheetWhetherTheKeysComeToIt) {
  ShowLoaded();
  QWidget* view = widget_->focusProxy();
  QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
  QApplication::sendEvent(view, &out);
  EXPECT_FALSE(sheet().view().focused());
  QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
  QApplication::sendEvent(view, &in);
  EXPECT_TRUE(sheet().view().focused());
  QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
  QApplication::sendEvent(view, &menu);
  EXPECT_TRUE(sheet().view().focused());
}

TEST_F(Widget, MakesRoomForALargerFontInItsRowsAtOnce) {
  ShowLoaded();
  const int usual = sheet().RowHeight(sheet().FixedRows());
  QFont larger = widget_->font();
  larger.setPointSizeF(3 * larger.pointSizeF());
  widget_->setFont(larger);
  QApplication::processEvents();
  EXPECT_GT(sheet().RowHeight(sheet().FixedRows()), 2 * usual);
  widget_->setFont(QFont());
  QApplication::processEvents();
  EXPECT_EQ(sheet().RowHeight(sheet().FixedRows()), usual);
}

}  // namespace
}  // namespace stockbook::qt
