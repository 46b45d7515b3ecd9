// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QToolButton>
#include <QWidget>
#include <functional>
#include <optional>

#include "stockbook/range/journal_range.h"
#include "stockbook/range/range_presets.h"

namespace stockbook::app {

// The bar above the journal for showing a part of it: months, quarter and year at hand, or from one period or day to
// another. Enter shows what is typed; Esc puts back what is shown and returns the focus to the journal. The bar stays
// as long as a part is shown, so that nobody takes it for the whole.
class RangeBar : public QWidget {
  Q_OBJECT

 public:
  // A day counted from the zero date.
  using Today = std::function<int64_t()>;

  explicit RangeBar(QWidget* parent = nullptr);

  // Shows the bar and gives the focus to its first field.
  void Open();
  // What is shown of the journal now, and its last period.
  void SetRange(const JournalRange& range, const std::optional<PeriodKey>& newest);
  const JournalRange& range() const { return range_; }
  void SetToday(Today today) { today_ = std::move(today); }

  // As their entries in the list, and the arrows beside it.
  void Choose(RangePreset preset);
  void Step(int steps);

  QComboBox& presets() { return *presets_; }
  QLineEdit& from() { return *from_; }
  QLineEdit& to() { return *to_; }

 signals:
  void RangeWanted(const stockbook::app::JournalRange& range);
  // What was typed is no range; a message for the user.
  void Failed(const QString& message);
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildRow();
  void AddIcons();
  void TakeTyped();
  void ShowRange();
  // Nothing for an empty field. False, with a message, if what is typed is no period and no day.
  bool ReadField(const QLineEdit& field, std::optional<BoundPair>& bounds);

  JournalRange range_;
  std::optional<PeriodKey> newest_;
  Today today_;
  QComboBox* presets_;
  QLineEdit* from_;
  QLineEdit* to_;
  QToolButton* previous_;
  QToolButton* next_;
  QToolButton* close_;
};

}  // namespace stockbook::app
