// SPDX-License-Identifier: MIT
#include "stockbook/window/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>

#include "qt/sheet/text.h"
#include "stockbook/window/bar_layout.h"
#include "stockbook/window/folding_row.h"
#include "stockbook/window/once_shown.h"

namespace stockbook::app {
namespace {

constexpr int kTypingMs = 120;
constexpr int kWordsWidth = 10;  // in full-width characters

QToolButton* MakeButton(const QString& text, const QString& tip) {
  auto* button = new QToolButton;
  button->setText(text);
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

QToolButton* MakeSwitch(const QString& text, const QString& tip) {
  QToolButton* button = MakeButton(text, tip);
  button->setCheckable(true);
  return button;
}

}  // namespace

FindBar::FindBar(qt::StockbookWidget& stockbook, QWidget* parent)
    : QWidget(parent),
      stockbook_(stockbook),
      finder_(stockbook),
      marks_(stockbook, finder_),
      words_(new QLineEdit),
      match_case_(MakeSwitch(tr("大小写(&U)"), tr("区分大小写"))),
      whole_words_(MakeSwitch(tr("全字(&Q)"), tr("只找完整的词和数，如 12 不在 112 里"))),
      patterns_(MakeSwitch(tr("通配符(&I)"), tr("* ? # [ ] 代表任意文字、一个字、一个数字、列出的字"))),
      previous_(MakeButton(tr("上一个(&R)"), tr("上一个（Shift+F3）"))),
      next_(MakeButton(tr("下一个(&N)"), tr("下一个（F3）"))),
      list_(MakeSwitch(tr("列表(&K)"), tr("列出找到的全部内容和所在期间"))),
      close_(MakeButton(QString(), tr("关闭（Esc）"))),
      count_(new QLabel) {
  BuildRow();
  typed_.setSingleShot(true);
  typed_.setInterval(kTypingMs);
  Connect();
  new OnceShown(*this, [this] {
    words_->setClearButtonEnabled(true);
    close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  });
  hide();
}

HitList& FindBar::hits() {
  if (hits_ != nullptr) return *hits_;
  hits_ = new HitList(stockbook_, finder_);
  hits_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
  hits_->hide();
  rows_->insertWidget(0, hits_);
  connect(hits_, &HitList::Went, this, &FindBar::ShowCount);
  connect(hits_, &HitList::Chosen, &stockbook_, qOverload<>(&QWidget::setFocus));
  return *hits_;
}

void FindBar::Connect() {
  connect(words_, &QLineEdit::textEdited, this, [this] {
    count_->clear();
    typed_.start();
  });
  connect(&typed_, &QTimer::timeout, this, [this] { Find(FindStep::kHere); });
  for (QToolButton* button : {match_case_, whole_words_, patterns_})
    connect(button, &QToolButton::toggled, this, [this] { Find(FindStep::kHere); });
  connect(next_, &QToolButton::clicked, this, &FindBar::Next);
  connect(previous_, &QToolButton::clicked, this, &FindBar::Previous);
  connect(close_, &QToolButton::clicked, this, &FindBar::Close);
  connect(list_, &QToolButton::toggled, this, [this](bool shown) {
    hits().setVisible(shown);
    hits().ShowPlace();
  });
  connect(&stockbook_, &qt::StockbookWidget::AfterLoaded, this, &FindBar::Forget);
}

void FindBar::BuildRow() {
  auto* label = new QLabel(tr("查找(&D)"));
  label->setBuddy(words_);
  words_->setPlaceholderText(tr("几个词用空格隔开；数照显示的样子写"));
  words_->setMinimumWidth(kWordsWidth * 2 * words_->fontMetrics().averageCharWidth());
  words_->setMaximumWidth(4 * words_->minimumWidth());
  close_->setAccessibleName(tr("关闭查找"));
  match_case_->setAccessibleName(tr("区分大小写"));
  whole_words_->setAccessibleName(tr("全字匹配"));
  count_->setTextFormat(Qt::PlainText);
  count_->setMinimumWidth(1);
  auto* row = new FoldingRow({kBarMargin, kBarSpacing, kBarMargin, kBarSpacing});
  row->head().addWidget(label);
  row->head().addWidget(words_);
  for (QToolButton* button : {match_case_, whole_words_, patterns_, previous_, next_, list_})
    row->tail().addWidget(button);
  row->tail().addStretch(1);
  count_->setIndent(kBarMargin);
  row->SetNote(count_);
  row->SetEnd(close_);
  rows_ = new QVBoxLayout(this);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(0);
  rows_->addWidget(row);
}

void FindBar::Open() {
  show();
  words_->setFocus(Qt::ShortcutFocusReason);
  words_->selectAll();
}

void FindBar::Close() {
  typed_.stop();
  // A field that is hidden with the focus would first hand it to the next one of the window.
  stockbook_.setFocus();
  hide();
  emit Closed();
}

void FindBar::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  marks_.SetShown(true);
}

void FindBar::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  marks_.SetShown(false);
  finder_.Rest();
}

FindQuery FindBar::Query() const {
  return {qt::FromQString(words_->text()),
          {match_case_->isChecked(), whole_words_->isChecked(), patterns_->isChecked()}};
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
  finder_.Go(Query(), step);
  ShowCount();
  if (hits_ != nullptr) hits_->ShowPlace();
  if (!finder_.error().isEmpty()) emit Failed(finder_.error());
}

void FindBar::Forget() {
  finder_.Clear();
  count_->clear();
  words_->setAccessibleDescription({});
}

// The bus has no announcements; a screen reader speaks the new description of the field that has the focus.
void FindBar::ShowCount() {
  const QString count = CountText();
  count_->setText(count);
  if (words_->accessibleDescription() != count) words_->setAccessibleDescription(count);
}

QString FindBar::CountText() const {
  if (!finder_.error().isEmpty()) return tr("通配符有误");
  if (words_->text().trimmed().isEmpty()) return {};
  if (finder_.hits() == 0) return tr("没有找到");
  return tr("第 %L1 条，共 %L2 条").arg(finder_.place()).arg(finder_.hits());
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  switch (event->key()) {
    case Qt::Key_Escape:
      Close();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Find(shift ? FindStep::kPrevious : FindStep::kNext);
      break;
    case Qt::Key_Down:
      if (hits_ != nullptr && hits_->isVisible()) hits_->setFocus(Qt::TabFocusReason);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace stockbook::app
