// SPDX-License-Identifier: MIT
#include "stockbook/window/subject_chooser.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QWheelEvent>
#include <algorithm>

#include "qt/sheet/text.h"
#include "qt/sheet/tool_tip.h"

namespace stockbook::app {
namespace {

constexpr int kShownEntries = 16;
constexpr int kLeastCharacters = 6;
constexpr int kMeasuredEntries = 100;  // all of a large inventory would take too long
constexpr int kEntryPadding = 12;

}  // namespace

void WordFilter::SetText(const QString& text) {
  words_ = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  invalidateFilter();
}

bool WordFilter::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const {
  const QModelIndex entry = sourceModel()->index(source_row, 0, source_parent);
  const QString text = entry.data().toString() + QLatin1Char('\n') + entry.data(kWordsRole).toString();
  return std::all_of(words_.begin(), words_.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

bool WordFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  const int left_uses = left.data(kUsesRole).toInt();
  const int right_uses = right.data(kUsesRole).toInt();
  return left_uses != right_uses ? left_uses > right_uses : left.row() < right.row();
}

SubjectChooser::SubjectChooser(QWidget* parent) : QComboBox(parent) {
  // The usual field would come with a list of its own of what was found.
  auto* field = new QLineEdit;
  auto* searching = new QCompleter(this);
  field->setCompleter(searching);
  setLineEdit(field);
  setCompleter(searching);
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(kShownEntries);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kLeastCharacters);
  // Otherwise it is the tooltip with its markup.
  setAccessibleDescription(tr("输入几个词查找；Enter 载入，Esc 还原"));
  searching->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  searching->setCaseSensitivity(Qt::CaseInsensitive);
  searching->setMaxVisibleItems(kShownEntries);
  connect(lineEdit(), &QLineEdit::textEdited, this, &SubjectChooser::Search);
  connect(searching, qOverload<const QModelIndex&>(&QCompleter::activated), this, [this](const QModelIndex& found) {
    // The index belongs to the completer's own model, whose rows are those of the filter.
    setCurrentIndex(Filter().mapToSource(Filter().index(found.row(), 0)).row());
    ShowCurrent();
    emit Chosen();
  });
  connect(this, &QComboBox::activated, this, [this](int) {
    ShowCurrent();
    emit Chosen();
  });
  connect(lineEdit(), &QLineEdit::returnPressed, this, &SubjectChooser::Enter);
}

WordFilter& SubjectChooser::Filter() {
  if (filter_ != nullptr) return *filter_;
  filter_ = new WordFilter(this);
  filter_->setSourceModel(model());
  filter_->sort(0);
  completer()->setModel(filter_);
  return *filter_;
}

void SubjectChooser::Search(const QString& text) {
  typed_ = true;
  Filter().SetText(text);
  // The list of what was found is made by the first search; a filter that is there already is not installed twice.
  completer()->popup()->installEventFilter(this);
  WidenList(*completer()->popup());
  completer()->complete();
}

void SubjectChooser::SetEntries(std::vector<CatalogEntry> entries, const Uses& uses) {
  entries_ = std::move(entries);
  if (filter_ != nullptr) filter_->SetText({});
  clear();
  QList<QStandardItem*> items;
  for (const CatalogEntry& entry : entries_) {
    items.append(new QStandardItem(qt::ToQString(entry.text)));
    if (!entry.words.empty()) items.back()->setData(qt::ToQString(entry.words), WordFilter::kWordsRole);
  }
  // All at once, for those who follow the list.
  static_cast<QStandardItemModel*>(model())->invisibleRootItem()->appendRows(items);
  if (uses) Rank(uses);
  setCurrentIndex(entries_.empty() ? -1 : 0);
  ShowCurrent();
}

void SubjectChooser::Rank(const Uses& uses) {
  for (size_t index = 0; index < entries_.size(); ++index) {
    const auto at = static_cast<int>(index);
    const int count = uses(entries_[index]);
    // Most have none, and need no place for it.
    if (count != itemData(at, WordFilter::kUsesRole).toInt()) setItemData(at, count, WordFilter::kUsesRole);
  }
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

void SubjectChooser::Show(int32_t key, const std::string& class_code) {
  if (Choose(key, class_code)) return;
  const QString name = key != 0 ? QString::number(key) : qt::ToQString(class_code);
  const QString text = name.isEmpty() ? tr("（未选择）") : tr("（没有编号 %1）").arg(name);
  entries_.push_back({key, class_code, qt::FromQString(text)});
  addItem(text);
  Choose(key, class_code);
}

void SubjectChooser::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  switch (event->reason()) {
    case Qt::PopupFocusReason:
    case Qt::ActiveWindowFocusReason:
    case Qt::MenuBarFocusReason:
      return;  // whoever types comes back
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
      // The focus must have moved before a load, which moves it on.
      if (typed_ && TakeTypedText()) QMetaObject::invokeMethod(this, &SubjectChooser::Chosen, Qt::QueuedConnection);
      break;
    default:
      break;
  }
  ShowCurrent();
}

void SubjectChooser::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && typed_) {
    ShowCurrent();
    lineEdit()->selectAll();
    return;
  }
  QComboBox::keyPressEvent(event);
}

