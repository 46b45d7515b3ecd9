// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QSettings>
#include <memory>
#include <optional>
#include <string>

#include "stockbook/paper/paper_actions.h"
#include "stockbook/qt/stockbook_widget.h"
#include "stockbook/window/column_actions.h"
#include "stockbook/window/coverage_label.h"
#include "stockbook/window/find_bar.h"
#include "stockbook/window/import_actions.h"
#include "stockbook/window/journal_bar.h"
#include "stockbook/window/journal_columns.h"
#include "stockbook/window/journal_desk.h"
#include "stockbook/window/journal_history.h"
#include "stockbook/window/journal_links.h"
#include "stockbook/window/journal_views.h"
#include "stockbook/window/journal_zoom.h"
#include "stockbook/window/margin_menu.h"
#include "stockbook/window/message_line.h"
#include "stockbook/window/selection_clipboard.h"
#include "stockbook/window/selection_line.h"
#include "stockbook/window/shown_journal.h"
#include "stockbook/window/window_colours.h"
#include "stockbook/window/window_menus.h"
#include "stockbook/window/window_reading.h"
#include "stockbook/window/window_recall.h"

namespace stockbook::app {

// The reference host: a bar to choose a journal, the journal, a bar to find in it, a line with its messages and a
// progress bar. It does what the control asks of its host: it finds, reloads and shows bills. It is light or dark like
// the desktop, and remembers between runs what Remember is given settings for.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(QWidget* parent = nullptr);

  // From now on keeps in the settings, which outlive the window, what it remembers, and is as it was left. Called
  // before an inventory is opened.
  void Remember(QSettings& settings);
  // Throws platform::Error and leaves the window unchanged if it cannot be opened or is not an inventory.
  void OpenDatabase(DatabaseSource source, const AskPassword& ask = {});
  void OpenDatabase(const std::string& argument) { OpenDatabase(DatabaseSource(argument)); }
  // Asks by a dialog that does not show what is typed.
  AskPassword AskInDialog();
  // Loads the journal of the options and shows them in the bar.
  LoadReport LoadJournal(const JournalOptions& options);
  // The journal that was last shown of the inventory if the window remembers one, otherwise the material journal of the
  // first product that has lines.
  LoadReport LoadFirstJournal();
  // Once the program handles events: loads the journal of the options, or the first one. Errors are shown in the
  // window.
  void LoadOnceRunning(const std::optional<JournalOptions>& options);
  // As the user does it: errors are shown in the window.
  void OpenFile(const QString& path);

  qt::StockbookWidget& stockbook() { return *stockbook_; }
  JournalBar& bar() { return *bar_; }
  FindBar& find_bar() { return *find_bar_; }
  WindowMenus& menus() { return *menus_; }
  ShownJournal& journal() { return *journal_; }
  WindowReading& reading() { return *reading_; }
  JournalColumns& columns() { return *columns_; }
  ColumnActions& column_actions() { return *column_actions_; }
  JournalLinks& links() { return *links_; }
  // Null for a window that remembers nothing.
  WindowRecall* recall() { return recall_.get(); }
  JournalViews& views() { return *views_; }
  const MessageLine& message() const { return *message_; }
  const SelectionLine& selection_line() const { return *selection_line_; }
  PaperActions& paper() { return *paper_; }
  const CoverageLabel& coverage() const { return *coverage_; }
  // What titles and pages say of the journal that is shown.
  JournalHeading Heading();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void BuildFeatures();
  void BuildStatusLine();
  void ConnectControl();
  void ChooseDatabase();
  // Opens an inventory, and offers to import a table.
  void TakeFile(const QString& path);
  void Reload();
  // Something is being read, beside the interface or into the grid.
  bool IsBusy() const;
  LoadReport Load(const JournalOptions& options);
  void ShowProgress(int indicator);
  bool IsTimeToPaint();
  void ShowMessage(const QString& message);
  void TakeNotice(const QString& message);
  void ShowStatistics();
  void ShowHelp();
  void SearchSubject();
  void ObeyCommand(const QString& command);
  void UpdateTitle();

  std::string database_;      // as titles call it
  std::string file_;          // "" for a server
  bool row_changed_ = false;  // so its description comes next
  JournalBar* bar_;
  qt::StockbookWidget* stockbook_;
  FindBar* find_bar_;
  SelectionLine* selection_line_;
  SelectionClipboard clipboard_;
  WindowMenus* menus_;
  std::unique_ptr<JournalColumns> columns_;
  std::unique_ptr<ShownJournal> journal_;
  WindowReading* reading_;
  std::unique_ptr<ColumnActions> column_actions_;
  std::unique_ptr<JournalHistory> history_;
  std::unique_ptr<JournalLinks> links_;
  std::unique_ptr<JournalZoom> zoom_;
  std::unique_ptr<MarginMenu> margin_menu_;
  std::unique_ptr<WindowRecall> recall_;  // if the window remembers anything
  JournalViews* views_;
  std::unique_ptr<WindowColours> colours_;
  PaperActions* paper_;
  ImportActions* import_;
  MessageLine* message_;
  CoverageLabel* coverage_;
  QLabel* row_count_;
  QProgressBar* progress_;
  QElapsedTimer painted_;  // since what a load tells was last painted
};

}  // namespace stockbook::app
