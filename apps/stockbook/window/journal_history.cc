// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_history.h"

#include <utility>

namespace stockbook::app {
namespace {

constexpr size_t kMostStops = 100;

}  // namespace

JournalHistory::JournalHistory(qt::StockbookWidget& stockbook, ShownJournal& journal, WindowMenus& menus,
                               LoadJournal load)
    : stockbook_(stockbook),
      journal_(journal),
      load_(std::move(load)),
      back_item_(menus.Add(MenuPlace::kGoBack, tr("后退(&B)"), QKeySequence(Qt::ALT | Qt::Key_Left), this,
                           &JournalHistory::Back)),
      forward_item_(menus.Add(MenuPlace::kGoBack, tr("前进(&F)"), QKeySequence(Qt::ALT | Qt::Key_Right), this,
                              &JournalHistory::Forward)) {
  connect(&journal_, &ShownJournal::Leaving, this, &JournalHistory::Leave);
  connect(&journal_, &ShownJournal::Arrived, this, &JournalHistory::Arrive);
  Follow();
}

void JournalHistory::Leave() {
  left_.reset();
  if (journal_.options().has_value()) left_ = Stop{*journal_.options(), ReadingPlace(stockbook_.sheet())};
}

void JournalHistory::Arrive(bool loaded) {
  if (!loaded || going_ || !left_.has_value() || IsSameJournal(left_->options, *journal_.options())) return;
  back_.push_back(*left_);
  if (back_.size() > kMostStops) back_.erase(back_.begin());
  forward_.clear();
  Follow();
}

// A journal that can no longer be loaded stays where it is in the list, so that it can be tried again.
void JournalHistory::Go(std::vector<Stop>& from, std::vector<Stop>& to) {
  if (from.empty() || journal_.IsLoading()) return;
  const Stop target = from.back();
  going_ = true;
  const bool loaded = load_(target.options).loaded;
  going_ = false;
  if (!loaded) return;
  from.pop_back();
  if (left_.has_value()) to.push_back(*left_);
  target.place.GoBack(stockbook_.sheet());
  Follow();
}

void JournalHistory::Clear() {
  left_.reset();
  back_.clear();
  forward_.clear();
  Follow();
}

void JournalHistory::Follow() {
  back_item_->setEnabled(!back_.empty());
  forward_item_->setEnabled(!forward_.empty());
}

}  // namespace stockbook::app
