// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "qt/application.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/event_recorder.h"
#include "support/journal_rows.h"

namespace stockbook::qt {
namespace {

using testing::AnswerJournal;
using testing::FakeConnection;
using testing::JournalLine;

constexpr int kNestedMs = 60;

enum class Inside { kNothing, kEventLoop };

// A widget with a loaded journal that its host deletes at the most inconvenient moments. The test keeps only a weak
// pointer to the connection, which expires when the last part of the control is freed.
class Deleting : public WithApplication {
 protected:
  Deleting() : widget_(new StockbookWidget) {
    const auto connection = std::make_shared<FakeConnection>();
    AnswerJournal(*connection, {JournalLine{}, JournalLine{}, JournalLine{}});
    connection_ = connection;
    widget_->resize(900, 400);
    widget_->SetConn(connection);
  }
  ~Deleting() override { delete widget_; }

  void ShowLoaded() {
    widget_->show();
    ASSERT_TRUE(widget_->Load(7, 0));
    QApplication::processEvents();
  }

  void Delete() {
    ++deleted_;
    delete widget_;
    if (inside_ == Inside::kNothing) return;
    QEventLoop loop;
    QTimer::singleShot(kNestedMs, &loop, &QEventLoop::quit);
    loop.exec();
  }
  // A slot that deletes the widget.
  auto Deleter() {
    return [this] { Delete(); };
  }
  bool IsFreed() const { return connection_.expired(); }
  void ExpectGone() {
    EXPECT_EQ(deleted_, 1);
    EXPECT_EQ(widget_, nullptr);
    // What had to wait for the calls under way is freed by the first events after them.
    for (int turn = 0; turn < 50 && !IsFreed(); ++turn) QApplication::processEvents();
    EXPECT_TRUE(IsFreed());
    QApplication::processEvents();
  }

  sheet::GridSheet& sheet() { return widget_->sheet(); }
  QPoint CenterOf(int row, const char* key) {
    const sheet::Rect rect = sheet().view().geometry().VisibleCellRect(row, sheet().ColIndex(key));
    return {rect.x + rect.width / 2, rect.y + rect.height / 2};
  }
  void Send(QEvent::Type type, QPoint at, Qt::MouseButton button) {
    if (widget_ == nullptr) return;
    const bool held = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget_->viewport()->mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button,
                      held ? button : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget_->viewport(), &event);
  }
  void Press(int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(widget_->focusProxy(), &event);
  }

