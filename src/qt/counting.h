// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::qt {

// Increments a counter for its lifetime, however that ends.
class Counting {
 public:
  explicit Counting(int& count) : count_(count) { ++count_; }
  ~Counting() { --count_; }
  Counting(const Counting&) = delete;
  Counting& operator=(const Counting&) = delete;

 private:
  int& count_;
};

}  // namespace stockbook::qt
