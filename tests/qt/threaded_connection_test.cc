// SPDX-License-Identifier: MIT
#include "stockbook/qt/threaded_connection.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "qt/application.h"
#include "stockbook/databases/rows/row_source.h"
#include "stockbook/platform/error.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::qt {
namespace {

// A database whose statements last until they are let go or cancelled, and that notices on which thread it is used.
class SlowDatabase : public platform::Connection {
 public:
  ~SlowDatabase() override { *last_thread_ = std::this_thread::get_id(); }

  std::string ConnectionString() const override { return "Data Source=slow.db"; }
  platform::Recordset Execute(std::string_view statement, int) override {
    Note(std::string(statement));
    if (statement == "fails") throw platform::Error("Execute", "没有这个表", 7);
    if (statement != "slow") return Rows();
    std::unique_lock lock(mutex_);
    rows_read_ = 1234;
    changed_.wait(lock, [this] { return let_go_ || cancelled_; });
    let_go_ = false;
    if (std::exchange(cancelled_, false))
      throw platform::Error("Execute", "语句已被取消", 0, platform::ErrorKind::kInterrupted);
    return Rows();
  }
  std::unique_ptr<platform::Moment> ReadAsOfOneMoment() override {
    class Noting : public platform::Moment {
     public:
      explicit Noting(SlowDatabase& database) : database_(database) { database_.Note("begins"); }
      ~Noting() override { database_.Note("ends"); }

     private:
      SlowDatabase& database_;
    };
    return has_moments ? std::make_unique<Noting>(*this) : nullptr;
  }
  void Cancel() override { End(cancelled_); }
  std::size_t RowsRead() const override {
    const std::lock_guard lock(mutex_);
    return rows_read_;
  }

  void LetGo() { End(let_go_); }
  void NoteEndIn(std::thread::id& place) { last_thread_ = &place; }

  bool has_moments = true;
  std::vector<std::string> done;
  std::vector<std::thread::id> threads;

 private:
  static platform::Recordset Rows() {
    std::vector<platform::Field> fields;
    fields.push_back({"a", columns::Column::Constant(base::Value(int64_t{5}), 3)});
    return platform::Recordset(std::move(fields));
  }
  void Note(std::string what) {
    done.push_back(std::move(what));
    threads.push_back(std::this_thread::get_id());
  }
  void End(bool& how) {
    {
      const std::lock_guard lock(mutex_);
      how = true;
    }
    changed_.notify_all();
  }

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool let_go_ = false;
  bool cancelled_ = false;
  std::size_t rows_read_ = 0;
  std::thread::id unheeded_;
  std::thread::id* last_thread_ = &unheeded_;
};

class Threaded : public WithApplication {
 protected:
  Threaded() : slow_(std::make_shared<SlowDatabase>()), beside_(std::make_shared<Beside>()) {
    beside_->SetGrace(std::chrono::milliseconds(0));
    connection_ = std::make_unique<ThreadedConnection>(slow_, beside_);
  }
  // Does it when the slow statement is being waited for.
  template <typename Action>
  void Meanwhile(Action action) {
    QObject::connect(
        beside_.get(), &Beside::Ticked, &context_, [action] { action(); },
        static_cast<Qt::ConnectionType>(Qt::AutoConnection | Qt::SingleShotConnection));
  }
  platform::ErrorKind KindOf(const char* statement) {
    try {
      connection_->Execute(statement);
    } catch (const platform::Error& error) {
      return error.kind();
    }
    ADD_FAILURE() << "there is no error";
    return platform::ErrorKind::kMemory;
  }
  static void Click(QWidget& widget) {
    const QPointF middle(widget.rect().center());
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, middle, widget.mapToGlobal(middle), Qt::LeftButton,
                        type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
      QApplication::sendEvent(&widget, &event);
    }
  }

  QObject context_;
  std::shared_ptr<SlowDatabase> slow_;
  std::shared_ptr<Beside> beside_;
  std::unique_ptr<platform::Connection> connection_;
};

