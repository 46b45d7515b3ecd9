// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <chrono>
#include <cstddef>
#include <functional>
#include <future>

#include "stockbook/base/api.h"
#include "stockbook/base/scope_exit.h"
#include "stockbook/qt/work_thread.h"

namespace stockbook::qt {

// What runs beside the interface. All but `run`, and what it uses, is called on the interface's thread.
struct BesideWork {
  std::function<void()> run;
  std::function<void()> cancel = {};       // asks `run` to end soon, by throwing
  std::function<std::size_t()> rows = {};  // how many it has read so far
};

// Runs work on a thread of its own while the windows go on painting. Whoever calls Run waits for the result as if the
// work were a plain call. Meanwhile keys and mouse reach one widget alone, such as a bar with a button to cancel; what
// else is typed or clicked is lost, so that nothing happens twice or in a window that is half done. Esc, closing a
// window and the end of the program cancel the work; the latter two follow when it has ended.
//
// Several runs, with steps on the interface's thread between them, can be one task: it is told once, Pause lets the
// windows go on in its steps too, and once it is cancelled nothing more of it is done.
class STOCKBOOK_API Beside : public QObject {
  Q_OBJECT

 public:
  // Is made on the interface's thread; the work has one of its own.
  explicit Beside(QObject* parent = nullptr);
  // Waits for what still runs.
  ~Beside() override;

  // The widget that keys and mouse reach during the work.
  void KeepAlive(QWidget* widget) { alive_ = widget; }
  // Work that is shorter is waited for without handling events, and not told; with a grace of 0 none is. 80 ms unless
  // set.
  void SetGrace(std::chrono::milliseconds grace) { grace_ = grace; }
  // How long a step of a task goes on, at least, between two pauses that handle events; 0: every pause does. 10 ms
  // unless set.
  void SetStep(std::chrono::milliseconds step) { step_ = step; }
  // The keys that close a window, as its own button does; none unless set.
  void SetCloseKeys(const QKeySequence& keys) { close_keys_ = keys; }

  // While the returned guard lives, all that is run is one task. A task inside another one is part of it.
  [[nodiscard]] auto Begin() {
    return base::ScopeExit([this] { BeginTask(); }, [this] { EndTask(); });
  }
  // Between two steps of a task: handles events, unless it has just done so or the task was not told so far, because
  // all that was run was short. Throws platform::Error of the kind kInterrupted if the task was cancelled. Nothing
  // without a task.
  void Pause();

  // Returns when the work is done, and throws what it throws. Work that is asked for during other work, by a timer say,
  // or in a pause is refused: platform::Error of the kind kBusy; so is all of a task that was cancelled, as
  // kInterrupted. On another thread than the object's it just waits.
  void Run(const BesideWork& work);
  // Runs something short, without handling events, after whatever runs. Throws what it throws.
  void RunAtOnce(const std::function<void()>& run);
  // Whether a Run is handling events now; work that is shorter than the grace does not count.
  bool IsRunning() const { return work_ != nullptr; }
  // Whether the work or the task that goes on, or the last one, was cancelled.
  bool WasCancelled() const { return cancelled_; }

 public Q_SLOTS:
  // Cancels the work, and the task that it is part of, by BesideWork::cancel. Nothing without work and task.
  void Cancel();

 Q_SIGNALS:
  // The work, or something of the task, takes longer than the grace; Ended follows in any case.
  void Began();
  // Every 100 ms while work runs, with what BesideWork::rows says; 0 without it.
  void Ticked(qulonglong rows);
  // What Began told of is over, done or not; closing of windows that was held back follows.
  void Ended();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BeginTask();
  void EndTask();
  void Tell();
  void RefuseIfCancelled() const;
  void HandleEventsUntil(const std::future<void>& done);
  void Tick();
  bool TakesInput(const QObject* receiver) const;
  bool IsCloseKey(const QEvent& event) const;
  bool HoldBack(QObject* watched, QEvent* event);
  void LetGo();

  std::chrono::milliseconds grace_;
  std::chrono::milliseconds step_;
  QKeySequence close_keys_;
  QPointer<QWidget> alive_;
  const BesideWork* work_ = nullptr;
  QEventLoop* loop_ = nullptr;
  int tasks_ = 0;  // one inside another
  bool told_ = false;
  bool pausing_ = false;
  QElapsedTimer paused_;  // since events were last handled
  bool cancelled_ = false;
  bool quits_ = false;
  QPointer<QWidget> closing_;
  WorkThread thread_;
};

}  // namespace stockbook::qt
