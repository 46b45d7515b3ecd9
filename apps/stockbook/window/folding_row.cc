// SPDX-License-Identifier: MIT
#include "stockbook/window/folding_row.h"

#include <QEvent>
#include <algorithm>

#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

QHBoxLayout* MakeRowPart(QWidget* row) {
  auto* part = new QHBoxLayout(new QWidget(row));
  part->setContentsMargins(0, 0, 0, 0);
  part->setSpacing(kBarSpacing);
  return part;
}

}  // namespace

FoldingRow::FoldingRow(const QMargins& margins, QWidget* parent)
    : QWidget(parent), grid_(new QGridLayout(this)), head_(MakeRowPart(this)), tail_(MakeRowPart(this)) {
  grid_->setContentsMargins(margins);
  grid_->setSpacing(kBarSpacing);
  // Its own least size is the folded one.
  grid_->setSizeConstraint(QLayout::SetNoConstraint);
}

void FoldingRow::SetEnd(QWidget* end) {
  end_ = end;
  Arrange(false);
}

void FoldingRow::Arrange(bool folded) {
  folded_ = folded;
  while (QLayoutItem* item = grid_->takeAt(0)) delete item;
  grid_->addWidget(head_->parentWidget(), 0, 0);
  grid_->addWidget(end_, 0, 3, Qt::AlignRight | Qt::AlignVCenter);
  if (note_ != nullptr) grid_->addWidget(note_, 0, 2);
  if (folded) {
    grid_->addWidget(tail_->parentWidget(), 1, 0, 1, 4);
  } else {
    grid_->addWidget(tail_->parentWidget(), 0, 1);
  }
  grid_->setColumnStretch(0, 2);
  grid_->setColumnStretch(1, folded || note_ != nullptr ? 0 : 3);
  grid_->setColumnStretch(2, folded || note_ == nullptr ? 0 : 3);
  updateGeometry();
}

QSize FoldingRow::minimumSizeHint() const {
  const QMargins margins = grid_->contentsMargins();
  const int end = end_ == nullptr ? 0 : end_->minimumSizeHint().width() + kBarSpacing;
  const int width = std::max(head_->minimumSize().width() + end, tail_->minimumSize().width());
  return {width + margins.left() + margins.right(), grid_->minimumSize().height()};
}

void FoldingRow::FollowWidth() {
  if (end_ == nullptr) return;
  const QMargins margins = grid_->contentsMargins();
  if (note_ != nullptr) note_width_ = std::max(note_width_, note_->sizeHint().width());
  const int needed = note_width_ + margins.left() + head_->minimumSize().width() + kBarSpacing +
                     tail_->minimumSize().width() + kBarSpacing + end_->minimumSizeHint().width() + margins.right();
  if (const bool folded = width() < needed; folded != folded_) Arrange(folded);
}

void FoldingRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FollowWidth();
}

bool FoldingRow::event(QEvent* event) {
  // Parts have other fonts or texts.
  if (event->type() == QEvent::LayoutRequest) FollowWidth();
  return QWidget::event(event);
}

}  // namespace stockbook::app