TEST_F(Threaded, GivesWhatTheOtherConnectionGives) {
  EXPECT_EQ(connection_->ConnectionString(), "Data Source=slow.db");
  platform::Recordset rows = connection_->Execute("quick");
  EXPECT_EQ(rows.RecordCount(), 3U);
  EXPECT_EQ(rows.FieldValue("a").AsInteger(), 5);
}

TEST_F(Threaded, ThrowsWhatTheOtherConnectionThrows) {
  try {
    connection_->Execute("fails");
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_STREQ(error.what(), "没有这个表");
    EXPECT_EQ(error.native_code(), 7);
    EXPECT_EQ(error.kind(), platform::ErrorKind::kStatement);
  }
  EXPECT_EQ(connection_->Execute("quick").RecordCount(), 3U) << "it goes on";
}

TEST_F(Threaded, UsesTheOtherConnectionOnOneThreadToItsEnd) {
  std::thread::id last;
  slow_->NoteEndIn(last);
  {
    const auto moment = connection_->ReadAsOfOneMoment();
    connection_->Execute("quick");
    EXPECT_EQ(slow_->done, (std::vector<std::string>{"begins", "quick"}));
  }
  EXPECT_EQ(slow_->done.back(), "ends");
  for (const std::thread::id thread : slow_->threads) {
    EXPECT_EQ(thread, slow_->threads.front());
    EXPECT_NE(thread, std::this_thread::get_id());
  }
  const std::thread::id own = slow_->threads.front();
  slow_.reset();
  connection_.reset();
  EXPECT_EQ(last, own);
}

TEST_F(Threaded, HasNoMomentsWhereTheOtherConnectionHasNone) {
  slow_->has_moments = false;
  EXPECT_EQ(connection_->ReadAsOfOneMoment(), nullptr);
}

TEST_F(Threaded, LetsTheWindowsPaintMeanwhile) {
  class Window : public QWidget {
   public:
    std::function<void()> when_painted;

   protected:
    void paintEvent(QPaintEvent*) override {
      if (when_painted) when_painted();
    }
  };
  Window window;
  window.show();
  QApplication::processEvents();
  bool painted = false;
  Meanwhile([&] {
    window.when_painted = [&] {
      painted = true;
      slow_->LetGo();
    };
    window.update();
  });
  EXPECT_EQ(connection_->Execute("slow").RecordCount(), 3U);
  EXPECT_TRUE(painted);
}

TEST_F(Threaded, TellsHowManyRowsAreRead) {
  QSignalSpy began(beside_.get(), &Beside::Began);
  QSignalSpy ticked(beside_.get(), &Beside::Ticked);
  QSignalSpy ended(beside_.get(), &Beside::Ended);
  Meanwhile([this] { slow_->LetGo(); });
  connection_->Execute("slow");
  EXPECT_EQ(began.size(), 1);
  ASSERT_GE(ticked.size(), 1);
  EXPECT_EQ(ticked[0][0].toULongLong(), 1234U);
  EXPECT_EQ(ended.size(), 1);
}

TEST_F(Threaded, SaysNothingOfAStatementWithinTheGrace) {
  beside_->SetGrace(std::chrono::minutes(5));
  QSignalSpy began(beside_.get(), &Beside::Began);
  connection_->Execute("quick");
  EXPECT_EQ(began.size(), 0);
}

TEST_F(Threaded, EscapeCancelsTheStatement) {
  QWidget window;
  window.show();
  Meanwhile([&] {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&window, &escape);
  });
  EXPECT_EQ(KindOf("slow"), platform::ErrorKind::kInterrupted);
  EXPECT_EQ(connection_->Execute("quick").RecordCount(), 3U) << "the next one knows nothing of it";
}

