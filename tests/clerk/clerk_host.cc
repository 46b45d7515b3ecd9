// SPDX-License-Identifier: MIT
// The reference host's window on a sample inventory, for tests that use real keys and a real mouse. It executes
// commands from its standard input, one per line, and answers each with lines of state followed by a line with a full
// stop.
#include <sqlite3.h>

#include <QApplication>
#include <QDialog>
#include <QDrag>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSocketNotifier>
#include <algorithm>
#include <csignal>
#include <iostream>
#include <sstream>
#include <string>

#include "stockbook/base/column_keys.h"
#include "stockbook/command/gui_session.h"
#include "stockbook/sample/sample_inventory.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/column_dialog.h"
#include "stockbook/window/main_window.h"
#include "support/test_folder.h"

namespace stockbook::testing {
namespace {

namespace keys = base::keys;

constexpr int kNoDoubleClicks = 1;  // milliseconds
constexpr QSize kWindowSize(980, 740);

std::string OneLine(const QString& text) {
  QString line = text;
  line.replace('\\', "\\\\").replace('\t', "\\t").replace('\r', "\\r").replace('\n', "\\n");
  return line.toStdString();
}

// Where the mouse last moved, and where it last dragged something over a widget.
class Watch : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::MouseMove) seen_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::DragMove && widget != nullptr)
      over_ = widget->mapToGlobal(static_cast<QDragMoveEvent*>(event)->position().toPoint());
    return false;
  }
  QPoint seen() const { return seen_; }
  QPoint over() const { return over_; }

 private:
  QPoint seen_;
  QPoint over_;
};

// What is open above the window: the texts of menus, the titles of dialogs.
std::string OpenMenus() {
  std::string menus;
  for (const QWidget* widget : QApplication::topLevelWidgets()) {
    const auto* menu = qobject_cast<const QMenu*>(widget);
    if (menu == nullptr || !menu->isVisible()) continue;
    for (const QAction* action : menu->actions()) {
      if (!action->isSeparator() && action->isVisible()) menus += OneLine(action->text()) + "|";
    }
  }
  return menus;
}

std::string OpenDialogs() {
  std::string titles;
  for (const QWidget* widget : QApplication::topLevelWidgets()) {
    if (qobject_cast<const QDialog*>(widget) != nullptr && widget->isVisible())
      titles += widget->windowTitle().toStdString() + "|";
  }
  return titles;
}

