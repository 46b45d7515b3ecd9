// SPDX-License-Identifier: MIT
#include "databases/odbc/odbc_worker.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace stockbook::databases {

struct OdbcWorker::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  std::function<void()> job;
  std::exception_ptr thrown;
  bool busy = false;
  bool ends = false;
};

OdbcWorker::OdbcWorker() : shared_(std::make_shared<Shared>()) {
  std::thread([shared = shared_] { Work(shared); }).detach();
}

OdbcWorker::~OdbcWorker() {
  const std::lock_guard lock(shared_->mutex);
  shared_->ends = true;
  shared_->changed.notify_all();
}

void OdbcWorker::Start(std::function<void()> job) {
  const std::lock_guard lock(shared_->mutex);
  shared_->job = std::move(job);
  shared_->thrown = nullptr;
  shared_->busy = true;
  shared_->changed.notify_all();
}

bool OdbcWorker::HasEndedWithin(Clock::duration patience) {
  std::unique_lock lock(shared_->mutex);
  return shared_->changed.wait_for(lock, patience, [&] { return !shared_->busy; });
}

void OdbcWorker::Rethrow() {
  const std::lock_guard lock(shared_->mutex);
  if (const auto thrown = std::exchange(shared_->thrown, nullptr)) std::rethrow_exception(thrown);
}

void OdbcWorker::Work(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->mutex);
  for (;;) {
    shared->changed.wait(lock, [&] { return shared->job != nullptr || shared->ends; });
    if (shared->job == nullptr) return;
    std::function<void()> job = std::exchange(shared->job, nullptr);
    lock.unlock();
    std::exception_ptr thrown;
    try {
      job();
    } catch (...) {
      thrown = std::current_exception();
    }
    job = nullptr;
    lock.lock();
    shared->thrown = thrown;
    shared->busy = false;
    shared->changed.notify_all();
  }
}

}  // namespace stockbook::databases
