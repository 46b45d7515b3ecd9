// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <memory>
#include <optional>
#include <string>

#include "journal/subject_keys.h"
#include "platform/connection.h"
#include "qt/stockbook_widget.h"
#include "stockbook/window/column_memory.h"
#include "stockbook/window/find_bar.h"
#include "stockbook/window/journal_bar.h"
#include "stockbook/window/journal_desk.h"
#include "stockbook/window/message_line.h"
#include "stockbook/window/selection_clipboard.h"
#include "stockbook/window/selection_line.h"
#include "stockbook/window/window_colours.h"

namespace stockbook::app {

// The reference host: a bar to choose a journal, the journal, a bar to find in it, a line with its messages and a
// progress bar. It does what the control asks of its host: it finds, reloads and shows bills. It is light or dark like
// the desktop, and stores nothing between runs.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(QWidget* parent = nullptr);

  // Throws platform::Error and leaves the window unchanged if it cannot be opened or is not an inventory.
  void OpenDatabase(DatabaseSource source, const AskPassword& ask = {});
  void OpenDatabase(const std::string& argument) { OpenDatabase(DatabaseSource(argument)); }
  // Asks by a dialog that does not show what is typed.
  AskPassword AskInDialog();
  // Loads the journal of the options and shows them in the bar.
  LoadReport LoadJournal(const JournalOptions& options);
  // The material journal of the first product that has lines.
  LoadReport LoadFirstJournal();

  qt::StockbookWidget& stockbook() { return *stockbook_; }
  JournalBar& bar() { return *bar_; }
  FindBar& find_bar() { return *find_bar_; }
  const MessageLine& message() const { return *message_; }
  const SelectionLine& selection_line() const { return *selection_line_; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void BuildMenus();
  void BuildFileMenu();
  void BuildJournalMenu();
  void BuildStatusLine();
  void ConnectControl();
  void TakeLayout();
  void ChooseDatabase();
  void Reload();
  LoadReport Load(const JournalOptions& options);
  bool PutBackShown(const LoadReport& failed, const journal::SubjectKeys& keys);
  void GoToFirstCell();
  void ShowProgress(int indicator);
  void ShowMessage(const QString& message);
  void TakeNotice(const QString& message);
  void ShowBill();
  void ShowStatistics();
  void ObeyCommand(const QString& command);
  void UpdateTitle();

  std::string database_;  // as titles call it
  std::string file_;      // "" for a server
  std::shared_ptr<platform::Connection> connection_;
  bool loading_ = false;
  bool laid_out_ = false;                // the load laid the columns out
  bool row_changed_ = false;             // so its description comes next
  std::optional<JournalOptions> shown_;  // the options of the journal in the grid
  ColumnMemory columns_;
  JournalBar* bar_;
  qt::StockbookWidget* stockbook_;
  FindBar* find_bar_;
  SelectionLine* selection_line_;
  SelectionClipboard clipboard_;
  std::unique_ptr<WindowColours> colours_;
  MessageLine* message_;
  QLabel* row_count_;
  QProgressBar* progress_;
};

}  // namespace stockbook::app
