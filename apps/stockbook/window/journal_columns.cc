// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_columns.h"

#include <QApplication>
#include <QEvent>
#include <algorithm>
#include <utility>

#include "qt/sheet/text.h"
#include "sheet/geometry/scale.h"
#include "stockbook/sheet/grid_sheet.h"
#include "stockbook/window/journal_desk.h"

namespace stockbook::app {
namespace {

constexpr size_t kMostUndone = 50;

bool DifferInVisibility(const ColumnArrangement& one, const ColumnArrangement& other) {
  const auto shown = [](const ColumnArrangement& of) {
    std::vector<std::string> keys;
    for (const ColumnArrangement::Column& column : of.columns)
      if (!column.hidden) keys.push_back(column.key);
    std::sort(keys.begin(), keys.end());
    return keys;
  };
  return shown(one) != shown(other);
}

}  // namespace

JournalColumns::JournalColumns(qt::StockbookWidget& stockbook) : stockbook_(stockbook) {
  look_.setSingleShot(true);
  connect(&look_, &QTimer::timeout, this, &JournalColumns::Look);
  stockbook_.sheet().AddWatcher(this);
  stockbook_.viewport()->installEventFilter(this);
  known_ = ColumnArrangement::Of(stockbook_.Grid());
}

JournalColumns::~JournalColumns() {
  if (!gone_) stockbook_.sheet().RemoveWatcher(this);
}

ColumnArrangement JournalColumns::Now() const {
  ColumnArrangement now = ColumnArrangement::Of(stockbook_.Grid());
  if (now.frozen == applied_frozen_) now.frozen = wanted_frozen_;
  return now;
}

// The sheet may be in the middle of several changes.
void JournalColumns::ColumnsChanged() {
  if (!held_) look_.start(0);
}

bool JournalColumns::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::MouseButtonRelease) look_.start(0);
  return QObject::eventFilter(watched, event);
}

// Everything that happened since the last look is one change.
void JournalColumns::Look() {
  // What is being dragged is not there yet.
  if (held_ || gone_ || QApplication::mouseButtons() != Qt::NoButton) return;
  if (const int frozen = stockbook_.Grid().FrozenCols(); frozen != applied_frozen_)
    wanted_frozen_ = applied_frozen_ = frozen;
  LimitFrozen();
  if (wanted_frozen_ != known_.frozen && applied_frozen_ < wanted_frozen_)
    emit Told(tr("冻结的列最多占视图的三分之二，其余的列在窗口变宽后冻结。"));
  const ColumnArrangement now = Now();
  if (now == known_) return;
  undo_.push_back(std::exchange(known_, now));
  if (undo_.size() > kMostUndone) undo_.erase(undo_.begin());
  redo_.clear();
  emit Changed();
}

// The columns up to which the view has room to freeze.
int JournalColumns::MostFrozen() const {
  const sheet::GridSheet& sheet = stockbook_.sheet();
  const double room = sheet.view().size().width * 2.0 / 3.0;
  int64_t taken = 0;
  for (int column = 0; column <= std::min(wanted_frozen_, sheet.Cols() - 1); ++column) {
    if (!sheet.ColHidden(column)) taken += sheet::ToPixels(sheet.ColWidth(column), sheet.view().scale());
    if (static_cast<double>(taken) > room) return std::max(0, column - 1);
  }
  return std::clamp(wanted_frozen_, 0, std::max(0, sheet.Cols() - 1));
}

void JournalColumns::LimitFrozen() {
  const int most = MostFrozen();
  if (stockbook_.Grid().FrozenCols() != most) {
    const auto aside = stockbook_.control().SetHotRowAside();
    stockbook_.Grid().SetFrozenCols(most);
  }
  applied_frozen_ = most;
}

void JournalColumns::Restore(const ColumnArrangement& wanted) {
  const bool names = DifferInVisibility(Now(), wanted);
  const auto aside = stockbook_.control().SetHotRowAside();
  const bool held = std::exchange(held_, true);
  wanted.Apply(stockbook_.Grid(), stockbook_.control().ColsFilter());
  stockbook_.Grid().SetOutlineCol(stockbook_.Grid().ColIndex(stockbook_.control().OutlineColKey()));
  wanted_frozen_ = std::max(0, wanted.frozen);
  LimitFrozen();
  held_ = held;
  // The names are composed from what is hidden.
  if (names) ComposeNames(stockbook_.control());
}

void JournalColumns::Arrange(const ColumnArrangement& wanted) {
  Restore(wanted);
  Look();
}

void JournalColumns::FreezeUpTo(int column) {
  if (column < 0 || column >= stockbook_.Grid().Cols()) return;
  ColumnArrangement wanted = Now();
  wanted.frozen = column;
  Arrange(wanted);
}

void JournalColumns::Unfreeze() { FreezeUpTo(0); }

void JournalColumns::Hide(int column) {
  const platform::Grid& grid = stockbook_.Grid();
  if (column < grid.FixedCols() || column >= grid.Cols()) return;
  if (column == grid.OutlineCol()) {
    emit Told(tr("单据列带有会计期的折叠标志，不能隐藏。"));
    return;
  }
  ColumnArrangement wanted = Now();
  for (ColumnArrangement::Column& each : wanted.columns) each.hidden = each.hidden || each.key == grid.ColKey(column);
  Arrange(wanted);
}

void JournalColumns::FitToContents() {
  Look();
  stockbook_.FitColumns();
  Look();
}

void JournalColumns::LayOutAnew() {
  Look();
  const bool held = std::exchange(held_, true);
  stockbook_.DefaultFormat();
  held_ = held;
  wanted_frozen_ = 0;
  LimitFrozen();
  ComposeNames(stockbook_.control());
  Look();
}

void JournalColumns::Undo() {
  Look();
  if (undo_.empty()) return;
  const ColumnArrangement before = undo_.back();
  undo_.pop_back();
  redo_.push_back(known_);
  Restore(before);
  known_ = Now();
  emit Changed();
}

void JournalColumns::Redo() {
  Look();
  if (redo_.empty()) return;
  const ColumnArrangement after = redo_.back();
  redo_.pop_back();
  undo_.push_back(known_);
  Restore(after);
  known_ = Now();
  emit Changed();
}

// What the user changed just before is still a change by the user.
void JournalColumns::Hold() {
  Look();
  held_ = true;
}

void JournalColumns::Settle(Earlier earlier, int frozen) {
  held_ = false;
  look_.stop();
  if (frozen >= 0) wanted_frozen_ = frozen;
  LimitFrozen();
  const ColumnArrangement before = std::exchange(known_, Now());
  // What the program has arranged otherwise is not to be brought back step by step.
  if (earlier == Earlier::kForgotten || before != known_) {
    undo_.clear();
    redo_.clear();
  }
  emit Changed();
}

}  // namespace stockbook::app
