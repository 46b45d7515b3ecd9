// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolBar>
#include <memory>

#include "stockbook/heading/journal_heading.h"
#include "stockbook/paper/journal_paper.h"
#include "stockbook/paper/page_view.h"
#include "stockbook/qt/grid_printer.h"
#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// Shows the pages of a journal as they will be printed, one at a time, and changes how they stand on paper. Every page
// is painted when it is looked at, so that a journal of thousands opens at once. It prints and saves nothing itself.
// The journal must not change while it is open: it is modal to its window.
class PrintPreview : public QDialog {
  Q_OBJECT

 public:
  PrintPreview(qt::StockbookWidget& journal, JournalHeading heading, const PaperChoice& choice,
               QWidget* parent = nullptr);

  int PageCount() const { return printer_->PageCount(); }
  int page() const { return number_->value() - 1; }
  const PaperChoice& choice() const { return choice_; }
  PageView& view() { return *view_; }
  void GoTo(int page);
  void SetChoice(const PaperChoice& choice);

 signals:
  void PrintWanted();
  void SaveWanted();
  void ChoiceChanged(const stockbook::app::PaperChoice& choice);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  enum class Fit { kPage, kWidth, kNone };

  QToolBar* BuildTools();
  void BuildPageTools(QToolBar& tools);
  void BuildScaleTools(QToolBar& tools);
  void LayOut();
  void ShowPage();
  void FitTo(Fit fit);
  void ZoomBy(double factor);
  void ApplyFit();
  void AskForPage();

  qt::StockbookWidget& journal_;
  JournalHeading heading_;
  PaperChoice choice_;
  std::unique_ptr<qt::GridPrinter> printer_;
  QScrollArea* area_;
  PageView* view_;
  QSpinBox* number_;
  QLabel* count_;
  Fit fit_ = Fit::kPage;
};

}  // namespace stockbook::app
