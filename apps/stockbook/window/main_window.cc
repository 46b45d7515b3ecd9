// SPDX-License-Identifier: MIT
#include "stockbook/window/main_window.h"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/column_keys.h"
#include "platform/error.h"
#include "qt/text.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/window/bill_dialog.h"
#include "stockbook/window/reading_place.h"

namespace stockbook::app {
namespace {

namespace keys = base::keys;

constexpr QSize kUsualSize(1280, 800);
constexpr int kProgressWidth = 180;
constexpr int kMostProgress = 100;

// This host has room to show bill numbers, remarks and product names in full, while the control's own layout has to be
// narrow.
struct HostWidth {
  const char* key;
  int twips;
};
constexpr HostWidth kHostWidths[] = {
    {keys::kBillNo, 3900}, {keys::kBillKind, 1050}, {keys::kExplain, 1800}, {keys::kProductName, 3900}};

void WidenColumns(platform::Grid& grid) {
  for (const HostWidth& width : kHostWidths) {
    if (const int column = grid.ColIndex(width.key); column >= 0) grid.SetColWidth(column, width.twips);
  }
}

bool IsSameJournal(const JournalOptions& left, const JournalOptions& right) {
  return left.journal_type == right.journal_type && left.key_id == right.key_id && left.dp_id == right.dp_id &&
         left.dp_code == right.dp_code;
}

}  // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent),
      bar_(new JournalBar),
      stockbook_(new qt::StockbookWidget),
      find_bar_(new FindBar(*stockbook_)),
      selection_line_(new SelectionLine(*stockbook_)),
      clipboard_(*stockbook_),
      colours_(std::make_unique<WindowColours>(*stockbook_)),
      message_(new MessageLine),
      row_count_(new QLabel),
      progress_(new QProgressBar) {
  auto* desk = new QWidget;
  auto* rows = new QVBoxLayout(desk);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(bar_);
  rows->addWidget(stockbook_, 1);
  rows->addWidget(find_bar_);
  setCentralWidget(desk);
  BuildMenus();
  BuildStatusLine();
  ConnectControl();
  resize(kUsualSize);
  UpdateTitle();
  colours_->Follow(palette());
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colours_->Follow(palette());
}

void MainWindow::BuildStatusLine() {
  row_count_->setTextFormat(Qt::PlainText);
  progress_->setRange(0, kMostProgress);
  progress_->setFixedWidth(kProgressWidth);
  progress_->setMaximumHeight(message_->sizeHint().height() + 2);
  progress_->hide();
  statusBar()->addWidget(message_, 1);
  statusBar()->addPermanentWidget(selection_line_);
  statusBar()->addPermanentWidget(progress_);
  statusBar()->addPermanentWidget(row_count_);
}

void MainWindow::ConnectControl() {
  connect(bar_, &JournalBar::LoadWanted, this, &MainWindow::Reload);
  connect(bar_, &JournalBar::Failed, this, &MainWindow::ShowMessage);
  connect(stockbook_, &qt::StockbookWidget::Process, this, &MainWindow::ShowProgress);
  connect(stockbook_, &qt::StockbookWidget::AfterFormatted, this, &MainWindow::TakeLayout);
  connect(stockbook_, &qt::StockbookWidget::Notify, this, &MainWindow::TakeNotice);
  connect(stockbook_, &qt::StockbookWidget::AfterRowChanged, this, [this] { row_changed_ = true; });
  connect(find_bar_, &FindBar::Closed, stockbook_, qOverload<>(&QWidget::setFocus));
  connect(find_bar_, &FindBar::Failed, this, &MainWindow::ShowMessage);
  connect(&clipboard_, &SelectionClipboard::Said, this, &MainWindow::ShowMessage);
  connect(stockbook_, &qt::StockbookWidget::CommandExecute, this,
          [this](const QString& command) { ObeyCommand(command); });
}

// A layout outside a load is the default layout that the user asked for.
void MainWindow::TakeLayout() {
  WidenColumns(stockbook_->Grid());
  if (loading_) {
    laid_out_ = true;
  } else {
    columns_.StartFrom(stockbook_->Grid());
  }
}

AskPassword MainWindow::AskInDialog() {
  return [this](const std::string& database) -> std::optional<std::string> {
    bool accepted = false;
    const QString password =
        QInputDialog::getText(this, QStringLiteral("密码"), QStringLiteral("“%1”的密码：").arg(qt::ToQString(database)),
                              QLineEdit::Password, {}, &accepted);
    if (!accepted) return std::nullopt;
    return qt::FromQString(password);
  };
}

void MainWindow::OpenDatabase(DatabaseSource source, const AskPassword& ask) {
  std::shared_ptr<platform::Connection> connection = OpenInventory(source, SqlDialect::kDesktop, ask);
  bar_->SetInventory(connection);
  connection_ = std::move(connection);
  shown_.reset();
  database_ = source.name();
  file_ = source.file();
  UpdateTitle();
}

void MainWindow::ChooseDatabase() {
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("打开数据库"), QFileInfo(qt::ToQString(file_)).path(),
                                   QStringLiteral("库存数据库 (*.db *.mdb *.accdb);;所有文件 (*)"));
  if (path.isEmpty()) return;
  try {
    OpenDatabase(DatabaseSource(qt::FromQString(path)), AskInDialog());
    LoadFirstJournal();
  } catch (const platform::Error& error) {
    ShowMessage(qt::ToQString(error.what()));
  }
}