class Host {
 public:
  ~Host() { sqlite3_close(other_); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  Host() {
    app::WriteSampleInventory(folder_.PathOf("sample.db"), {});
    QApplication::instance()->installEventFilter(&watch_);
    window_.move(0, 0);
    window_.show();
    Reset();
  }

  void Obey(const std::string& line) {
    std::istringstream words(line);
    std::string what;
    words >> what;
    int row = 0;
    std::string key;
    if (what == "reset") Reset();
    if (what == "state") TellState();
    if (what == "double_clicks") {
      words >> row;
      QApplication::setDoubleClickInterval(row);
    }
    if (what == "go") {
      words >> row >> key;
      grid().Select(row, grid().ColIndex(key));
    }
    if (what == "cell") {
      int column = 0;
      words >> row >> column;
      TellArea(sheet().view().geometry().VisibleCellRect(row, column));
    }
    if (what == "column") {
      words >> key;
      std::cout << "index=" << grid().ColIndex(key) << "\n";
    }
    // Another program posts a line, or holds the inventory, or lets it go.
    if (what == "post")
      Execute("INSERT INTO 入库记录(BillID,pdID,dpID,数量) SELECT BillID,1,1,7 FROM 入库目录 LIMIT 1");
    if (what == "hold") Execute("BEGIN EXCLUSIVE");
    if (what == "release") Execute("ROLLBACK");
    if (what == "beyond") TellBeyond();
    if (what == "listed") {
      words >> row;
      TellListed(row);
    }
    if (what == "product") TellProduct();
    if (what == "issue") std::cout << "row=" << IssueWithSource() << "\n";
    std::cout << ".\n" << std::flush;
  }

 private:
  sheet::GridSheet& sheet() { return window_.stockbook().sheet(); }
  platform::Grid& grid() { return window_.stockbook().Grid(); }
  app::SubjectChooser& product() { return *window_.bar().findChild<app::SubjectChooser*>(); }

  void Execute(const char* statement) {
    if (other_ == nullptr) sqlite3_open(folder_.PathOf("sample.db").c_str(), &other_);
    sqlite3_exec(other_, statement, nullptr, nullptr, nullptr);
  }

  // The first product's journal as a new window shows it.
  void Reset() {
    if (other_ != nullptr) Execute("ROLLBACK");
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    for (QDialog* dialog : window_.findChildren<QDialog*>()) dialog->close();
    window_.find_bar().hide();
    window_.resize(kWindowSize);
    window_.OpenDatabase(folder_.PathOf("sample.db"));
    app::JournalOptions options;
    options.key_id = 1;
    window_.LoadJournal(options);
    window_.columns().LayOutAnew();
    window_.stockbook().SetZoom(1.0);
    window_.stockbook().setFocus();
    QApplication::setDoubleClickInterval(kNoDoubleClicks);
  }

  // One that has a partner, too.
  int IssueWithSource() {
    for (size_t record = 0; record < grid().RecordCount(); ++record) {
      const int row = grid().RowOfRecord(record);
      const auto number = [&](const char* key) { return grid().ValueMatrix(row, grid().ColIndex(key)); };
      if (number(keys::kOtherID) > 0 && number(keys::kKsID) > 0) return row;
    }
    return -1;
  }

  // The product that is not shown, and what one types to find it.
  void TellProduct() {
    const app::SubjectChooser& chooser = product();
    const int other = chooser.currentIndex() == 1 ? 0 : 1;
    std::cout << "number=" << chooser.itemText(other).section(QLatin1Char(' '), 0, 0).toStdString()
              << "\ntext=" << chooser.itemText(other).toStdString() << "\n";
    const QPoint corner = chooser.mapToGlobal(QPoint());
    std::cout << "rect=" << corner.x() << " " << corner.y() << " " << chooser.width() / 2 << " " << chooser.height()
              << "\n";
  }

  void TellArea(const sheet::Rect& area) {
    const QPoint corner = window_.stockbook().viewport()->mapToGlobal(QPoint(area.x, area.y));
    std::cout << "rect=" << corner.x() << " " << corner.y() << " " << area.width << " " << area.height << "\n";
  }

  // What the columns leave free at the right of the captions.
  void TellBeyond() {
    const sheet::Geometry geometry = sheet().view().geometry();
    const int right = geometry.CellsRect().right();
    TellArea({right, 0, std::max(0, geometry.view().width - right), geometry.PinnedHeight()});
  }

  app::ColumnDialog* Columns() { return window_.findChild<app::ColumnDialog*>(); }

  // The caption of a column in the open list of the columns.
  void TellListed(int row) {
    if (Columns() == nullptr) return;
    QTreeWidget& list = Columns()->list();
    const QRect area = list.visualItemRect(list.topLevelItem(row));
    const QPoint corner = list.viewport()->mapToGlobal(area.topLeft());
    std::cout << "rect=" << corner.x() << " " << corner.y() << " " << list.columnWidth(0) << " " << area.height()
              << "\n";
  }

  // The columns in the order of the journal, and in that of their list if it is open.
  void TellColumns() {
    std::cout << "order=";
    for (int column = grid().FixedCols(); column < grid().Cols(); ++column) std::cout << grid().ColKey(column) << " ";
    std::cout << "\nlist=";
    for (int row = 0; Columns() != nullptr && row < Columns()->list().topLevelItemCount(); ++row)
      std::cout << Columns()->list().topLevelItem(row)->data(0, Qt::UserRole).toString().toStdString() << " ";
    const bool dragging = Columns() != nullptr && Columns()->list().findChild<QDrag*>() != nullptr;
    std::cout << "\ndragging=" << dragging << "\nover=" << watch_.over().x() << " " << watch_.over().y() << "\n";
  }

  void TellNotices() {
    std::string notices;
    for (const app::NoticeBar* bar : window_.findChildren<app::NoticeBar*>())
      if (bar->isVisible()) notices += OneLine(bar->Text()) + "|";
    const QWidget* dialog = QApplication::activeModalWidget();
    std::cout << "notices=" << notices << "\ndialog=" << (dialog == nullptr ? 0 : dialog->winId())
              << "\nrows=" << grid().Rows() << "\n";
  }

  void TellState() {
    TellNotices();
    TellColumns();
    const QWidget* focus = QApplication::focusWidget();
    const bool in_grid = focus != nullptr && focus == window_.stockbook().focusProxy();
    const bool in_product = focus == &product() || focus == product().lineEdit();
    std::cout << "window=" << window_.winId() << "\nmouse=" << watch_.seen().x() << " " << watch_.seen().y()
              << "\nactive=" << window_.isActiveWindow() << "\nfocus="
              << (in_grid      ? "grid"
                  : in_product ? "product"
                               : "elsewhere")
              << "\ntyped=" << product().currentText().toStdString() << "\nchosen=" << product().Current().key
              << "\nshown=" << window_.stockbook().control().KeyID()
              << "\ntype=" << window_.stockbook().control().JournalType() << "\nrow=" << grid().Row()
              << "\nrecord=" << RecordAt(keys::kRecID) << "\nsource=" << RecordAt(keys::kOtherID)
              << "\nfrozen=" << grid().FrozenCols() << "\nhidden=" << Hidden()
              << "\nzoom=" << window_.stockbook().Zoom() << "\nmenu=" << OpenMenus() << "\ndialogs=" << OpenDialogs()
              << "\nsound=" << sheet().CheckInvariants() << "\n";
  }

  int RecordAt(const char* key) {
    return grid().Row() < grid().FixedRows() ? 0
                                             : static_cast<int>(grid().ValueMatrix(grid().Row(), grid().ColIndex(key)));
  }

  std::string Hidden() {
    std::string hidden;
    for (int column = grid().FixedCols(); column < grid().Cols(); ++column)
      if (grid().ColHidden(column)) hidden += grid().ColKey(column) + " ";
    return hidden;
  }

  Watch watch_;
  TestFolder folder_;
  sqlite3* other_ = nullptr;
  app::MainWindow window_;
};

int Run() {
  app::GuiSession session(app::GuiNeed::kWindow);
  Host host;
  constexpr int kStandardInput = 0;
  QSocketNotifier notifier(kStandardInput, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
    std::string line;
    do {
      if (!std::getline(std::cin, line)) return QApplication::quit();
      host.Obey(line);
    } while (std::cin.rdbuf()->in_avail() > 0);
  });
  return session.Run();
}

}  // namespace
}  // namespace stockbook::testing

int main() {
  // The end of the standard input ends the program, which then removes its inventory.
  std::signal(SIGTERM, SIG_IGN);
  return stockbook::testing::Run();
}
