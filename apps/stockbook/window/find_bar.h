// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include "stockbook/window/journal_finder.h"

namespace stockbook::app {

// The bar below the journal for finding words: Enter and F3 go to the next hit, with Shift to the previous one, and Esc
// closes the bar and returns the focus to the journal. Unless the journal is too long, it searches while the user
// types.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(qt::StockbookWidget& stockbook, QWidget* parent = nullptr);

  // Shows the bar and gives it the focus.
  void Open();
  // Goes to the next or the previous hit; opens the bar if there are no words yet.
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
  QTimer typed_;  // runs while the user types
};

}  // namespace stockbook::app
