// SPDX-License-Identifier: MIT
// A window with a field, a grid over the sample ledger or a whole journal, and another
// field, for tests that use real keys and a real mouse. It executes commands from its standard input, one per line, and
// answers each with lines of state followed by a line with a full stop.
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QSocketNotifier>
#include <QToolTip>
#include <QVBoxLayout>
#include <cstdio>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "sheet/outline/outline.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/qt/clipboard.h"
#include "stockbook/qt/sheet_widget.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/sheet/grid_sheet.h"
#include "support/event_recorder.h"
#include "support/sample_ledger.h"
#include "support/small_journal.h"

namespace stockbook::testing {
namespace {

constexpr int kNoDoubleClicks = 1;  // milliseconds

// Records what a host hears about the mouse.
class Listener : public platform::GridObserver {
 public:
  void MouseDown(const platform::GridMouseEvent& event) override { Hear("down", static_cast<int>(event.button)); }
  void MouseUp(const platform::GridMouseEvent& event) override { Hear("up", static_cast<int>(event.button)); }
  void DoubleClick() override { heard_ += "double "; }
  void AfterUserResize(int row, int column) override { Hear(row >= 0 ? "row" : "column", row >= 0 ? row : column); }
  void AfterMoveColumn(int column, int position) override {
    Hear("moved", column);
    Hear("to", position);
  }
  const std::string& heard() const { return heard_; }

 private:
  void Hear(const char* what, int which) { heard_ += what + std::string(" ") + std::to_string(which) + " "; }

  std::string heard_;
};

std::string Joined(const std::vector<std::string>& lines) {
  std::string joined;
  for (const std::string& line : lines) joined += line + " | ";
  return joined;
}

// The open menus: captions, "x" for checked, "-" for disabled.
std::string OpenMenus() {
  std::string menus;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    const auto* menu = qobject_cast<const QMenu*>(window);
    if (menu == nullptr || !menu->isVisible()) continue;
    for (const QAction* action : menu->actions()) {
      if (action->isSeparator() || !action->isVisible()) continue;
      menus +=
          action->text().toStdString() + (action->isChecked() ? " x" : "") + (action->isEnabled() ? "" : " -") + "|";
    }
  }
  return menus;
}

const char* NameOf(Qt::CursorShape shape) {
  switch (shape) {
    case Qt::ArrowCursor:
      return "arrow";
    case Qt::SplitHCursor:
    case Qt::SizeHorCursor:
      return "column";
    case Qt::SplitVCursor:
    case Qt::SizeVerCursor:
      return "row";
    default:
      return "other";
  }
}

std::string OneLine(const QString& text) {
  QString line = text;
  line.replace('\\', "\\\\").replace('\t', "\\t").replace('\r', "\\r").replace('\n', "\\n");
  return line.toStdString();
}

// Where the mouse last moved, and how often the window received Escape, which would close a dialog.
class Watch : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::MouseMove) seen_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
    if (event->type() == QEvent::KeyPress && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
      ++escapes_;
    return false;
  }
  QPoint seen() const { return seen_; }
  int escapes() const { return escapes_; }
  void Forget() { escapes_ = 0; }

 private:
  QPoint seen_;
  int escapes_ = 0;
};

