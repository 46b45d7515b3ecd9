// SPDX-License-Identifier: MIT
#include "stockbook/window/notice_bar.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <utility>

#include "stockbook/window/bar_layout.h"
#include "stockbook/window/once_shown.h"

namespace stockbook::app {
namespace {

// A bar that appears is read aloud wherever the focus is, as that of a notification and of nothing else.
QAccessibleInterface* MakeNotification(const QString& class_name, QObject* object) {
  if (class_name != QLatin1String(NoticeBar::staticMetaObject.className())) return nullptr;
  auto* bar = qobject_cast<NoticeBar*>(object);
  return bar == nullptr ? nullptr : new QAccessibleWidget(bar, QAccessible::Notification);
}

}  // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent), text_(new QLabel), action_(new QPushButton), close_(new QToolButton) {
  QAccessible::installFactory(&MakeNotification);
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  close_->setAutoRaise(true);
  close_->setFocusPolicy(Qt::TabFocus);
  close_->setToolTip(tr("关闭（Esc）"));
  close_->setAccessibleName(tr("关闭提示"));
  // Tips have colours of their own in every theme, light or dark.
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  text_->setForegroundRole(QPalette::ToolTipText);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kBarMargin, kBarSpacing, kBarMargin, kBarSpacing);
  row->setSpacing(kBarSpacing);
  row->addWidget(text_, 1);
  row->addWidget(action_);
  row->addWidget(close_);
  connect(action_, &QPushButton::clicked, this, [this] {
    hide();
    // What is done may tell something here again.
    if (const auto act = std::exchange(act_, {})) act();
  });
  connect(close_, &QToolButton::clicked, this, &NoticeBar::Close);
  new OnceShown(*this, [this] { close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton)); });
  hide();
}

void NoticeBar::Tell(const QString& text, Offer offer) {
  text_->setText(text);
  action_->setText(offer.caption);
  act_ = std::move(offer.act);
  setAccessibleName(text);
  show();
}

void NoticeBar::Close() {
  hide();
  emit Closed();
}

void NoticeBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  Close();
}

}  // namespace stockbook::app
