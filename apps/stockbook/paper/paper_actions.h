// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QSettings>
#include <QWidget>
#include <functional>
#include <string>

#include "stockbook/heading/journal_heading.h"
#include "stockbook/paper/journal_files.h"
#include "stockbook/paper/journal_paper.h"
#include "stockbook/paper/paper_progress.h"
#include "stockbook/qt/stockbook_widget.h"

class QPrinter;

namespace stockbook::app {

class PrintPreview;

// What a window offers to get a journal out of it: a preview, printing, the set-up of pages, and files. Dialogs belong
// to the window and do not wait; long work shows its progress and can be cancelled. Without a journal it says so.
class PaperActions : public QObject {
  Q_OBJECT

 public:
  // `heading` is asked for whenever something begins; `input` is the file of the inventory, "" for a server.
  struct Window {
    QWidget& window;
    qt::StockbookWidget& journal;
    std::function<JournalHeading()> heading;
    std::function<std::string()> input;
  };

  explicit PaperActions(Window window, QObject* parent = nullptr);
  ~PaperActions() override;

  // From now on keeps how journals stand on paper, in settings that outlive this.
  void Remember(QSettings& settings);
  const PaperChoice& choice() const { return choice_; }
  // How long work may take without telling anything.
  void SetPatience(int patience_ms) { patience_ms_ = patience_ms; }

  void Preview();
  void Print();
  void SetUpPage();
  // Asks for a file, whose ending says of what kind it is.
  void Export();
  // Writes the file in the way of its ending, or else as the format; returns whether it is there.
  bool ExportTo(const QString& path, const JournalFileFormat& format);
  // Prints all pages, or those that the printer was told; returns whether they are printed. A printer that makes a PDF
  // of them all is spared: the file is written as an export is, in a fraction of the time.
  bool PrintTo(QPrinter& printer);

 signals:
  // Something for the window's line of messages.
  void Told(const QString& message);

 private:
  bool HasJournal();
  // What dialogs belong to: the preview while it is open.
  QWidget* Front();
  void SetChoice(const PaperChoice& choice);
  bool WriteFile(const QString& path, const JournalFileFormat& format, const PaperChoice& choice);
  bool PrintPages(QPrinter& printer);
  void AskForFile(const QString& suffix, QWidget* parent);
  void AskForPrinter(QWidget* parent);
  void Fail(const QString& message);

  Window window_;
  PaperChoice choice_;
  QSettings* settings_ = nullptr;
  QPointer<PrintPreview> preview_;
  int patience_ms_ = PaperProgress::kPatienceMs;
};

}  // namespace stockbook::app
