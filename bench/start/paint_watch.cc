// SPDX-License-Identifier: MIT
// Loaded into a program of the toolkit before everything else (LD_PRELOAD), tells start_bench when the program has
// painted what is waited for, and ends it: a journal with rows in the program of this project, anything in another one.
// So what is measured is the program as it is, with nothing in it for the measurement.
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QObject>
#include <QVariant>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double Seconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

class PaintWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  // The event is only the beginning of a frame; what is queued comes after the end of it.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType() && IsWaitedFor(*watched))
      QMetaObject::invokeMethod(this, &PaintWatch::Tell, Qt::QueuedConnection);
    return false;
  }

 private:
  static bool IsWaitedFor(const QObject& painted) {
    static const bool waits_for_journal = qEnvironmentVariableIsSet("STOCKBOOK_WATCH_JOURNAL");
    if (!waits_for_journal) return true;
    const QObject* sheet = painted.parent();
    if (sheet == nullptr || !sheet->inherits("stockbook::qt::SheetWidget")) return false;
    return !sheet->parent()->property("Caption").toString().isEmpty();
  }

  void Tell() {
    const int report = qEnvironmentVariableIntValue("STOCKBOOK_WATCH_REPORT");
    dprintf(report, "%.6f %.6f\n", Seconds(CLOCK_MONOTONIC), Seconds(CLOCK_PROCESS_CPUTIME_ID));
    _exit(0);
  }
};

void Watch() { QCoreApplication::instance()->installEventFilter(new PaintWatch(QCoreApplication::instance())); }
Q_COREAPP_STARTUP_FUNCTION(Watch)

}  // namespace