// Turning the wheel over the bar must not load one journal after the other.
void SubjectChooser::wheelEvent(QWheelEvent* event) { event->ignore(); }

void SubjectChooser::showPopup() {
  WidenList(*view());
  QComboBox::showPopup();
}

void SubjectChooser::WidenList(QAbstractItemView& list) const {
  const QAbstractItemModel* entries = list.model() == model() ? model() : filter_;
  int width = 0;
  for (int row = 0; row < std::min(entries->rowCount(), kMeasuredEntries); ++row)
    width = std::max(width, list.fontMetrics().horizontalAdvance(entries->index(row, 0).data().toString()));
  width += kEntryPadding + 2 * list.frameWidth() + list.verticalScrollBar()->sizeHint().width();
  const int left = mapToGlobal(QPoint(0, 0)).x();
  const int room = screen() == nullptr ? width : screen()->availableGeometry().right() - left;
  list.setMinimumWidth(std::max(this->width(), std::min(width, room)));
}

// While the list of what was found is open, it gets the keys.
bool SubjectChooser::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || watched != completer()->popup()) {
    return QComboBox::eventFilter(watched, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool leaves = (key == Qt::Key_Tab || key == Qt::Key_Backtab) && !completer()->popup()->currentIndex().isValid();
  if (key != Qt::Key_Escape && !leaves) return QComboBox::eventFilter(watched, event);
  completer()->popup()->hide();
  if (leaves) {
    Enter();
  } else {
    ShowCurrent();
    lineEdit()->selectAll();
  }
  return true;
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

bool SubjectChooser::TakeTypedText() {
  bool found = true;
  if (currentText() != itemText(currentIndex()) && !currentText().trimmed().isEmpty()) {
    Filter().SetText(currentText());
    found = Filter().rowCount() > 0;
    if (found) setCurrentIndex(BestFound());
  }
  ShowCurrent();
  return found;
}

// The entry of exactly that number goes before one that only begins so, and both before those used more often.
int SubjectChooser::BestFound() const {
  const QString typed = currentText().trimmed();
  int begins = -1;
  for (int row = 0; row < filter_->rowCount(); ++row) {
    const QString text = filter_->index(row, 0).data().toString();
    const int index = filter_->mapToSource(filter_->index(row, 0)).row();
    if (text.section(QLatin1Char(' '), 0, 0).compare(typed, Qt::CaseInsensitive) == 0) return index;
    if (begins < 0 && text.startsWith(typed, Qt::CaseInsensitive)) begins = index;
  }
  return begins >= 0 ? begins : filter_->mapToSource(filter_->index(0, 0)).row();
}

void SubjectChooser::ShowCurrent() {
  typed_ = false;
  setEditText(itemText(currentIndex()));
  lineEdit()->setCursorPosition(0);
  setToolTip(qt::PlainToolTip(itemText(currentIndex())));
}

}  // namespace stockbook::app
