// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::testing {

// Which of the requests for memory are refused, counting from 1.
enum class Refusal { kOne, kAllFromThenOn };

// Refuses memory to the whole program while it lives: the n-th request, or all from the n-th on. One at a time, on one
// thread.
class RefusedMemory {
 public:
  RefusedMemory(Refusal refusal, long request);
  ~RefusedMemory();
  RefusedMemory(const RefusedMemory&) = delete;
  RefusedMemory& operator=(const RefusedMemory&) = delete;

  // Whether a request has been refused.
  static bool HasRefused();
};

}  // namespace stockbook::testing