TEST_F(Threaded, EscapeCancelsBeforeItCouldBeAShortcut) {
  QWidget window;
  window.show();
  bool was_taken = false;
  Meanwhile([&] {
    QKeyEvent escape(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
    was_taken = QApplication::sendEvent(&window, &escape);
  });
  EXPECT_EQ(KindOf("slow"), platform::ErrorKind::kInterrupted);
  EXPECT_TRUE(was_taken);
}

TEST_F(Threaded, KeysAndMouseReachTheLivingWidgetAlone) {
  QWidget window;
  QPushButton other(&window);
  QWidget bar(&window);
  QPushButton cancel(&bar);
  window.show();
  beside_->KeepAlive(&bar);
  int clicks = 0;
  QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
  QObject::connect(&cancel, &QPushButton::clicked, beside_.get(), &Beside::Cancel);
  Meanwhile([&] {
    Click(other);
    Click(cancel);
  });
  EXPECT_EQ(KindOf("slow"), platform::ErrorKind::kInterrupted);
  EXPECT_EQ(clicks, 0);
  Click(other);
  EXPECT_EQ(clicks, 1) << "afterwards all is as it was";
}

TEST_F(Threaded, AWindowThatIsClosedMeanwhileClosesWhenTheStatementHasEnded) {
  QWidget window;
  window.show();
  bool stayed = false;
  Meanwhile([&] {
    window.close();
    stayed = window.isVisible();
  });
  EXPECT_EQ(KindOf("slow"), platform::ErrorKind::kInterrupted);
  EXPECT_TRUE(stayed);
  QApplication::processEvents();
  EXPECT_FALSE(window.isVisible());
}

TEST_F(Threaded, ATipThatDisappearsMeanwhileCancelsNothing) {
  QWidget tip(nullptr, Qt::ToolTip);
  QWidget list(nullptr, Qt::Popup);
  tip.show();
  list.show();
  Meanwhile([&] {
    tip.close();
    list.close();
    slow_->LetGo();
  });
  EXPECT_NO_THROW(connection_->Execute("slow"));
  EXPECT_FALSE(beside_->WasCancelled());
  EXPECT_FALSE(tip.isVisible());
  EXPECT_FALSE(list.isVisible());
}

TEST_F(Threaded, RefusesAStatementDuringAnotherOne) {
  platform::ErrorKind kind = platform::ErrorKind::kMemory;
  Meanwhile([&] {
    kind = KindOf("quick");
    slow_->LetGo();
  });
  connection_->Execute("slow");
  EXPECT_EQ(kind, platform::ErrorKind::kBusy);
  EXPECT_EQ(slow_->done, (std::vector<std::string>{"slow"}));
}

// Objects of a host, of which a bill is in no period.
class Undated : public databases::RowSource {
 public:
  void Periods(const Take<std::string>& take) override { take("2025-03"); }
  void Receipts(const databases::RowFilter&, const TakeLine& take) override {
    take({.id = 1, .period = "2025-03", .type = "入库单", .number = "R1"}, {.id = 1, .product = 7, .quantity = 1});
    take({.id = 2, .type = "入库单", .number = "R2"}, {.id = 2, .product = 7, .quantity = 1});
  }
  void Issues(const databases::RowFilter&, const TakeLine&) override {}
};

TEST_F(Threaded, TellsWhatTheOtherConnectionLeftOut) {
  StockbookWidget widget;
  QStringList told;
  QObject::connect(&widget, &StockbookWidget::Notify, [&](const QString& message) { told << message; });
  widget.SetConn(std::make_shared<ThreadedConnection>(databases::OpenRowSource(std::make_shared<Undated>()), beside_));
  ASSERT_TRUE(widget.Load(7, 0));
  EXPECT_EQ(told.filter("Bill::id 2").size(), 1) << told.join("\n").toStdString();
  EXPECT_TRUE(told.last().startsWith("有 1 张入库单据没有会计期间")) << told.last().toStdString();
}

TEST_F(Threaded, WaitsAsAnyConnectionOnAnotherThread) {
  size_t rows = 0;
  std::thread other([&] { rows = connection_->Execute("quick").RecordCount(); });
  other.join();
  EXPECT_EQ(rows, 3U);
}

}  // namespace
}  // namespace stockbook::qt