  QPointer<StockbookWidget> widget_;
  std::weak_ptr<FakeConnection> connection_;
  int deleted_ = 0;
  Inside inside_ = Inside::kNothing;
};

TEST_F(Deleting, OutsideOfItsCallsFreesEverythingAtOnce) {
  ShowLoaded();
  delete widget_;
  EXPECT_TRUE(IsFreed());
}

TEST_F(Deleting, AfterItsSignalsHaveComeBackFreesEverythingAtOnce) {
  QObject::connect(widget_, &StockbookWidget::CommandExecute, [] {});
  ShowLoaded();
  Press(Qt::Key_Down);
  Send(QEvent::MouseButtonPress, CenterOf(3, "BillNo"), Qt::LeftButton);
  Send(QEvent::MouseButtonRelease, CenterOf(3, "BillNo"), Qt::LeftButton);
  delete widget_;
  EXPECT_TRUE(IsFreed());
}

// Deleting in each of the signals of a load, with and without an event loop inside of the slot.
class DeletingInALoad : public Deleting, public ::testing::WithParamInterface<std::tuple<int, Inside>> {
 protected:
  void ConnectSignal() {
    inside_ = std::get<1>(GetParam());
    StockbookWidget* widget = widget_;
    switch (std::get<0>(GetParam())) {
      case 0:
        QObject::connect(widget, &StockbookWidget::Process, Deleter());
        break;
      case 1:
        QObject::connect(widget, &StockbookWidget::AfterLoaded, Deleter());
        break;
      case 2:
        QObject::connect(widget, &StockbookWidget::AfterFormatted, Deleter());
        break;
      case 3:
        QObject::connect(widget, &StockbookWidget::CommandExecute, Deleter());
        break;
      case 4:
        QObject::connect(widget, &StockbookWidget::Notify, Deleter());
        break;
      default:
        QObject::connect(widget, &StockbookWidget::Process, [this](int indicator) {
          if (indicator == -1) Delete();
        });
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Each, DeletingInALoad,
                         ::testing::Combine(::testing::Range(0, 6),
                                            ::testing::Values(Inside::kNothing, Inside::kEventLoop)));

TEST_P(DeletingInALoad, ThatTheWidgetWasAskedForIsHarmless) {
  widget_->show();
  ConnectSignal();
  widget_->Load(7, 0);
  ExpectGone();
}

TEST_P(DeletingInALoad, ThatTheControlWasAskedForIsHarmless) {
  ConnectSignal();
  widget_->control().Load(7, 0);
  ExpectGone();
}

TEST_P(DeletingInALoad, WithTheWindowAroundItIsHarmless) {
  QPointer<QWidget> window = new QWidget;
  widget_->setParent(window);
  window->show();
  ConnectSignal();
  QObject::connect(widget_, &StockbookWidget::CommandExecute, [&] {
    ++deleted_;
    delete window;
  });
  widget_->disconnect(SIGNAL(Process(int)));
  widget_->Load(7, 0);
  EXPECT_EQ(widget_, nullptr);
  deleted_ = 1;
  ExpectGone();
  delete window;  // where an earlier event took the widget alone
}

TEST_F(Deleting, InAnEventLoopOfTheProgramIsHarmless) {
  widget_->show();
  inside_ = Inside::kEventLoop;
  QObject::connect(widget_, &StockbookWidget::Process, Deleter());
  QTimer::singleShot(0, [this] {
    widget_->Load(7, 0);
    QTimer::singleShot(kNestedMs, qApp, &QApplication::quit);
  });
  QApplication::exec();
  ExpectGone();
}

TEST_F(Deleting, WithoutAnEventLoopAnythingIsFreedWithTheApplication) {
  widget_->show();
  QObject::connect(widget_, &StockbookWidget::Process, Deleter());
  widget_->Load(7, 0);
  EXPECT_FALSE(IsFreed());
  TearDownTestSuite();
  EXPECT_TRUE(IsFreed());
  SetUpTestSuite();
}

TEST_F(Deleting, FromAKeyWithoutAnEventLoopIsFreedWithTheApplication) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::AfterRowChanged, Deleter());
  Press(Qt::Key_Down);
  EXPECT_EQ(widget_, nullptr);
  EXPECT_FALSE(IsFreed());
  TearDownTestSuite();
  EXPECT_TRUE(IsFreed());
  SetUpTestSuite();
}

// Deleting in what the user does, with and without an event loop inside of the slot.
class DeletingByTheUser : public Deleting, public ::testing::WithParamInterface<Inside> {
 protected:
  DeletingByTheUser() { inside_ = GetParam(); }

  void LeftClick(QPoint at) {
    Send(QEvent::MouseButtonPress, at, Qt::LeftButton);
    Send(QEvent::MouseButtonRelease, at, Qt::LeftButton);
  }
};

INSTANTIATE_TEST_SUITE_P(Each, DeletingByTheUser, ::testing::Values(Inside::kNothing, Inside::kEventLoop));

TEST_P(DeletingByTheUser, InAKeyIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::AfterRowChanged, Deleter());
  Press(Qt::Key_Down);
  ExpectGone();
}

TEST_P(DeletingByTheUser, InTheDescriptionOfARowIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::Notify, Deleter());
  Press(Qt::Key_Down);
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhenAButtonIsPressedIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::AfterRowChanged, Deleter());
  LeftClick(CenterOf(4, "BillNo"));
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhenAButtonIsReleasedIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::MouseUp, Deleter());
  LeftClick(CenterOf(4, "BillNo"));
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhenARangeIsSelectedIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::AfterRangeSelected, Deleter());
  const QPoint to = CenterOf(5, "BillNo");
  Send(QEvent::MouseButtonPress, CenterOf(3, "BillNo"), Qt::LeftButton);
  Send(QEvent::MouseMove, to, Qt::LeftButton);
  Send(QEvent::MouseButtonRelease, to, Qt::LeftButton);
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhileTheMouseDragsIsHarmless) {
  ShowLoaded();
  const QPoint to = CenterOf(5, "BillNo");
  Send(QEvent::MouseButtonPress, CenterOf(3, "BillNo"), Qt::LeftButton);
  QObject::connect(widget_, &StockbookWidget::PropertyChanged, Deleter());
  Send(QEvent::MouseMove, to, Qt::LeftButton);
  widget_->SetBackColor(Qt::red);
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhenABillIsAskedForIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::CommandExecute, Deleter());
  const QPoint at = CenterOf(4, "BillNo");
  QCursor::setPos(widget_->viewport()->mapToGlobal(at));
  Send(QEvent::MouseMove, at, Qt::NoButton);
  Send(QEvent::MouseButtonPress, at, Qt::LeftButton);
  Send(QEvent::MouseButtonRelease, at, Qt::LeftButton);
  Send(QEvent::MouseButtonDblClick, at, Qt::LeftButton);
  ExpectGone();
}

