// SPDX-License-Identifier: MIT
#include "stockbook/window/period_panel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "stockbook/window/bar_layout.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/quiet_table.h"

namespace stockbook::app {
namespace {

constexpr int kLeastHeightWithNote = 150;

}  // namespace

PeriodPanel::PeriodPanel(QWidget* parent) : QDockWidget(HostText("期间汇总"), parent), table_(new PeriodTable(this)) {
  setObjectName(QStringLiteral("PeriodPanel"));
}

QTableView& PeriodPanel::view() {
  if (view_ == nullptr) Build();
  return *view_;
}

void PeriodPanel::setVisible(bool visible) {
  if (visible && view_ == nullptr) Build();
  QDockWidget::setVisible(visible);
}

void PeriodPanel::Build() {
  view_ = new QuietTable;
  view_->setModel(table_);
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view_->setTabKeyNavigation(false);
  view_->setWordWrap(false);
  view_->setAlternatingRowColors(true);
  view_->verticalHeader()->hide();
  view_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  // Low enough for small screens with all other bars open.
  view_->setMinimumHeight(2 * view_->horizontalHeader()->sizeHint().height());
  view_->setAccessibleName(HostText("期间汇总"));
  view_->installEventFilter(this);
  note_ = new QLabel(HostText("台账中合计行的上一个数是本期合计，下一个数是从第一笔起的累计（不含期初）。"));
  note_->setWordWrap(true);
  note_->setTextFormat(Qt::PlainText);
  note_->setContentsMargins(kBarMargin, 0, kBarMargin, 0);
  auto* body = new QWidget;
  auto* rows = new QVBoxLayout(body);
  rows->setContentsMargins(0, 0, 0, kBarSpacing);
  rows->setSpacing(kBarSpacing);
  rows->addWidget(view_, 1);
  rows->addWidget(note_);
  setWidget(body);
  connect(view_, &QTableView::clicked, this, &PeriodPanel::Choose);
  connect(table_, &PeriodTable::modelReset, view_, &QTableView::resizeRowsToContents);
}

// In a low window the periods come before what is said of them.
void PeriodPanel::resizeEvent(QResizeEvent* event) {
  QDockWidget::resizeEvent(event);
  if (note_ != nullptr) note_->setVisible(height() >= kLeastHeightWithNote);
}

void PeriodPanel::Choose(const QModelIndex& index) {
  if (index.isValid()) emit PeriodChosen(table_->lines().at(static_cast<size_t>(index.row())).records.begin);
}

void PeriodPanel::Mark(size_t record) {
  const std::vector<PeriodLine>& lines = table_->lines();
  for (size_t at = 0; at < lines.size(); ++at) {
    if (record < lines[at].records.begin || record >= lines[at].records.end) continue;
    const int column = std::max(view().currentIndex().column(), 0);
    view().setCurrentIndex(table_->index(static_cast<int>(at), column));
    return;
  }
}

bool PeriodPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      Choose(view_->currentIndex());
      emit Left();
      return true;
    }
    if (key == Qt::Key_Escape) {
      emit Left();
      return true;
    }
  }
  return QDockWidget::eventFilter(watched, event);
}

}  // namespace stockbook::app
