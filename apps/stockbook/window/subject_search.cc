// SPDX-License-Identifier: MIT
#include "stockbook/window/subject_search.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/window/screen_fit.h"

namespace stockbook::app {
namespace {

constexpr QSize kSearchSize(520, 420);

}  // namespace

SubjectSearch::SubjectSearch(platform::Connection& connection, SubjectUses* uses, int32_t product, QWidget* parent)
    : QDialog(parent), uses_(uses), words_(new QLineEdit), found_(new QListView) {
  setWindowTitle(tr("转到台账"));
  AddAll(InventoryCatalog(connection), product);
  filter_.setSourceModel(&model_);
  filter_.sort(0);
  auto* label = new QLabel(tr("商品、供应商、客户或项目(&S)"));
  label->setBuddy(words_);
  words_->setPlaceholderText(tr("编号、名称、规格、简码、条码……的几个词"));
  words_->installEventFilter(this);
  found_->setModel(&filter_);
  found_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  found_->setUniformItemSizes(true);
  found_->setFocusPolicy(Qt::NoFocus);
  found_->setAccessibleName(tr("找到的台账"));
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(label);
  rows->addWidget(words_);
  rows->addWidget(found_, 1);
  connect(words_, &QLineEdit::textChanged, this, &SubjectSearch::Search);
  connect(words_, &QLineEdit::returnPressed, this, &SubjectSearch::Take);
  connect(found_, &QListView::clicked, this, &SubjectSearch::Take);
  ResizeWithinScreen(*this, kSearchSize);
  Search({});
}

void SubjectSearch::Add(const QString& what, Subject subject) {
  auto* item = new QStandardItem(what + QStringLiteral("  ") + qt::ToQString(subject.entry.text));
  item->setData(qt::ToQString(subject.entry.words), WordFilter::kWordsRole);
  item->setData(uses_ == nullptr ? 0 : uses_->Of(subject.kind, subject.entry), WordFilter::kUsesRole);
  model_.appendRow(item);
  subjects_.push_back(std::move(subject));
}

void SubjectSearch::AddAll(const InventoryCatalog& catalog, int32_t product) {
  for (CatalogEntry& entry : catalog.Products()) {
    JournalOptions options;
    options.key_id = entry.key;
    Add(tr("商品"), {options, SubjectUses::ProductKind(), std::move(entry)});
  }
  const std::pair<base::tqJournalTypeContants, QString> others[] = {
      {base::SupplierJournal, tr("供应商")}, {base::CustomerJournal, tr("客户")}, {base::ProjectJournal, tr("项目")}};
  for (const auto& other : others) {
    const base::tqJournalTypeContants type = other.first;
    for (CatalogEntry& entry : catalog.SecondKeys(type)) {
      JournalOptions options;
      options.journal_type = type;
      options.key_id = type == base::ProjectJournal ? product : 0;
      options.dp_id = entry.key;
      options.dp_code = entry.class_code;
      Add(other.second, {options, SubjectUses::SecondKind(type), std::move(entry)});
    }
  }
}

void SubjectSearch::Search(const QString& words) {
  filter_.SetText(words);
  found_->setCurrentIndex(filter_.index(0, 0));
}

// The keys that move in a list go to it, all others to the field.
bool SubjectSearch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QCoreApplication::sendEvent(found_, event);
      return true;
    default:
      return QDialog::eventFilter(watched, event);
  }
}

void SubjectSearch::Take() {
  const QModelIndex current = filter_.mapToSource(found_->currentIndex());
  if (!current.isValid()) return;
  const Subject chosen = subjects_[static_cast<size_t>(current.row())];
  if (uses_ != nullptr) uses_->Count(chosen.kind, chosen.entry);
  accept();
  emit Chosen(chosen.options);
}

}  // namespace stockbook::app
