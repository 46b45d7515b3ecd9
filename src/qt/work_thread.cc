// SPDX-License-Identifier: MIT
#include "stockbook/qt/work_thread.h"

#include <utility>

namespace stockbook::qt {

WorkThread::WorkThread(std::function<void()> done) : done_(std::move(done)), thread_([this] { DoAll(); }) {}

WorkThread::~WorkThread() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

std::future<void> WorkThread::Start(std::function<void()> work) {
  std::packaged_task<void()> task(std::move(work));
  std::future<void> result = task.get_future();
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(task));
  }
  changed_.notify_one();
  return result;
}

void WorkThread::DoAll() {
  for (;;) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    std::packaged_task<void()> task = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    task();
    done_();
  }
}

}  // namespace stockbook::qt
