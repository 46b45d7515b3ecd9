// SPDX-License-Identifier: MIT
#include "stockbook/window/work_bar.h"

#include <QHBoxLayout>

#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

constexpr int kRowsWidth = 220;

}  // namespace

WorkBar::WorkBar(qt::Beside& beside, QWidget* parent)
    : QWidget(parent), text_(new QLabel), progress_(new QProgressBar), cancel_(new QPushButton(tr("取消(&C)"))) {
  text_->setTextFormat(Qt::PlainText);
  // Engines count what they have read; nobody knows how much there is.
  progress_->setRange(0, 0);
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
  Show(0);
  show();
}

void WorkBar::Show(qulonglong rows) {
  text_->setText(rows == 0 ? tr("正在读取……") : tr("正在读取……已读 %L1 行").arg(rows));
  setAccessibleName(text_->text());
}

}  // namespace stockbook::app
