// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace stockbook::platform {

// The distinct texts of a column, each with a code from 1 on in order of first appearance; code 0 stands for null and
// reads as "". Adding looks a text up by hash, O(length); texts never move once they are in.
class TextPool {
 public:
  // So many bytes beyond the end of a text may be read, whatever is in them: short texts are copied fastest without
  // looking at their length.
  static constexpr size_t kSlack = 48;

  TextPool();
  TextPool(const TextPool&) = delete;
  TextPool& operator=(const TextPool&) = delete;

  uint32_t Add(std::string_view text);
  std::string_view TextOf(uint32_t code) const;
  uint32_t CodeCount() const { return static_cast<uint32_t>(texts_.size()); }
  // Drops what only Add needs; the pool is read-only from then on.
  void Seal();
  size_t MemoryBytes() const;

 private:
  const char* Store(std::string_view text);
  void Grow();

  std::vector<const char*> texts_;  // by code: the length in four bytes, then the text
  // The hash stands beside the code, so that growing and passing by other texts never reads a text.
  struct Bucket {
    uint32_t hash = 0;
    uint32_t code = 0;  // 0 is free
  };
  std::vector<Bucket> buckets_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  size_t block_used_ = 0;
  size_t block_size_ = 0;
  size_t stored_bytes_ = 0;
};

}  // namespace stockbook::platform
