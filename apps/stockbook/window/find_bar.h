// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include "stockbook/window/journal_finder.h"

namespace stockbook::app {

// The bar under the journal to find words in it: Enter and F3 go to the next hit, with Shift to the previous one, Esc
// closes the bar and gives the keys back to the journal. In a journal that is not too long it finds while one types.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(qt::StockbookWidget& stockbook, QWidget* parent = nullptr);

  // Shows the bar with the keys in it.
  void Open();
  // To the next or the previous hit of the words; opens the bar when there are none yet.
  void Next() { Step(FindStep::kNext); }
  void Previous() { Step(FindStep::kPrevious); }
  QLineEdit& words() { return *words_; }
  // "第 2 条，共 5 条".
  QString Count() const { return count_->text(); }

 signals:
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildRow();
  void Step(FindStep step);
  void Find(FindStep step);
  void ShowCount();

  qt::StockbookWidget& stockbook_;
  JournalFinder finder_;
  QLineEdit* words_;
  QToolButton* previous_;
  QToolButton* next_;
  QToolButton* close_;
  QLabel* count_;
  QTimer typed_;  // runs while one types
};

}  // namespace stockbook::app