class Host {
 public:
  Host() : window_(std::make_unique<QWidget>()) {
    window_->setGeometry(0, 0, 760, 520);
    layout_ = new QVBoxLayout(window_.get());
    layout_->setContentsMargins(4, 4, 4, 4);
    before_ = new QLineEdit(window_.get());
    after_ = new QLineEdit(window_.get());
    layout_->addWidget(before_);
    layout_->addWidget(after_);
    QApplication::instance()->installEventFilter(&watch_);
    Reset();
    window_->show();
  }
  ~Host() { Clear(); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void Obey(const std::string& line) {
    std::istringstream words(line);
    std::string what;
    words >> what >> std::ws;
    std::string rest;
    std::getline(words, rest);
    int first = 0;
    int second = 0;
    std::istringstream(rest) >> first >> second;
    if (what == "reset") Reset();
    if (what == "journal") ShowJournal();
    if (what == "column") std::cout << "index=" << sheet_->ColIndex(rest) << "\n";
    if (what == "item") TellItem(QString::fromStdString(rest));
    if (what == "double_clicks") QApplication::setDoubleClickInterval(first);
    if (what == "freeze") sheet_->SetFrozenCols(first);
    if (what == "state") TellState();
    if (what == "cell") TellCell(first, second);
    if (what == "pixel") TellPixel({first, second});
    if (what == "quit") QApplication::quit();
    std::cout << ".\n" << std::flush;
  }

 private:
  void Clear() {
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    journal_.reset();
    own_view_.reset();
    own_sheet_.reset();
    listener_ = Listener();
    watch_.Forget();
  }

  void Reset() {
    Clear();
    own_sheet_ = std::make_unique<sheet::GridSheet>();
    SampleLedger().Fill(*own_sheet_);
    own_sheet_->SetObserver(&listener_);
    own_sheet_->view().SetClipboard(&clipboard_);
    own_view_ = std::make_unique<qt::SheetWidget>(own_sheet_->view());
    own_view_->setParent(window_.get());
    Show(*own_view_, *own_view_, *own_sheet_);
  }

  void ShowJournal() {
    Clear();
    journal_ = std::make_unique<qt::StockbookWidget>(window_.get());
    journal_->control().SetConn(SmallJournal());
    journal_->Load(7, 0);
    journal_->control().AddListener(&journalist_);
    journalist_.lines.clear();
    Show(*journal_, *journal_->findChild<qt::SheetWidget*>(), journal_->sheet());
  }

  void Show(QWidget& widget, qt::SheetWidget& view, sheet::GridSheet& sheet) {
    view_ = &view;
    sheet_ = &sheet;
    layout_->insertWidget(1, &widget);
    QWidget::setTabOrder(before_, &view);
    QWidget::setTabOrder(&view, after_);
    widget.show();
    view.setFocus();
    QApplication::setDoubleClickInterval(kNoDoubleClicks);
    QApplication::clipboard()->clear();
    QToolTip::hideText();
  }

  void TellState() const {
    const sheet::Selection& selection = sheet_->view().selection();
    const sheet::ScrollPosition scroll = sheet_->view().geometry().scroll();
    std::ostringstream columns;
    for (int column = 0; column < sheet_->Cols(); ++column)
      columns << sheet_->ColKey(column) << ":" << sheet_->ColWidth(column) / 15 << " ";
    std::ostringstream heights;
    for (int row = 0; row < 6; ++row) heights << sheet_->RowHeight(row) / 15 << " ";
    std::ostringstream closed;
    for (int row = sheet_->NextSubtotal(0); row >= 0; row = sheet_->NextSubtotal(row + 1))
      if (sheet_->IsCollapsed(row) && sheet_->outline().Governs(row)) closed << row << " ";
    const QWidget* focus = QApplication::focusWidget();
    std::cout << "window=" << window_->winId() << "\nmouse=" << watch_.seen().x() << " " << watch_.seen().y()
              << "\nescapes=" << watch_.escapes() << "\nactive=" << window_->isActiveWindow() << "\nfocus="
              << (focus == before_  ? "before"
                  : focus == after_ ? "after"
                  : focus           ? "grid"
                                    : "none")
              << "\nsize=" << sheet_->Rows() << " " << sheet_->Cols() << "\ncurrent=" << selection.current.row << " "
              << selection.current.column << "\nend=" << selection.end.row << " " << selection.end.column
              << "\nscroll=" << scroll.x << " " << scroll.y << "\ntop=" << sheet_->TopRow()
              << "\nbottom=" << sheet_->BottomRow() << "\ncolumns=" << columns.str() << "\nheights=" << heights.str()
              << "\nclosed=" << closed.str() << "\ndrop=" << sheet_->view().drop_column()
              << "\ncursor=" << NameOf(view_->viewport()->cursor().shape())
              << "\nclipboard=" << OneLine(QApplication::clipboard()->text())
              << "\ntip=" << (QToolTip::isVisible() ? OneLine(QToolTip::text()) : "")
              << "\nheard=" << (journal_ ? Joined(journalist_.lines) : listener_.heard()) << "\nmenu=" << OpenMenus()
              << "\nfrozen=" << sheet_->FrozenCols() << "\nhidden=" << HiddenColumns()
              << "\nsound=" << sheet_->CheckInvariants() << "\n";
  }

  // The visible part of the cell, in screen coordinates.
  void TellCell(int row, int column) const {
    const sheet::Rect cell = sheet_->view().geometry().VisibleCellRect(row, column);
    const QPoint corner = view_->viewport()->mapToGlobal(QPoint(cell.x, cell.y));
    std::cout << "rect=" << corner.x() << " " << corner.y() << " " << cell.width << " " << cell.height << "\n";
  }

  // The place of the item of an open menu, in screen coordinates.
  static void TellItem(const QString& caption) {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      const auto* menu = qobject_cast<const QMenu*>(window);
      if (menu == nullptr || !menu->isVisible()) continue;
      for (QAction* action : menu->actions()) {
        if (action->text() != caption) continue;
        const QRect area = menu->actionGeometry(action);
        const QPoint corner = menu->mapToGlobal(area.topLeft());
        std::cout << "rect=" << corner.x() << " " << corner.y() << " " << area.width() << " " << area.height() << "\n";
      }
    }
  }

  std::string HiddenColumns() const {
    std::string keys;
    for (int column = 1; column < sheet_->Cols(); ++column)
      if (sheet_->ColHidden(column)) keys += sheet_->ColKey(column) + " ";
    return keys;
  }

  static void TellPixel(QPoint at) {
    const QImage pixel = QApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1).toImage();
    std::cout << "colour=" << QColor(pixel.pixel(0, 0)).name().toStdString() << "\n";
  }

  Watch watch_;
  std::unique_ptr<QWidget> window_;
  QVBoxLayout* layout_ = nullptr;
  QLineEdit* before_ = nullptr;
  QLineEdit* after_ = nullptr;
  Listener listener_;
  qt::QtClipboard clipboard_;
  std::unique_ptr<sheet::GridSheet> own_sheet_;
  std::unique_ptr<qt::SheetWidget> own_view_;
  EventRecorder journalist_;
  std::unique_ptr<qt::StockbookWidget> journal_;
  sheet::GridSheet* sheet_ = nullptr;  // of the ledger or the journal
  qt::SheetWidget* view_ = nullptr;
};

int Run(int count, char** arguments) {
  QApplication application(count, arguments);
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
  return QApplication::exec();
}

}  // namespace
}  // namespace stockbook::testing

int main(int count, char** arguments) { return stockbook::testing::Run(count, arguments); }
