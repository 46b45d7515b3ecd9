// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

#include "stockbook/base/api.h"

namespace stockbook::base {

// A hash that nobody outside of the process can foresee, so that stored keys cannot be chosen to collide. It differs
// from run to run: it may decide where an entry lies in a table, never an order or a result that anyone sees. Copies
// agree, and so do all hashes of a process. O(length).
class STOCKBOOK_API SeededHash {
 public:
  // With the seed of the process.
  SeededHash();

  // Both in all 64 bits.
  uint64_t operator()(std::string_view bytes) const;
  uint64_t operator()(uint64_t number) const;

 private:
  uint64_t first_;
  uint64_t second_;
};

}  // namespace stockbook::base
