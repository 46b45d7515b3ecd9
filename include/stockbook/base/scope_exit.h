// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace stockbook::base {

// Makes a call when the scope ends, by an error too. What the call throws is dropped: the scope may already be ending
// for an error that matters more.
template <typename Call>
class ScopeExit {
 public:
  // Makes the call at the end alone.
  explicit ScopeExit(Call call) : call_(std::move(call)) {}
  // Makes the first call at once; the other one also follows when the first one throws.
  template <typename First>
  ScopeExit(First first, Call call) : ScopeExit(std::move(call)) {
    first();
  }
  ~ScopeExit() {
    try {
      call_();
    } catch (...) {
    }
  }
  ScopeExit(const ScopeExit&) = delete;
  ScopeExit& operator=(const ScopeExit&) = delete;

 private:
  Call call_;
};

}  // namespace stockbook::base
