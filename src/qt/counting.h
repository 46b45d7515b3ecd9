// SPDX-License-Identifier: MIT
#pragma once

namespace stockbook::qt {

// One more of something for its life, however that ends.
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
