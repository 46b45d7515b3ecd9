// SPDX-License-Identifier: MIT
#include "stockbook/qt/beside.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <utility>

#include "stockbook/base/scope_exit.h"
#include "stockbook/platform/error.h"

namespace stockbook::qt {
namespace {

constexpr std::chrono::milliseconds kUsualGrace{80};
constexpr std::chrono::milliseconds kTick{100};
constexpr std::chrono::milliseconds kUsualStep{10};

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

// Also where some item of a menu has that key, which comes by as an override first.
bool IsEscape(const QEvent& event) {
  if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) return false;
  return static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

// Tips, menus and lists close by themselves; only what the user can close is meant to end.
bool IsClosedByUser(const QObject& watched) {
  if (!watched.isWidgetType()) return false;
  const auto& widget = static_cast<const QWidget&>(watched);
  if (!widget.isWindow()) return false;
  const Qt::WindowType type = widget.windowType();
  return type != Qt::ToolTip && type != Qt::Popup && type != Qt::SplashScreen;
}

bool IsDone(const std::future<void>& done) {
  return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace

Beside::Beside(QObject* parent)
    : QObject(parent), grace_(kUsualGrace), step_(kUsualStep), thread_([this] {
        QMetaObject::invokeMethod(
            this,
            [this] {
              if (loop_ != nullptr) loop_->quit();
            },
            Qt::QueuedConnection);
      }) {}

Beside::~Beside() = default;

void Beside::BeginTask() {
  if (tasks_++ == 0) cancelled_ = false;
}

void Beside::EndTask() {
  if (--tasks_ > 0 || !std::exchange(told_, false)) return;
  emit Ended();
  LetGo();
}

void Beside::Tell() {
  if (!std::exchange(told_, true)) emit Began();
}

void Beside::RefuseIfCancelled() const {
  if (tasks_ > 0 && cancelled_) throw platform::Error("Execute", "已被取消", 0, platform::ErrorKind::kInterrupted);
}

void Beside::Run(const BesideWork& work) {
  if (QThread::currentThread() != thread()) return thread_.Start(work.run).get();
  if (work_ != nullptr || pausing_) {
    throw platform::Error("Execute", "数据库还在执行上一个查询，请等它完成，或先取消它", 0, platform::ErrorKind::kBusy);
  }
  RefuseIfCancelled();
  const auto task = Begin();
  std::future<void> done = thread_.Start(work.run);
  // Whatever an event throws, the work may use what whoever called has on the stack.
  const base::ScopeExit finished([&] {
    if (done.valid()) done.wait();
  });
  const bool is_short = grace_.count() > 0 && done.wait_for(grace_) == std::future_status::ready;
  if (QCoreApplication::instance() != nullptr && !is_short) {
    work_ = &work;
    const base::ScopeExit ended([this] { work_ = nullptr; });
    HandleEventsUntil(done);
  }
  done.get();
}

void Beside::Pause() {
  RefuseIfCancelled();
  const bool is_soon = step_.count() > 0 && !paused_.hasExpired(step_.count());
  if (!told_ || work_ != nullptr || pausing_ || is_soon) return;
  {
    pausing_ = true;
    qApp->installEventFilter(this);
    const base::ScopeExit over([this] {
      qApp->removeEventFilter(this);
      pausing_ = false;
      paused_.start();
    });
    QCoreApplication::processEvents();
  }
  RefuseIfCancelled();
}

void Beside::RunAtOnce(const std::function<void()>& run) { thread_.Start(run).get(); }

void Beside::HandleEventsUntil(const std::future<void>& done) {
  QEventLoop loop;
  loop_ = &loop;
  QTimer ticker;
  connect(&ticker, &QTimer::timeout, this, &Beside::Tick);
  ticker.start(kTick);
  qApp->installEventFilter(this);
  const base::ScopeExit over([this] {
    qApp->removeEventFilter(this);
    loop_ = nullptr;
    paused_.start();
  });
  Tell();
  // A loop that was ended by something else than the work begins again; one that does not even begin is that of a
  // program that ends.
  while (!IsDone(done) && loop.exec() >= 0) {
  }
  if (!IsDone(done)) Cancel();
  done.wait();
}

// A statement that was about to begin when it was cancelled knows nothing of that, so it is cancelled again.
void Beside::Tick() {
  if (work_ == nullptr) return;
  if (cancelled_ && work_->cancel) work_->cancel();
  emit Ticked(work_->rows ? work_->rows() : 0);
}

void Beside::Cancel() {
  if (tasks_ == 0) return;
  cancelled_ = true;
  if (work_ != nullptr && work_->cancel) work_->cancel();
}

bool Beside::IsCloseKey(const QEvent& event) const {
  if (event.type() != QEvent::KeyPress && event.type() != QEvent::ShortcutOverride) return false;
  return !close_keys_.isEmpty() && QKeySequence(static_cast<const QKeyEvent&>(event).keyCombination()) == close_keys_;
}

bool Beside::TakesInput(const QObject* receiver) const {
  for (; receiver != nullptr && alive_ != nullptr; receiver = receiver->parent()) {
    if (receiver == alive_) return true;
  }
  return false;
}

bool Beside::eventFilter(QObject* watched, QEvent* event) {
  if (HoldBack(watched, event)) return true;
  const QEvent::Type type = event->type();
  if (!IsInput(type)) return false;
  // Windows of the system pass their events on to widgets, where they come by again.
  if (!watched->isWidgetType() && type != QEvent::Shortcut) return false;
  if (IsEscape(*event) || IsCloseKey(*event)) {
    if (IsCloseKey(*event) && watched->isWidgetType()) closing_ = static_cast<QWidget*>(watched)->window();
    Cancel();
    return true;
  }
  return !TakesInput(watched);
}

// Whoever waits is still on the stack, with the window and the program below it.
bool Beside::HoldBack(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Quit && watched == qApp) {
    quits_ = true;
  } else if (event->type() == QEvent::Close && IsClosedByUser(*watched)) {
    closing_ = static_cast<QWidget*>(watched);
    event->ignore();
  } else {
    return false;
  }
  Cancel();
  return true;
}

void Beside::LetGo() {
  if (closing_ != nullptr) {
    QMetaObject::invokeMethod(
        closing_, [window = closing_.data()] { window->close(); }, Qt::QueuedConnection);
    closing_.clear();
  }
  if (std::exchange(quits_, false)) QCoreApplication::postEvent(qApp, new QEvent(QEvent::Quit));
}

}  // namespace stockbook::qt
