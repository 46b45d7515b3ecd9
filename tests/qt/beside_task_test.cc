// SPDX-License-Identifier: MIT
// Several pieces of work beside the interface that are one to the user.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <chrono>
#include <functional>
#include <optional>
#include <utility>

#include "qt/application.h"
#include "stockbook/platform/error.h"
#include "stockbook/qt/beside.h"

namespace stockbook::qt {
namespace {

constexpr auto kInterrupted = platform::ErrorKind::kInterrupted;

class BesideTask : public WithApplication {
 protected:
  BesideTask() {
    beside_.SetGrace(std::chrono::milliseconds(0));
    beside_.SetStep(std::chrono::milliseconds(0));
  }
  void RunTold() {
    beside_.Run({[] {}});
  }
  // Handled by the next pause.
  void Soon(std::function<void()> call) { QMetaObject::invokeMethod(&beside_, std::move(call), Qt::QueuedConnection); }
  template <typename Call>
  static std::optional<platform::ErrorKind> ErrorOf(Call call) {
    try {
      call();
    } catch (const platform::Error& error) {
      return error.kind();
    }
    return std::nullopt;
  }
  static void Settle() {
    constexpr int kPasses = 4;
    for (int pass = 0; pass < kPasses; ++pass) QApplication::processEvents();
  }

  Beside beside_;
};

TEST_F(BesideTask, IsToldOnceHoweverManyPiecesItHas) {
  QSignalSpy began(&beside_, &Beside::Began);
  QSignalSpy ended(&beside_, &Beside::Ended);
  {
    const auto task = beside_.Begin();
    RunTold();
    EXPECT_EQ(began.count(), 1);
    {
      const auto inner = beside_.Begin();
      RunTold();
    }
    EXPECT_EQ(ended.count(), 0);
  }
  EXPECT_EQ(began.count(), 1);
  EXPECT_EQ(ended.count(), 1);
  RunTold();
  EXPECT_EQ(began.count(), 2) << "work without a task is a task of its own";
  EXPECT_EQ(ended.count(), 2);
}

TEST_F(BesideTask, HandlesEventsInAPause) {
  bool handled = false;
  const auto task = beside_.Begin();
  RunTold();
  Soon([&] { handled = true; });
  beside_.Pause();
  EXPECT_TRUE(handled);
}

TEST_F(BesideTask, HandlesNoEventsInAPauseWhileAllWasShort) {
  beside_.SetGrace(std::chrono::hours(1));
  bool handled = false;
  const auto task = beside_.Begin();
  beside_.Run({[] {}});
  Soon([&] { handled = true; });
  beside_.Pause();
  EXPECT_FALSE(handled);
}

TEST_F(BesideTask, DoesNothingMoreOnceItWasCancelledInAPause) {
  bool ran = false;
  {
    const auto task = beside_.Begin();
    RunTold();
    Soon([&] { beside_.Cancel(); });
    EXPECT_EQ(ErrorOf([&] { beside_.Pause(); }), kInterrupted);
    EXPECT_EQ(ErrorOf([&] { beside_.Pause(); }), kInterrupted);
    EXPECT_EQ(ErrorOf([&] { beside_.Run({[&] { ran = true; }}); }), kInterrupted);
    beside_.RunAtOnce([&] { ran = true; });
    EXPECT_TRUE(ran) << "what has to be done anyway";
  }
  EXPECT_TRUE(beside_.WasCancelled());
  beside_.Pause();
  beside_.Run({[] {}});
  EXPECT_FALSE(beside_.WasCancelled()) << "the next one is another one";
}

TEST_F(BesideTask, RefusesInAPauseWhatSomethingElseAsksFor) {
  std::optional<platform::ErrorKind> refused;
  const auto task = beside_.Begin();
  RunTold();
  Soon([&] { refused = ErrorOf([&] { beside_.Run({[] {}}); }); });
  beside_.Pause();
  EXPECT_EQ(refused, platform::ErrorKind::kBusy);
}

TEST_F(BesideTask, KeepsKeysFromAllButOneWidgetInAPause) {
  class Typed : public QWidget {
   public:
    int keys = 0;

   protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
  };
  Typed alive;
  Typed other;
  beside_.KeepAlive(&alive);
  const auto task = beside_.Begin();
  RunTold();
  const auto type = [](QWidget& widget) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
  };
  Soon([&] {
    type(alive);
    type(other);
  });
  beside_.Pause();
  EXPECT_EQ(alive.keys, 1);
  EXPECT_EQ(other.keys, 0);
  type(other);
  EXPECT_EQ(other.keys, 1) << "a dialog that a step opens gets its keys";
}

TEST_F(BesideTask, ClosesTheWindowByItsKeysOnceItHasEnded) {
  const QKeySequence keys(Qt::CTRL | Qt::Key_Q);
  beside_.SetCloseKeys(keys);
  QWidget window;
  auto* inside = new QPushButton(&window);
  window.show();
  {
    const auto task = beside_.Begin();
    RunTold();
    Soon([&] {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, Qt::ControlModifier);
      QApplication::sendEvent(inside, &press);
    });
    EXPECT_EQ(ErrorOf([&] { beside_.Pause(); }), kInterrupted);
    Settle();
    EXPECT_TRUE(window.isVisible());
  }
  Settle();
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace stockbook::qt