LoadReport MainWindow::LoadJournal(const JournalOptions& options) {
  bar_->SetOptions(options);
  return Load(options);
}

LoadReport MainWindow::LoadFirstJournal() {
  JournalOptions options;
  options.key_id = connection_ == nullptr ? 0 : InventoryCatalog(*connection_).FirstProductWithLines();
  return LoadJournal(options);
}

void MainWindow::Reload() { Load(bar_->Options()); }

LoadReport MainWindow::Load(const JournalOptions& options) {
  if (connection_ == nullptr || loading_) return {};
  control::Stockbook& control = stockbook_->control();
  const ReadingPlace place(stockbook_->sheet());
  const bool same = shown_.has_value() && IsSameJournal(*shown_, options);
  const journal::SubjectKeys keys{control.KeyID(), static_cast<int16_t>(control.dpID()), control.dpCode()};
  columns_.Learn(stockbook_->Grid());
  laid_out_ = false;
  loading_ = true;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  LoadReport report = app::LoadJournal(control, connection_, options);
  const bool put_back = !report.loaded && PutBackShown(report, keys);
  QApplication::restoreOverrideCursor();
  loading_ = false;
  if (const std::string error = LoadError(report); !error.empty()) ShowMessage(qt::ToQString(error));
  progress_->hide();
  if (laid_out_) columns_.PutBack(stockbook_->Grid(), control.ColsFilter());
  // The names depend on what the user has shown and hidden.
  ComposeNames(control);
  if (!put_back) shown_ = report.loaded ? std::optional(options) : std::nullopt;
  if (!((same && report.loaded) || put_back) || !place.GoBack(stockbook_->sheet())) GoToFirstCell();
  const size_t records = stockbook_->sheet().RecordCount();
  row_count_->setText(QStringLiteral("共 %L1 行").arg(records));
  UpdateTitle();
  stockbook_->setFocus();
  return report;
}

// Shows the journal again that a failed load was to replace. Returns false if there is none; then the header names
// none.
bool MainWindow::PutBackShown(const LoadReport& failed, const journal::SubjectKeys& keys) {
  control::Stockbook& control = stockbook_->control();
  // A load tells the progress 0 when it has cleared the grid.
  const bool cleared = std::find(failed.process.begin(), failed.process.end(), 0) != failed.process.end();
  if (shown_.has_value() && !cleared) {
    SetUpJournal(control, *shown_);
    control.SetdpCode(keys.dpCode);
    if (control.KeyID() != keys.KeyID) control.SetKeyID(keys.KeyID);
    return true;
  }
  if (shown_.has_value() && app::LoadJournal(control, connection_, *shown_).loaded) return true;
  if (stockbook_->sheet().RecordCount() == 0) control.SetCaption({});
  return false;
}

// Let the keyboard start from a visible cell.
void MainWindow::GoToFirstCell() {
  platform::Grid& grid = stockbook_->Grid();
  if (grid.Rows() > grid.FixedRows() && grid.OutlineCol() >= 0) grid.Select(grid.FixedRows(), grid.OutlineCol());
}

