// SPDX-License-Identifier: MIT
#include "stockbook/window/work_bar.h"

#include <QHBoxLayout>
#include <algorithm>

#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

constexpr int kPermille = 1000;
constexpr int kRowsWidth = 220;

}  // namespace

WorkBar::WorkBar(qt::Beside& beside, QWidget* parent)
    : QWidget(parent), text_(new QLabel), progress_(new QProgressBar), cancel_(new QPushButton(tr("取消(&C)"))) {
  text_->setTextFormat(Qt::PlainText);
  progress_->setTextVisible(false);
  progress_->setFixedWidth(kRowsWidth);
  progress_->setAccessibleName(tr("读取的进度"));
  cancel_->setToolTip(tr("停止读取，保留原来的台账（Esc）"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kBarMargin, kBarSpacing, kBarMargin, kBarSpacing);
  row->setSpacing(kBarSpacing);
  row->addWidget(progress_);
  row->addWidget(text_, 1);
  row->addWidget(cancel_);
  beside.KeepAlive(this);
  connect(cancel_, &QPushButton::clicked, &beside, &qt::Beside::Cancel);
  connect(&beside, &qt::Beside::Began, this, &WorkBar::Begin);
  connect(&beside, &qt::Beside::Ticked, this, &WorkBar::Show);
  connect(&beside, &qt::Beside::Ended, this, &QWidget::hide);
  hide();
}

void WorkBar::Begin() {
  read_ = 0;
  Show(0);
  show();
}

void WorkBar::Show(qulonglong rows) {
  read_ = std::max(read_, rows);
  // An engine that does not count, or a table that has grown: something goes on, and nobody knows how long.
  if (read_ == 0 || read_ > expected_) {
    progress_->setRange(0, 0);
  } else {
    progress_->setRange(0, kPermille);
    progress_->setValue(static_cast<int>(read_ * kPermille / expected_));
  }
  text_->setText(read_ == 0 ? tr("正在读取……") : tr("正在读取……已读 %L1 行").arg(read_));
  setAccessibleName(text_->text());
}

}  // namespace stockbook::app
