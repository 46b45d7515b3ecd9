// SPDX-License-Identifier: MIT
#include "stockbook/window/range_bar.h"

#include <QDate>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "qt/sheet/text.h"
#include "stockbook/window/bar_layout.h"
#include "stockbook/window/folding_row.h"
#include "stockbook/window/host_translator.h"
#include "stockbook/window/once_shown.h"
#include "stockbook/window/range_words.h"

namespace stockbook::app {
namespace {

constexpr int kFieldCharacters = 14;

int64_t ClockDay() {
  const QDate zero(1899, 12, 30);
  return zero.daysTo(QDate::currentDate());
}

QToolButton* RangeButton(const QString& name, const QString& tip) {
  auto* button = new QToolButton;
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  button->setAccessibleName(name);
  button->setToolTip(tip);
  return button;
}

QLineEdit* RangeField(const QString& name) {
  auto* field = new QLineEdit;
  field->setAccessibleName(name);
  field->setPlaceholderText(HostText("不限"));
  field->setToolTip(HostText("期间 2025-03、日期 2025-03-15、季度 2025Q1 或年 2025；按 Enter 显示"));
  field->setMinimumWidth(kFieldCharacters * field->fontMetrics().horizontalAdvance(QLatin1Char('0')));
  field->setMaximumWidth(field->minimumWidth() * 3 / 2);
  return field;
}

}  // namespace

RangeBar::RangeBar(QWidget* parent)
    : QWidget(parent),
      today_(ClockDay),
      presets_(new QComboBox),
      from_(RangeField(HostText("从"))),
      to_(RangeField(HostText("到"))),
      previous_(RangeButton(HostText("前一区间"), HostText("前一区间（Alt+Page Up）"))),
      next_(RangeButton(HostText("后一区间"), HostText("后一区间（Alt+Page Down）"))),
      close_(RangeButton(HostText("显示全部"), HostText("显示全部，关闭"))) {
  for (const RangePreset preset : kRangePresets) presets_->addItem(PresetWords(preset));
  presets_->addItem(HostText("自选"));
  presets_->setAccessibleName(HostText("区间"));
  BuildRow();
  connect(presets_, &QComboBox::activated, this, [this](int index) {
    if (index < static_cast<int>(std::size(kRangePresets))) {
      Choose(kRangePresets[index]);
    } else {
      from_->setFocus(Qt::OtherFocusReason);
      from_->selectAll();
    }
  });
  for (QLineEdit* field : {from_, to_}) connect(field, &QLineEdit::returnPressed, this, &RangeBar::TakeTyped);
  connect(previous_, &QToolButton::clicked, this, [this] { Step(-1); });
  connect(next_, &QToolButton::clicked, this, [this] { Step(1); });
  connect(close_, &QToolButton::clicked, this, [this] {
    Choose(RangePreset::kAll);
    hide();
    emit Closed();
  });
  new OnceShown(*this, [this] { AddIcons(); });
  ShowRange();
  hide();
}

void RangeBar::AddIcons() {
  previous_->setArrowType(Qt::LeftArrow);
  next_->setArrowType(Qt::RightArrow);
  close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  for (QLineEdit* field : {from_, to_}) field->setClearButtonEnabled(true);
}

void RangeBar::BuildRow() {
  auto* label = new QLabel(HostText("区间(&J)"));
  label->setBuddy(presets_);
  auto* from_label = new QLabel(HostText("从(&B)"));
  from_label->setBuddy(from_);
  auto* to_label = new QLabel(HostText("到(&Z)"));
  to_label->setBuddy(to_);
  auto* row = new FoldingRow({kBarMargin, 0, kBarMargin, kBarSpacing});
  row->head().addWidget(label);
  row->head().addWidget(presets_);
  row->head().addWidget(previous_);
  row->head().addWidget(next_);
  row->head().addStretch(1);
  row->tail().addWidget(from_label);
  row->tail().addWidget(from_, 1);
  row->tail().addWidget(to_label);
  row->tail().addWidget(to_, 1);
  row->tail().addStretch(1);
  row->SetEnd(close_);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(row);
}

void RangeBar::Open() {
  show();
  presets_->setFocus(Qt::ShortcutFocusReason);
}

void RangeBar::SetRange(const JournalRange& range, const std::optional<PeriodKey>& newest) {
  range_ = range;
  newest_ = newest;
  ShowRange();
  if (!range.IsAll()) show();
}

// The fields hold what can be typed into them, and the list the first entry that means the same.
void RangeBar::ShowRange() {
  from_->setText(range_.from ? qt::ToQString(range_.from->Text()) : QString());
  to_->setText(range_.to ? qt::ToQString(range_.to->Text()) : QString());
  const auto same = std::find_if(std::begin(kRangePresets), std::end(kRangePresets),
                                 [this](RangePreset preset) { return RangeOf(preset, today_(), newest_) == range_; });
  presets_->setCurrentIndex(static_cast<int>(same - std::begin(kRangePresets)));
  previous_->setEnabled(range_.Neighbour(-1).has_value());
  next_->setEnabled(range_.Neighbour(1).has_value());
}

void RangeBar::Choose(RangePreset preset) { emit RangeWanted(RangeOf(preset, today_(), newest_)); }

void RangeBar::Step(int steps) {
  if (const auto range = range_.Neighbour(steps)) emit RangeWanted(*range);
}

bool RangeBar::ReadField(const QLineEdit& field, std::optional<BoundPair>& bounds) {
  const QString text = field.text().trimmed();
  if (text.isEmpty()) return true;
  bounds = ReadBounds(qt::FromQString(text));
  if (bounds) return true;
  emit Failed(HostText("“%1”不是期间或日期：请输入如 2025-03、2025-03-15、2025Q1 或 2025，留空为不限。").arg(text));
  return false;
}

void RangeBar::TakeTyped() {
  std::optional<BoundPair> from;
  std::optional<BoundPair> to;
  if (!ReadField(*from_, from) || !ReadField(*to_, to)) return;
  JournalRange range;
  if (from) range.from = from->first;
  if (to) range.to = to->last;
  if (range.IsBackward()) {
    emit Failed(
        HostText("区间的起点 %1 晚于终点 %2：请交换或修改。").arg(BoundWords(*range.from), BoundWords(*range.to)));
    return;
  }
  emit RangeWanted(range);
}

void RangeBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) {
    QWidget::keyPressEvent(event);
    return;
  }
  ShowRange();
  if (range_.IsAll()) hide();
  emit Closed();
}

}  // namespace stockbook::app
