// SPDX-License-Identifier: MIT
#include "databases/execution/interruption.h"

#include <algorithm>
#include <string>
#include <thread>

#include "base/number.h"

namespace stockbook::databases {
namespace {

constexpr std::chrono::milliseconds kLongestWait{2000};
constexpr std::chrono::milliseconds kLongestPause{10};

}  // namespace

Interruption::Running::Running(Interruption& interruption) : interruption_(interruption) {
  const std::lock_guard lock(interruption.mutex_);
  outermost_ = !interruption.running_;
  if (!outermost_) return;
  interruption.started_ = Clock::now();
  interruption.running_ = true;
  interruption.rows_.store(0, std::memory_order_relaxed);
  interruption.cancelled_.store(false, std::memory_order_relaxed);
}

Interruption::Running::~Running() {
  if (!outermost_) return;
  const std::lock_guard lock(interruption_.mutex_);
  interruption_.used_ += Clock::now() - interruption_.started_;
  interruption_.running_ = false;
  interruption_.cancelled_.store(false, std::memory_order_relaxed);
}

void Interruption::BeginMoment() {
  used_ = {};
  made_ = 0;
  started_ = Clock::now();
}

void Interruption::Cancel() {
  const std::lock_guard lock(mutex_);
  if (running_) cancelled_.store(true, std::memory_order_relaxed);
}

bool Interruption::IsDue() const {
  if (leader_ != nullptr) return leader_->IsDue();
  return WasCancelled() || (limit_ && used_ + (Clock::now() - started_) >= *limit_);
}

std::optional<Interruption::Clock::duration> Interruption::Left() const {
  if (leader_ != nullptr) return leader_->Left();
  if (!limit_) return std::nullopt;
  return std::max(*limit_ - used_ - (Clock::now() - started_), Clock::duration::zero());
}

void Interruption::Check() const {
  if (IsDue()) throw Reason("Execute");
}

std::optional<Interruption::Clock::duration> Interruption::Remaining() const {
  if (!limit_) return std::nullopt;
  return std::max(Clock::duration{0}, *limit_ - used_ - (Clock::now() - started_));
}

bool Interruption::IsDueAfter(size_t work) {
  constexpr size_t kPortion = 256;
  work_ += work;
  if (work_ < kPortion) return WasCancelled();
  work_ = 0;
  return IsDue();
}

bool Interruption::MayMake(size_t bytes) {
  constexpr size_t kMostBytes = size_t{1} << 31;
  made_ += bytes;
  return made_ <= kMostBytes;
}

void Interruption::CountRows(size_t rows) const {
  if (leader_ != nullptr) return leader_->CountRows(rows);
  rows_.fetch_add(rows, std::memory_order_relaxed);
}

bool Interruption::WaitForLock(int tries) {
  const auto now = Clock::now();
  if (tries == 0) lock_met_ = now;
  if (now - lock_met_ >= kLongestWait || IsDue()) return false;
  std::this_thread::sleep_for(std::min(kLongestPause, std::chrono::milliseconds{1 + tries}));
  return true;
}

platform::Error Interruption::Reason(const char* operation) const {
  if (leader_ != nullptr) return leader_->Reason(operation);
  constexpr auto kKind = platform::ErrorKind::kInterrupted;
  if (WasCancelled() || !limit_) return {operation, "语句已被取消", 0, kKind};
  const double seconds = std::chrono::duration<double>(*limit_).count();
  return {operation,
          "语句用时超过了连接字符串规定的时限 " + base::NumberText(seconds) + " 秒，请缩小查询的范围，或调大 Timeout",
          0, kKind};
}

}  // namespace stockbook::databases
