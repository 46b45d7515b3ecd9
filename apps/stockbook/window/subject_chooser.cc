// SPDX-License-Identifier: MIT
#include "stockbook/window/subject_chooser.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>
#include <algorithm>

#include "qt/text.h"
#include "qt/tool_tip.h"

namespace stockbook::app {
namespace {

constexpr int kShownEntries = 16;
constexpr int kLeastCharacters = 8;

}  // namespace

void WordFilter::SetText(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

bool WordFilter::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const {
  const QString text = sourceModel()->index(source_row, 0, source_parent).data().toString();
  return std::all_of(words_.begin(), words_.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

SubjectChooser::SubjectChooser(QWidget* parent) : QComboBox(parent), filter_(new WordFilter(this)) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(kShownEntries);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kLeastCharacters);
  filter_->setSourceModel(model());
  auto* searching = new QCompleter(filter_, this);
  searching->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  searching->setCaseSensitivity(Qt::CaseInsensitive);
  searching->setMaxVisibleItems(kShownEntries);
  setCompleter(searching);
  connect(lineEdit(), &QLineEdit::textEdited, this, [this, searching](const QString& text) {
    filter_->SetText(text);
    searching->complete();
  });
  connect(searching, qOverload<const QModelIndex&>(&QCompleter::activated), this, [this](const QModelIndex& found) {
    // The index belongs to the completer's own model, whose rows are those of the filter.
    setCurrentIndex(filter_->mapToSource(filter_->index(found.row(), 0)).row());
    ShowCurrent();
    emit Chosen();
  });
  connect(this, &QComboBox::activated, this, [this](int) {
    ShowCurrent();
    emit Chosen();
  });
  connect(lineEdit(), &QLineEdit::returnPressed, this, &SubjectChooser::Enter);
}

void SubjectChooser::SetEntries(std::vector<CatalogEntry> entries) {
  entries_ = std::move(entries);
  filter_->SetText({});
  clear();
  QStringList texts;
  for (const CatalogEntry& entry : entries_) texts.append(qt::ToQString(entry.text));
  addItems(texts);
  setCurrentIndex(entries_.empty() ? -1 : 0);
  ShowCurrent();
}

CatalogEntry SubjectChooser::Current() const {
  const int index = currentIndex();
  return index >= 0 && index < static_cast<int>(entries_.size()) ? entries_[static_cast<size_t>(index)]
                                                                 : CatalogEntry{};
}

bool SubjectChooser::Choose(int32_t key, const std::string& class_code) {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const CatalogEntry& entry) {
    return entry.key == key && entry.class_code == class_code;
  });
  if (found == entries_.end()) return false;
  setCurrentIndex(static_cast<int>(found - entries_.begin()));
  ShowCurrent();
  return true;
}

void SubjectChooser::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) TakeTypedText();
}

void SubjectChooser::Enter() {
  const QString words = currentText();
  if (TakeTypedText()) {
    emit Chosen();
  } else {
    lineEdit()->end(false);
    lineEdit()->home(true);
    emit NothingFound(words);
  }
}

// Chooses the first entry with the typed words; returns false and keeps the choice if there are no words or no such
// entry.
bool SubjectChooser::TakeTypedText() {
  bool found = true;
  if (currentText() != itemText(currentIndex()) && !currentText().trimmed().isEmpty()) {
    filter_->SetText(currentText());
    found = filter_->rowCount() > 0;
    if (found) setCurrentIndex(filter_->mapToSource(filter_->index(0, 0)).row());
  }
  ShowCurrent();
  return found;
}

void SubjectChooser::ShowCurrent() {
  setEditText(itemText(currentIndex()));
  lineEdit()->setCursorPosition(0);
  setToolTip(qt::PlainToolTip(itemText(currentIndex())));
}

}  // namespace stockbook::app
