// SPDX-License-Identifier: MIT
// The journal of all customers of the invoice lines kept beside the sources, in the window: from the click to the
// paint, and what it takes, in processor time of the whole process, to obey Cancel at each of ten moments of the load,
// with the frames that the window painted meanwhile. `cancel_bench`, in the folder of the sources. It fails if the
// window does not show the old journal, at its place, after a cancelled load.
#include <unistd.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <tuple>

#include "child_process.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/command/import_command.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/main_window.h"

namespace {

using namespace stockbook;
using bench::CpuSeconds;
using bench::ElapsedSeconds;

constexpr int kMoments = 10;
constexpr int kLoads = 3;
constexpr double kMostCancelMs = 200;
constexpr int64_t kScrolled = 777;

void Import(const std::string& database) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  app::Terminal terminal{in, out, err};
  const int code = app::ImportCommand().run(
      {"../shared/data/online-retail-2010-12_2011-06.csv.xz", "-o", database, "--map",
       "product=StockCode,name=Description,bill=InvoiceNo,date=InvoiceDate,quantity=Quantity,price=UnitPrice,"
       "partner=CustomerID,project=Country",
       "--direction", "issue"},
      terminal);
  if (code == 0) return;
  std::fprintf(stderr, "the invoice lines are not here, run this in the folder of the sources: %s\n",
               err.str().c_str());
  std::exit(1);
}

// Counts the frames of the window.
class Frames : public QObject {
 public:
  int count = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    count += static_cast<int>(event->type() == QEvent::Paint && watched->isWidgetType());
    return false;
  }
};

app::JournalOptions AllCustomers() {
  app::JournalOptions options;
  options.journal_type = 2;
  return options;
}

// Until the window has painted what changed.
void Paint(app::MainWindow& window) {
  window.stockbook().viewport()->repaint();
  QApplication::processEvents();
}

// By processor time, which the other programs of the machine do not lengthen.
void CancelAt(app::MainWindow& window, double moment) {
  Frames frames;
  const sheet::GridSheet& sheet = window.stockbook().sheet();
  const auto state = [&] {
    return std::tuple(sheet.Revision(), sheet.LoadedRevision(), sheet.Rows(), sheet.view().selection(),
                      sheet.view().geometry().scroll(), window.stockbook().control().Caption());
  };
  const auto before = state();
  const double begin = CpuSeconds();
  double asked = 0;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (asked > 0 || CpuSeconds() - begin < moment) return;
    asked = CpuSeconds();
    window.reading().strip().work().findChild<QPushButton*>()->click();
  });
  look.start(1);
  qApp->installEventFilter(&frames);
  const app::LoadReport report = window.LoadJournal(AllCustomers());
  const double end = CpuSeconds();
  qApp->removeEventFilter(&frames);
  Paint(window);
  if (asked == 0) {
    std::printf("at %6.0f ms: there was no more to cancel, loaded %d\n", moment * 1e3, report.loaded);
    return;
  }
  std::printf("at %6.0f ms: %6.1f ms until the old journal is back (at most %.0f), %d frames, cancelled %d\n",
              moment * 1e3, (end - asked) * 1e3, kMostCancelMs, frames.count, report.cancelled);
  if (report.cancelled && state() != before) std::exit(1);
}

}  // namespace

int main() {
  const app::GuiSession session(app::GuiNeed::kPicture);
  const std::string database =
      (std::filesystem::temp_directory_path() / ("stockbook-cancel-" + std::to_string(getpid()) + ".db")).string();
  Import(database);
  {
    app::MainWindow window;
    window.OpenDatabase(database);
    window.show();
    window.LoadFirstJournal();
    Paint(window);
    const double cpu = CpuSeconds();
    const double elapsed = ElapsedSeconds();
    window.LoadJournal(AllCustomers());
    Paint(window);
    std::printf("%zu lines: %.0f ms of processor time, %.0f ms by the clock from the click to the paint\n",
                window.stockbook().Grid().RecordCount(), (CpuSeconds() - cpu) * 1e3,
                (ElapsedSeconds() - elapsed) * 1e3);
    window.LoadFirstJournal();
    // The first time much is made that stays. The shortest of some leaves no moment after the end.
    double read = 1e9;
    for (int again = 0; again < kLoads; ++again) {
      const double begin = CpuSeconds();
      window.LoadJournal(AllCustomers());
      read = std::min(read, CpuSeconds() - begin);
      window.LoadFirstJournal();
    }
    window.stockbook().sheet().view().ScrollTo({0, kScrolled});
    for (int moment = 0; moment < kMoments; ++moment) {
      CancelAt(window, read * (moment + 0.5) / kMoments);
    }
  }
  std::filesystem::remove(database);
}