// Load does not return to the event loop, so whatever should be visible meanwhile is painted here.
void MainWindow::ShowProgress(int indicator) {
  if (indicator < 0) {
    progress_->hide();
    return;
  }
  if (progress_->isVisible() && progress_->value() == indicator) return;
  progress_->setValue(indicator);
  progress_->show();
  if (isVisible()) progress_->repaint();
}

void MainWindow::ShowMessage(const QString& message) {
  message_->Show(message);
  if (loading_ && isVisible()) message_->repaint();
}

// The control describes the new current row, usually with an empty text, which must not clear the previous message.
void MainWindow::TakeNotice(const QString& message) {
  const bool is_description =
      std::exchange(row_changed_, false) || message.isEmpty() || message == message_->Description();
  if (is_description && !loading_) {
    message_->Describe(message);
  } else {
    ShowMessage(message);
  }
}

void MainWindow::UpdateTitle() {
  QString title = QStringLiteral("库存台账");
  if (!database_.empty()) title = file_.empty() ? qt::ToQString(database_) : QFileInfo(qt::ToQString(file_)).fileName();
  const QString caption = qt::ToQString(stockbook_->control().Caption());
  if (!caption.isEmpty()) title = caption + QStringLiteral(" — ") + title;
  setWindowTitle(title);
}

void MainWindow::BuildMenus() {
  BuildFileMenu();
  BuildJournalMenu();
}

void MainWindow::BuildFileMenu() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("文件(&F)"));
  QAction* open = file->addAction(QStringLiteral("打开数据库(&O)..."), this, &MainWindow::ChooseDatabase);
  open->setShortcut(QKeySequence::Open);
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("退出(&X)"), this, &QWidget::close);
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void MainWindow::BuildJournalMenu() {
  QMenu* journal = menuBar()->addMenu(QStringLiteral("台账(&J)"));
  QAction* load = journal->addAction(QStringLiteral("载入(&L)"), this, &MainWindow::Reload);
  load->setShortcut(QKeySequence(Qt::Key_F5));
  journal->addSeparator();
  QAction* find = journal->addAction(QStringLiteral("查找(&F)"), find_bar_, &FindBar::Open);
  find->setShortcut(QKeySequence::Find);
  QAction* next = journal->addAction(QStringLiteral("查找下一个(&N)"), find_bar_, &FindBar::Next);
  next->setShortcut(QKeySequence(Qt::Key_F3));
  QAction* previous = journal->addAction(QStringLiteral("查找上一个(&R)"), find_bar_, &FindBar::Previous);
  previous->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3));
  journal->addSeparator();
  QAction* copy = journal->addAction(QStringLiteral("复制本格(&V)"), &clipboard_, &SelectionClipboard::CopyCell);
  copy->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
  journal->addSeparator();
  QAction* bill = journal->addAction(QStringLiteral("查看单据(&B)..."), this, &MainWindow::ShowBill);
  bill->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
  QAction* statistics = journal->addAction(QStringLiteral("统计(&S)..."), this, &MainWindow::ShowStatistics);
  statistics->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
}

// The control is in the middle of an event when it asks, so anything lengthy waits until it has returned.
void MainWindow::ObeyCommand(const QString& command) {
  if (command == QLatin1String("Refresh")) {
    QMetaObject::invokeMethod(this, &MainWindow::Reload, Qt::QueuedConnection);
  } else if (command == QLatin1String("Find")) {
    QMetaObject::invokeMethod(find_bar_, &FindBar::Open, Qt::QueuedConnection);
  } else if (command == QLatin1String("Bill")) {
    QMetaObject::invokeMethod(this, &MainWindow::ShowBill, Qt::QueuedConnection);
  }
}

void MainWindow::ShowBill() {
  const BillView bill = ReadBill(stockbook_->control(), stockbook_->Row());
  if (bill.lines.empty()) {
    ShowMessage(QStringLiteral("这一行不属于任何单据。"));
    return;
  }
  auto* dialog = new BillDialog(bill, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

void MainWindow::ShowStatistics() {
  const QString statistics = stockbook_->Statistics();
  // In that case the control has reported why there are none.
  if (statistics.isEmpty()) return;
  auto* box =
      new QMessageBox(QMessageBox::Information, QStringLiteral("统计"), statistics, QMessageBox::NoButton, this);
  box->setTextFormat(Qt::PlainText);
  box->addButton(QStringLiteral("关闭(&C)"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace stockbook::app
