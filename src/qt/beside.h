// SPDX-License-Identifier: MIT
#pragma once

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <chrono>
#include <cstddef>
#include <functional>
#include <future>

#include "qt/work_thread.h"

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
class Beside : public QObject {
  Q_OBJECT

 public:
  explicit Beside(QObject* parent = nullptr);
  ~Beside() override;

  // The widget that keys and mouse reach during the work.
  void KeepAlive(QWidget* widget) { alive_ = widget; }
  // Work that is shorter is waited for without handling events, and not told.
  void SetGrace(std::chrono::milliseconds grace) { grace_ = grace; }

  // Returns when the work is done, and throws what it throws. Work that is asked for during other work, by a timer say,
  // is refused: platform::Error of the kind kBusy. On another thread than the object's it just waits.
  void Run(const BesideWork& work);
  // Runs something short, without handling events, after whatever runs. Throws what it throws.
  void RunAtOnce(const std::function<void()>& run);
  bool IsRunning() const { return work_ != nullptr; }
  // Whether the work that runs, or the last one, was cancelled.
  bool WasCancelled() const { return cancelled_; }

 public slots:
  // Nothing without work.
  void Cancel();

 signals:
  // The work takes longer than the grace; Ended follows in any case.
  void Began();
  // A few times a second.
  void Ticked(qulonglong rows);
  void Ended();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void HandleEventsUntil(const std::future<void>& done);
  void Tick();
  bool TakesInput(const QObject* receiver) const;
  bool HoldBack(QObject* watched, QEvent* event);
  void LetGo();

  std::chrono::milliseconds grace_;
  QPointer<QWidget> alive_;
  const BesideWork* work_ = nullptr;
  QEventLoop* loop_ = nullptr;
  bool cancelled_ = false;
  bool quits_ = false;
  QPointer<QWidget> closing_;
  WorkThread thread_;
};

}  // namespace stockbook::qt
