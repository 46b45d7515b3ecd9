// SPDX-License-Identifier: MIT
#include "stockbook/window/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>

#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

constexpr int kTypingMs = 200;
// Longer journals are searched at Enter, not while the user types.
constexpr int kMostRowsWhileTyping = 100'000;
constexpr int kWordsWidth = 24;  // in full-width characters

QToolButton* MakeButton(const QString& text, const QString& tip) {
  auto* button = new QToolButton;
  button->setText(text);
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

FindBar::FindBar(qt::StockbookWidget& stockbook, QWidget* parent)
    : QWidget(parent),
      stockbook_(stockbook),
      finder_(stockbook),
      words_(new QLineEdit),
      previous_(MakeButton(tr("上一个(&R)"), tr("上一个（Shift+F3）"))),
      next_(MakeButton(tr("下一个(&N)"), tr("下一个（F3）"))),
      close_(MakeButton(QString(), tr("关闭（Esc）"))),
      count_(new QLabel) {
  BuildRow();
  typed_.setSingleShot(true);
  typed_.setInterval(kTypingMs);
  connect(words_, &QLineEdit::textEdited, this, [this] {
    count_->clear();
    if (stockbook_.Rows() <= kMostRowsWhileTyping) typed_.start();
  });
  connect(&typed_, &QTimer::timeout, this, [this] { Find(FindStep::kHere); });
  connect(next_, &QToolButton::clicked, this, &FindBar::Next);
  connect(previous_, &QToolButton::clicked, this, &FindBar::Previous);
  connect(close_, &QToolButton::clicked, this, [this] {
    hide();
    emit Closed();
  });
  connect(&stockbook, &qt::StockbookWidget::AfterLoaded, count_, &QLabel::clear);
  hide();
}

void FindBar::BuildRow() {
  auto* label = new QLabel(tr("查找(&D)"));
  label->setBuddy(words_);
  words_->setPlaceholderText(tr("几个词用空格隔开；* ? # 代表任意文字、一个字、一个数字"));
  words_->setClearButtonEnabled(true);
  words_->setMinimumWidth(kWordsWidth * 2 * words_->fontMetrics().averageCharWidth());
  words_->setMaximumWidth(2 * words_->minimumWidth());
  close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close_->setAccessibleName(tr("关闭查找"));
  count_->setTextFormat(Qt::PlainText);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kBarMargin, kBarSpacing, kBarMargin, kBarSpacing);
  row->setSpacing(kBarSpacing);
  row->addWidget(label);
  row->addWidget(words_, 1);
  row->addWidget(previous_);
  row->addWidget(next_);
  row->addSpacing(kBarMargin);
  row->addWidget(count_);
  row->addStretch(1);
  row->addWidget(close_);
}

void FindBar::Open() {
  show();
  words_->setFocus(Qt::ShortcutFocusReason);
  words_->selectAll();
}

void FindBar::Step(FindStep step) {
  if (words_->text().trimmed().isEmpty()) {
    Open();
  } else {
    Find(step);
  }
}

void FindBar::Find(FindStep step) {
  typed_.stop();
  finder_.Go(words_->text(), step);
  ShowCount();
}

void FindBar::ShowCount() {
  if (words_->text().trimmed().isEmpty()) {
    count_->clear();
  } else if (finder_.hits() == 0) {
    count_->setText(tr("没有找到"));
  } else {
    count_->setText(tr("第 %L1 条，共 %L2 条").arg(finder_.place()).arg(finder_.hits()));
  }
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Escape:
      close_->click();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Find(shift ? FindStep::kPrevious : FindStep::kNext);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace stockbook::app
