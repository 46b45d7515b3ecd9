// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

namespace stockbook::databases {

// Thrown by a task that ends because another one has failed.
struct EndedEarly {};

// Calls work(task, failed) for every task from 0 on, on up to `threads` threads, of which the caller's is one, and
// returns when all have ended. Once a task has thrown, `failed` is set, no other begins, and what the first one of
// those that threw has thrown comes out. Where the system refuses a thread, there are fewer.
using SideTask = std::function<void(size_t task, const std::atomic<bool>& failed)>;
void RunSideBySide(size_t tasks, size_t threads, const SideTask& work);

}  // namespace stockbook::databases
