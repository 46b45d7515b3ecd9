// SPDX-License-Identifier: MIT
#include "stockbook/window/main_window.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QVBoxLayout>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/file_drop.h"
#include "stockbook/window/help_dialog.h"
#include "stockbook/window/key_hints.h"
#include "stockbook/window/language_menu.h"
#include "stockbook/window/password_question.h"
#include "stockbook/window/reading_place.h"
#include "stockbook/window/room_keeper.h"
#include "stockbook/window/subject_search.h"

namespace stockbook::app {
namespace {

constexpr QSize kUsualSize(1280, 800);
constexpr int kProgressWidth = 180;
constexpr int kMostProgress = 100;
constexpr int kPaintPauseMs = 50;

bool ShowsSame(const JournalOptions& left, const JournalOptions& right) {
  return IsSameJournal(left, right) && left.allow_qty2 == right.allow_qty2 && left.allow_inv == right.allow_inv &&
         left.acc_restrict == right.acc_restrict;
}

}  // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent),
      bar_(new JournalBar),
      stockbook_(new qt::StockbookWidget),
      find_bar_(new FindBar(*stockbook_)),
      selection_line_(new SelectionLine(*stockbook_)),
      clipboard_(*stockbook_),
      menus_(new WindowMenus(*menuBar())),
      columns_(std::make_unique<JournalColumns>(*stockbook_)),
      journal_(std::make_unique<ShownJournal>(*stockbook_, *columns_)),
      reading_(new WindowReading({*this, *stockbook_, *journal_, *menus_,
                                  [this](const JournalOptions& options) { return LoadJournal(options); }})),
      views_(new JournalViews(*this, *stockbook_)),
      colours_(std::make_unique<WindowColours>(*stockbook_)),
      paper_(new PaperActions({*this, *stockbook_, [this] { return Heading(); }, [this] { return file_; }}, this)),
      import_(new ImportActions(*this)),
      message_(new MessageLine),
      coverage_(new CoverageLabel),
      row_count_(new QLabel),
      progress_(new QProgressBar) {
  auto* desk = new QWidget;
  auto* rows = new QVBoxLayout(desk);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(bar_);
  rows->addWidget(&reading_->strip());
  rows->addWidget(&views_->range_bar());
  rows->addWidget(stockbook_, 1);
  rows->addWidget(find_bar_);
  setCentralWidget(desk);
  BuildMenus();
  BuildFeatures();
  BuildStatusLine();
  ConnectControl();
  new RoomKeeper(*this, *bar_, {&views_->range_bar(), find_bar_, &views_->periods(), &views_->plot()});
  resize(kUsualSize);
  UpdateTitle();
  colours_->Follow(palette());
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colours_->Follow(palette());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (recall_ != nullptr) recall_->KeepWindow();
  QMainWindow::closeEvent(event);
}

void MainWindow::Remember(QSettings& settings) {
  recall_ = std::make_unique<WindowRecall>(
      settings, RecallParts{*this, *stockbook_, *journal_, *bar_, *zoom_, *menus_, views_->panel_height()});
  connect(new LanguageMenu(settings, *menus_, this), &LanguageMenu::Told, this, &MainWindow::ShowMessage);
  connect(recall_.get(), &WindowRecall::FileWanted, this, &MainWindow::OpenFile);
  connect(recall_.get(), &WindowRecall::Forgotten, columns_.get(), &JournalColumns::LayOutAnew);
  connect(recall_.get(), &WindowRecall::Forgotten, views_, [this] { views_->ShowRange({}); });
  paper_->Remember(settings);
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
  statusBar()->addPermanentWidget(coverage_);
  statusBar()->addPermanentWidget(row_count_);
}

void MainWindow::ConnectControl() {
  connect(bar_, &JournalBar::LoadWanted, this, &MainWindow::Reload);
  connect(bar_, &JournalBar::Failed, this, &MainWindow::ShowMessage);
  connect(paper_, &PaperActions::Told, this, &MainWindow::ShowMessage);
  connect(stockbook_, &qt::StockbookWidget::Process, this, &MainWindow::ShowProgress);
  connect(stockbook_, &qt::StockbookWidget::Notify, this, &MainWindow::TakeNotice);
  connect(stockbook_, &qt::StockbookWidget::AfterRowChanged, this, [this] { row_changed_ = true; });
  connect(views_, &JournalViews::Told, this, &MainWindow::ShowMessage);
  connect(views_, &JournalViews::RangeChanged, this, [this] {
    journal_->SetRange(views_->range());
    find_bar_->Forget();
    row_count_->setText(views_->RowCount());
    UpdateTitle();
  });
  connect(find_bar_, &FindBar::Closed, stockbook_, qOverload<>(&QWidget::setFocus));
  connect(find_bar_, &FindBar::Failed, this, &MainWindow::ShowMessage);
  connect(&clipboard_, &SelectionClipboard::Said, this, &MainWindow::ShowMessage);
  connect(stockbook_, &qt::StockbookWidget::CommandExecute, this,
          [this](const QString& command) { ObeyCommand(command); });
}

AskPassword MainWindow::AskInDialog() {
  return [this](const std::string& database) { return AskForPassword(*this, database); };
}

void MainWindow::OpenDatabase(DatabaseSource source, const AskPassword& ask) {
  const auto connection = reading_->Open(source, ask);
  bar_->SetInventory(connection);
  if (recall_ != nullptr) recall_->LeaveInventory();
  journal_->SetConnection(connection);
  reading_->Use(connection, source, ask);
  history_->Clear();
  database_ = source.name();
  file_ = source.file();
  if (recall_ != nullptr) {
    const QString path = file_.empty() ? QString() : QFileInfo(qt::ToQString(file_)).absoluteFilePath();
    recall_->EnterInventory(file_.empty() ? database_ : qt::FromQString(path), path);
  }
  coverage_->hide();
  views_->AfterLoad({});
  UpdateTitle();
}

void MainWindow::ChooseDatabase() {
  const QString path = QFileDialog::getOpenFileName(this, tr("打开数据库"), QFileInfo(qt::ToQString(file_)).path(),
                                                    tr("库存数据库 (*.db *.mdb *.accdb);;所有文件 (*)"));
  if (!path.isEmpty()) OpenFile(path);
}

bool MainWindow::IsBusy() const { return journal_->IsLoading() || reading_->loader().beside().IsRunning(); }

void MainWindow::OpenFile(const QString& path) {
  if (IsBusy()) return ShowMessage(tr("正在读取：请等它完成，或先取消（Esc）。"));
  try {
    OpenDatabase(DatabaseSource(qt::FromQString(path)), AskInDialog());
  } catch (const platform::Error& error) {
    const QString reason = qt::ToQString(error.what());
    // Whoever cancelled knows why, whatever the engine said of it.
    const bool cancelled = reading_->loader().beside().WasCancelled();
    return cancelled ? ShowMessage(tr("已取消打开。")) : reading_->TellThatItCannotBeOpened(path, reason);
  }
  try {
    LoadFirstJournal();
  } catch (const platform::Error& error) {
    ShowMessage(qt::ToQString(error.what()));
  }
}

void MainWindow::TakeFile(const QString& path) {
  ImportActions::IsTable(path) && !IsBusy() ? import_->Import(path) : OpenFile(path);
}

LoadReport MainWindow::LoadJournal(const JournalOptions& options) {
  if (IsBusy()) return {};
  bar_->SetOptions(options);
  return Load(options);
}

LoadReport MainWindow::LoadFirstJournal() {
  if (const auto last = recall_ == nullptr ? std::nullopt : recall_->LastSubject(); last.has_value()) {
    // The inventory may have lost the subject meanwhile.
    LoadReport report = LoadJournal(*last);
    if (report.cancelled || (report.loaded && stockbook_->sheet().RecordCount() > 0)) return report;
  }
  JournalOptions options;
  platform::Connection* connection = journal_->connection();
  options.key_id = connection == nullptr ? 0 : InventoryCatalog(*connection).FirstProductWithLines();
  if (options.key_id == 0) options.key_id = bar_->Options().key_id;
  return LoadJournal(options);
}

// A journal that is read in a moment appears with the window. While a longer one is read beside the interface, the
// window is painted and takes Cancel.
void MainWindow::LoadOnceRunning(const std::optional<JournalOptions>& options) {
  QMetaObject::invokeMethod(
      this,
      [this, options] {
        try {
          options.has_value() ? LoadJournal(*options) : LoadFirstJournal();
        } catch (const platform::Error& error) {
          ShowMessage(qt::ToQString(error.what()));
        }
      },
      Qt::QueuedConnection);
}

void MainWindow::Reload() {
  bar_->TakeTypedTexts();
  JournalOptions options = bar_->Options();
  options.range = views_->range();
  Load(options);
}

LoadReport MainWindow::Load(const JournalOptions& options) {
  if (journal_->connection() == nullptr || IsBusy()) return {};
  const ReadingPlace place(stockbook_->sheet());
  const auto before = journal_->options();
  painted_.start();
  LoadReport report = journal_->Load(options);
  // The bar always names the journal below it.
  if (const auto& shown = journal_->options(); shown.has_value() && !ShowsSame(*shown, bar_->Options()))
    bar_->SetOptions(*shown);
  if (const std::string error = LoadError(report); !error.empty()) ShowMessage(qt::ToQString(error));
  progress_->hide();
  views_->AfterLoad(journal_->options().has_value() ? journal_->options()->range : JournalRange{});
  // Rows that the range hides have moved the place.
  const auto& now = journal_->options();
  const bool same = before && now && IsSameJournal(*before, *now);
  if (report.loaded && same && !now->range.IsAll() && now->range == before->range) place.GoBack(stockbook_->sheet());
  if (report.loaded && !same && recall_ != nullptr) recall_->ReturnToPlace();
  row_count_->setText(views_->RowCount());
  if (report.loaded) coverage_->Tell(*journal_->connection(), options);
  if (!journal_->options().has_value()) coverage_->hide();
  UpdateTitle();
  stockbook_->setFocus();
  return report;
}

// Load does not return to the event loop, so whatever should be visible meanwhile is painted here, but only now and
// then: to paint a bar a hundred times takes longer than to load a journal of some thousand lines.
bool MainWindow::IsTimeToPaint() {
  if (!isVisible() || !painted_.hasExpired(kPaintPauseMs)) return false;
  painted_.start();
  return true;
}

void MainWindow::ShowProgress(int indicator) {
  if (indicator < 0) {
    progress_->hide();
    return;
  }
  if (!IsTimeToPaint()) return;
  progress_->setValue(indicator);
  progress_->show();
  progress_->repaint();
}

void MainWindow::ShowMessage(const QString& message) {
  message_->Show(message);
  if (journal_->IsLoading() && IsTimeToPaint()) message_->repaint();
}

// The control describes the new current row, usually with an empty text, which must not clear the previous message.
void MainWindow::TakeNotice(const QString& message) {
  const bool is_description =
      std::exchange(row_changed_, false) || message.isEmpty() || message == message_->Description();
  if (is_description && !journal_->IsLoading()) {
    message_->Describe(message);
  } else {
    ShowMessage(message);
  }
}

JournalHeading MainWindow::Heading() {
  const control::Stockbook& control = stockbook_->control();
  return HeadingOf(stockbook_->sheet(), control.JournalType(), control.Caption(), file_.empty() ? database_ : file_);
}

void MainWindow::UpdateTitle() { setWindowTitle(qt::ToQString(Heading().WindowTitle())); }

void MainWindow::BuildMenus() {
  WindowMenus& menus = *menus_;
  menus.Add(MenuPlace::kFileOpen, tr("打开数据库(&O)..."), QKeySequence::Open, this, &MainWindow::ChooseDatabase);
  menus.Add(MenuPlace::kFileOpen, tr("导入(&I)..."), QKeySequence(Qt::CTRL | Qt::Key_I), this,
            [this] { import_->Choose(qt::ToQString(file_)); });
  menus.Add(MenuPlace::kFileOutput, tr("打印预览(&V)..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), paper_,
            &PaperActions::Preview);
  menus.Add(MenuPlace::kFileOutput, tr("打印(&P)..."), QKeySequence::Print, paper_, &PaperActions::Print);
  menus.Add(MenuPlace::kFileOutput, tr("页面设置(&U)..."), {}, paper_, &PaperActions::SetUpPage);
  menus.Add(MenuPlace::kFileOutput, tr("导出(&E)..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), paper_,
            &PaperActions::Export);
  menus.Add(MenuPlace::kFileEnd, tr("退出(&X)"), CloseKeys(), this, &QWidget::close);
  menus.Add(MenuPlace::kEditFind, tr("查找(&F)"), QKeySequence::Find, find_bar_, &FindBar::Open);
  menus.Add(MenuPlace::kEditFind, tr("查找下一个(&N)"), QKeySequence(Qt::Key_F3), find_bar_, &FindBar::Next);
  menus.Add(MenuPlace::kEditFind, tr("查找上一个(&R)"), QKeySequence(Qt::SHIFT | Qt::Key_F3), find_bar_,
            &FindBar::Previous);
  menus.Add(MenuPlace::kViewJournal, tr("载入(&L)"), QKeySequence(Qt::Key_F5), this, &MainWindow::Reload);
  menus.Add(MenuPlace::kViewJournal, tr("统计(&S)..."), QKeySequence(Qt::CTRL | Qt::Key_T), this,
            &MainWindow::ShowStatistics);
  menus.Add(MenuPlace::kEditCopy, tr("复制(&C)"), QKeySequence::Copy, this,
            [this] { stockbook_->sheet().view().observer().Copy(); });
  menus.Add(MenuPlace::kEditCopy, tr("复制本格(&V)"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), &clipboard_,
            &SelectionClipboard::CopyCell);
  menus.Add(MenuPlace::kGoBack, tr("转到台账(&K)..."), QKeySequence(Qt::CTRL | Qt::Key_K), this,
            &MainWindow::SearchSubject);
  views_->AddActions(*menus.AddMenu(MenuPlace::kViewPanels, tr("区间、汇总与走势(&R)")));
  menus.Add(MenuPlace::kHelp, tr("快捷键与版本(&K)..."), QKeySequence::HelpContents, this, &MainWindow::ShowHelp);
}

void MainWindow::BuildFeatures() {
  menus_->SetBusy([this] { return IsBusy(); });
  views_->SetBusy([this] { return IsBusy(); });
  connect(journal_.get(), &ShownJournal::Arrived, views_, &JournalViews::LoadEnded);
  const auto load = [this](const JournalOptions& options) { return LoadJournal(options); };
  column_actions_ = std::make_unique<ColumnActions>(*stockbook_, *columns_, *menus_);
  history_ = std::make_unique<JournalHistory>(*stockbook_, *journal_, *menus_, load);
  links_ = std::make_unique<JournalLinks>(*stockbook_, *journal_, *menus_, load);
  zoom_ = std::make_unique<JournalZoom>(*stockbook_, *menus_);
  margin_menu_ = std::make_unique<MarginMenu>(
      *stockbook_, menus_->ActionsOf({MenuPlace::kViewColumns, MenuPlace::kViewPeriods, MenuPlace::kViewJournal}));
  connect(columns_.get(), &JournalColumns::Told, this, &MainWindow::ShowMessage);
  connect(columns_.get(), &JournalColumns::Changed, views_, &JournalViews::ColumnsChanged);
  connect(reading_, &WindowReading::Told, this, &MainWindow::ShowMessage);
  connect(reading_, &WindowReading::Replaced, bar_, &JournalBar::ReadAgain);
  connect(zoom_.get(), &JournalZoom::Changed, columns_.get(), &JournalColumns::ViewChanged);
  connect(links_.get(), &JournalLinks::Told, this, &MainWindow::ShowMessage);
  connect(new FileDrop(*this), &FileDrop::Dropped, this, &MainWindow::TakeFile);
  connect(import_, &ImportActions::Imported, this, [this](const QString& file, const QString& message) {
    OpenFile(file);
    ShowMessage(message);
  });
  HintAtKeys(*stockbook_);
}

void MainWindow::SearchSubject() {
  platform::Connection* connection = journal_->connection();
  if (connection == nullptr || IsBusy()) return;
  try {
    auto* search =
        new SubjectSearch(*connection, recall_ == nullptr ? nullptr : &recall_->uses(), bar_->Options().key_id, this);
    search->setAttribute(Qt::WA_DeleteOnClose);
    connect(search, &SubjectSearch::Chosen, this, [this](const JournalOptions& options) { LoadJournal(options); });
    search->open();
  } catch (const platform::Error& error) {
    ShowMessage(qt::ToQString(error.what()));
  }
}

void MainWindow::ShowHelp() {
  auto* dialog = new HelpDialog(*menus_, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

// The control is in the middle of an event when it asks, so anything lengthy waits until it has returned.
void MainWindow::ObeyCommand(const QString& command) {
  if (command == QLatin1String("Refresh")) {
    QMetaObject::invokeMethod(this, &MainWindow::Reload, Qt::QueuedConnection);
  } else if (command == QLatin1String("Find")) {
    QMetaObject::invokeMethod(find_bar_, &FindBar::Open, Qt::QueuedConnection);
  } else if (command == QLatin1String("Bill")) {
    QMetaObject::invokeMethod(&reading_->trail(), &BillTrail::Show, Qt::QueuedConnection);
  }
}

void MainWindow::ShowStatistics() {
  const QString statistics = stockbook_->Statistics();
  // In that case the control has reported why there are none.
  if (statistics.isEmpty()) return;
  auto* box = new QMessageBox(QMessageBox::Information, tr("统计"), statistics, QMessageBox::NoButton, this);
  box->setTextFormat(Qt::PlainText);
  box->addButton(tr("关闭(&C)"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace stockbook::app