TEST_P(DeletingByTheUser, WhileItsMenuIsOpenIsHarmless) {
  ShowLoaded();
  QTimer::singleShot(0, [this] {
    EXPECT_NE(qobject_cast<QMenu*>(QApplication::activePopupWidget()), nullptr);
    Delete();
  });
  Send(QEvent::MouseButtonPress, CenterOf(4, "BillNo"), Qt::RightButton);
  ExpectGone();
}

TEST_P(DeletingByTheUser, InWhatItsMenuAsksForIsHarmless) {
  ShowLoaded();
  QStringList commands;
  QObject::connect(widget_, &StockbookWidget::CommandExecute, [&](const QString& command) {
    commands += command;
    Delete();
  });
  QTimer::singleShot(0, [] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    menu->setActiveAction(menu->actions().last());
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(menu, &enter);
  });
  Send(QEvent::MouseButtonPress, CenterOf(4, "BillNo"), Qt::RightButton);
  EXPECT_EQ(commands, QStringList{QStringLiteral("Refresh")});
  ExpectGone();
}

TEST_P(DeletingByTheUser, InATickOfItsFieldChooserIsHarmless) {
  ShowLoaded();
  QStringList commands;
  QObject::connect(widget_, &StockbookWidget::CommandExecute, [&](const QString& command) {
    commands += command;
    Delete();
  });
  QTimer::singleShot(0, [] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QMenu* fields = menu->actions().last()->menu();
    ASSERT_NE(fields, nullptr);
    // Two of them; after the first there is nobody to tell the second.
    fields->actions()[3]->trigger();
    fields->actions()[4]->trigger();
  });
  Send(QEvent::MouseButtonPress, CenterOf(0, "Explain"), Qt::RightButton);
  EXPECT_EQ(commands, QStringList{QStringLiteral("AfterFieldShow")});
  ExpectGone();
}

TEST_P(DeletingByTheUser, InAHitIsHarmless) {
  ShowLoaded();
  QObject::connect(widget_, &StockbookWidget::FindMsg, Deleter());
  widget_->Find(QStringLiteral("入库"));
  ExpectGone();
}

TEST_P(DeletingByTheUser, InAPropertyThatChangesIsHarmless) {
  QObject::connect(widget_, &StockbookWidget::PropertyChanged, Deleter());
  EXPECT_TRUE(widget_->setProperty("BackColor", QColor(Qt::red)));
  ExpectGone();
}

TEST_P(DeletingByTheUser, InAPropertyThatIsRefusedIsHarmless) {
  QObject::connect(widget_, &StockbookWidget::Notify, Deleter());
  widget_->setProperty("dpID", 40000);
  ExpectGone();
}

TEST_P(DeletingByTheUser, InAListenerOfTheControlIsHarmless) {
  testing::EventRecorder listener;
  listener.on_hearing = [deletes = Deleter()](const std::string& line) {
    if (line == "AfterLoaded") deletes();
  };
  widget_->control().AddListener(&listener);
  widget_->Load(7, 0);
  ExpectGone();
}

TEST_F(Deleting, InAListenerOfTheControlThatWasAskedItselfIsHarmless) {
  testing::EventRecorder listener;
  listener.on_hearing = [deletes = Deleter()](const std::string& line) {
    if (line == "AfterLoaded") deletes();
  };
  widget_->control().AddListener(&listener);
  widget_->control().Load(7, 0);
  ExpectGone();
}

TEST_P(DeletingByTheUser, RaisesNoMoreSignals) {
  std::vector<std::string> heard;
  QObject::connect(widget_, &StockbookWidget::Process, [&] { heard.emplace_back("Process"); });
  QObject::connect(widget_, &StockbookWidget::Process, Deleter());
  QObject::connect(widget_, &StockbookWidget::Process, [&] { heard.emplace_back("late"); });
  QObject::connect(widget_, &StockbookWidget::AfterLoaded, [&] { heard.emplace_back("AfterLoaded"); });
  widget_->Load(7, 0);
  EXPECT_EQ(heard, std::vector<std::string>{"Process"});
  ExpectGone();
}

}  // namespace
}  // namespace stockbook::qt
