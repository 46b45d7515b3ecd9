// SPDX-License-Identifier: MIT
#include "stockbook/window/load_strip.h"

#include <QVBoxLayout>
#include <utility>

#include "qt/sheet/text.h"

namespace stockbook::app {

LoadStrip::LoadStrip(qt::Beside& beside, QWidget* parent)
    : QWidget(parent),
      work_(new WorkBar(beside)),
      replacement_(new NoticeBar),
      failure_(new NoticeBar),
      change_(new NoticeBar),
      trail_(new NoticeBar),
      watch_(new ChangeWatch(this)) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  for (QWidget* bar : std::initializer_list<QWidget*>{work_, replacement_, failure_, change_, trail_})
    rows->addWidget(bar);
  connect(watch_, &ChangeWatch::Changed, this, &LoadStrip::TellChange);
  connect(change_, &NoticeBar::Closed, this, [this] { is_changed_ = false; });
  connect(failure_, &NoticeBar::Closed, this, &LoadStrip::ShowChange);
}

void LoadStrip::Follow(std::shared_ptr<platform::Connection> connection, const std::string& file) {
  replacement_->Dismiss();
  failure_->Dismiss();
  is_changed_ = false;
  ShowChange();
  watch_->Follow(std::move(connection), file);
}

void LoadStrip::LoadBegins() { watch_->LoadBegins(); }

void LoadStrip::LoadEnded(const LoadReport& report, std::function<void()> again) {
  if (report.loaded) {
    failure_->Dismiss();
    is_changed_ = false;
    watch_->LoadSucceeded();
  } else if (report.cancelled || LoadError(report).empty()) {
    // Whoever cancelled knows why there is nothing.
    failure_->Dismiss();
  } else {
    failure_->Tell(tr("台账没有载入：%1").arg(qt::ToQString(LoadError(report))), {tr("重试(&Y)"), std::move(again)});
  }
  ShowChange();
}

void LoadStrip::TellReplacement(const QString& name, const QString& reason, std::function<void()> again) {
  const QString text = reason.isEmpty() ? tr("上次的库存“%1”已不在原处，现在打开的是示例库存。").arg(name)
                                        : tr("上次的库存“%1”打不开，现在打开的是示例库存。%2").arg(name, reason);
  replacement_->Tell(text, {tr("重试(&Y)"), std::move(again)});
}

void LoadStrip::TellChange() {
  is_changed_ = true;
  ShowChange();
}

void LoadStrip::ShowChange() {
  if (!is_changed_ || !failure_->isHidden()) return change_->Dismiss();
  change_->Tell(tr("库存已被其他程序修改，这里显示的是修改以前的台账。"),
                {tr("重新载入(&O)"), [this] { emit ReloadWanted(); }});
}

}  // namespace stockbook::app
