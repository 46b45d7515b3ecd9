// SPDX-License-Identifier: MIT
#include "databases/execution/side_by_side.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace stockbook::databases {
namespace {

class SideTasks {
 public:
  SideTasks(size_t tasks, const SideTask& work) : work_(work), failures_(tasks) {}

  void Run() noexcept {
    for (size_t task = next_++; task < failures_.size() && !failed_; task = next_++) {
      try {
        work_(task, failed_);
      } catch (const EndedEarly&) {
        failed_ = true;
      } catch (...) {
        failures_[task] = std::current_exception();
        failed_ = true;
      }
    }
  }

  void ThrowFirst() const {
    for (const std::exception_ptr& failure : failures_) {
      if (failure) std::rethrow_exception(failure);
    }
  }

 private:
  const SideTask& work_;
  std::vector<std::exception_ptr> failures_;
  std::atomic<size_t> next_ = 0;
  std::atomic<bool> failed_ = false;
};

}  // namespace

void RunSideBySide(size_t tasks, size_t threads, const SideTask& work) {
  SideTasks all(tasks, work);
  {
    std::vector<std::jthread> others;
    const size_t wanted = std::min(threads, tasks);
    others.reserve(wanted);
    try {
      while (others.size() + 1 < wanted) others.emplace_back([&all] { all.Run(); });
    } catch (const std::system_error&) {
      // The threads that there are do it all.
    }
    all.Run();
  }
  all.ThrowFirst();
}

}  // namespace stockbook::databases
