// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>

#include "stockbook/window/hit_list.h"
#include "stockbook/window/hit_marks.h"
#include "stockbook/window/journal_finder.h"

namespace stockbook::app {

// The bar below the journal for finding what its cells show: it searches while the user types, marks all hits and lists
// them with their period. Enter and F3 go to the next hit, with Shift to the previous one, and Esc closes the bar and
// returns the focus to the journal. Case, whole words and patterns count only where the user asks for them.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(qt::StockbookWidget& stockbook, QWidget* parent = nullptr);

  // Shows the bar and gives it the focus.
  void Open();
  // Goes to the next or the previous hit; opens the bar if there are no words yet.
  void Next() { Step(FindStep::kNext); }
  void Previous() { Step(FindStep::kPrevious); }
  // Rows of another journal, or rows that have been hidden since, are no hits: the next step looks anew.
  void Forget();
  QLineEdit& words() { return *words_; }
  QToolButton& match_case() { return *match_case_; }
  QToolButton& whole_words() { return *whole_words_; }
  QToolButton& patterns() { return *patterns_; }
  // Shows or hides the list.
  QToolButton& list_button() { return *list_; }
  // Made when it is first asked for, which few searches do.
  HitList& hits();
  const HitMarks& marks() const { return marks_; }
  // "第 2 条，共 5 条".
  QString Count() const { return count_->text(); }

 signals:
  void Closed();
  // Nothing could be searched for; a message for the user.
  void Failed(const QString& message);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void BuildRow();
  void Connect();
  void Close();
  void Step(FindStep step);
  void Find(FindStep step);
  void ShowCount();
  QString CountText() const;
  FindQuery Query() const;

  qt::StockbookWidget& stockbook_;
  JournalFinder finder_;
  HitMarks marks_;
  HitList* hits_ = nullptr;
  QVBoxLayout* rows_ = nullptr;
  QLineEdit* words_;
  QToolButton* match_case_;
  QToolButton* whole_words_;
  QToolButton* patterns_;
  QToolButton* previous_;
  QToolButton* next_;
  QToolButton* list_;
  QToolButton* close_;
  QLabel* count_;
  QTimer typed_;  // runs while the user types
};

}  // namespace stockbook::app
