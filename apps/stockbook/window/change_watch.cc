// SPDX-License-Identifier: MIT
#include "stockbook/window/change_watch.h"

#include <utility>

namespace stockbook::app {
namespace {

constexpr int kFilePauseMs = 2000;
constexpr int kServerPauseMs = 60'000;

}  // namespace

ChangeWatch::ChangeWatch(QObject* parent) : QObject(parent), file_ms_(kFilePauseMs), server_ms_(kServerPauseMs) {
  connect(&timer_, &QTimer::timeout, this, &ChangeWatch::Look);
}

void ChangeWatch::SetPause(int file_ms, int server_ms) {
  file_ms_ = file_ms;
  server_ms_ = server_ms;
  if (timer_.isActive()) timer_.start(mark_.IsOfFile() ? file_ms_ : server_ms_);
}

void ChangeWatch::Follow(std::shared_ptr<platform::Connection> connection, const std::string& file) {
  connection_ = std::move(connection);
  mark_ = InventoryMark(file);
  shown_.clear();
  told_.clear();
  timer_.start(mark_.IsOfFile() ? file_ms_ : server_ms_);
}

void ChangeWatch::LoadBegins() { loading_ = mark_.Read(connection_.get()); }

void ChangeWatch::LoadSucceeded() {
  shown_ = loading_;
  told_.clear();
}

void ChangeWatch::Look() {
  if (shown_.empty()) return;
  const std::string now = mark_.Read(connection_.get());
  if (now.empty() || now == shown_ || now == told_) return;
  told_ = now;
  emit Changed();
}

}  // namespace stockbook::app
