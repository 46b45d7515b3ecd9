// SPDX-License-Identifier: MIT
#include "stockbook/window/prefetched_connection.h"

#include <utility>

namespace stockbook::app {

void PrefetchedConnection::BeginMoment() { moment_ = other_->ReadAsOfOneMoment(); }

void PrefetchedConnection::Fetch(std::string statement) {
  rows_ = other_->Execute(statement);
  statement_ = std::move(statement);
}

void PrefetchedConnection::Become(const PrefetchedConnection& fresh) {
  Drop();
  other_ = fresh.other_;
}

void PrefetchedConnection::Drop() {
  rows_.reset();
  moment_.reset();
}

platform::Recordset PrefetchedConnection::Execute(std::string_view statement, int options) {
  if (rows_ && statement == statement_) return *std::exchange(rows_, std::nullopt);
  return other_->Execute(statement, options);
}

std::unique_ptr<platform::Moment> PrefetchedConnection::ReadAsOfOneMoment() {
  if (moment_ != nullptr) return std::move(moment_);
  return other_->ReadAsOfOneMoment();
}

}  // namespace stockbook::app
