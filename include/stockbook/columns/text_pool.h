// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/seeded_hash.h"
#include "stockbook/base/substring.h"

namespace stockbook::columns {

// The distinct texts of a column, each with a code from 1 on in order of first appearance; code 0 means null and
// reads as "". Adding looks a text up by hash, O(length); texts never move once they are in.
class STOCKBOOK_API TextPool {
 public:
  // This many bytes after the end of a text may be read, whatever they contain: copying short texts is fastest without
  // looking at their length.
  static constexpr size_t kSlack = 48;

  // Of no text but the empty one, code 0.
  TextPool();
  TextPool(const TextPool&) = delete;
  TextPool& operator=(const TextPool&) = delete;

  // The code of the text, a new one where it is not in yet. Not after Seal.
  uint32_t Add(std::string_view text);
  // Adds up to kMostAtOnce texts and writes their codes. Several times as fast as adding them one by one where there
  // are many different ones: the memory that they need is fetched for all together.
  void AddAll(std::span<const std::string_view> texts, std::span<uint32_t> codes);
  // How many texts AddAll takes.
  static constexpr size_t kMostAtOnce = 64;
  // Valid as long as the pool; "" for a code that is not there.
  std::string_view TextOf(uint32_t code) const;
  // Prefetches these texts, which are scattered in memory; reading them soon after is several times as fast.
  void Prefetch(std::span<const int64_t> codes) const;
  // Sets the bits in marks[code] for every text that contains the part; one pass over all texts in memory order, which
  // is several times as fast as reading them one by one. The part is not empty and holds no NUL.
  void MarkContaining(const base::Substring& part, uint8_t bits, std::span<uint8_t> marks) const;
  // One above the highest code, and so at least 1.
  uint32_t CodeCount() const { return static_cast<uint32_t>(texts_.size()); }
  // Drops what only Add needs; the pool is read-only from then on.
  void Seal();
  // Approximate memory, that of the texts included.
  size_t MemoryBytes() const;

 private:
  const char* Store(std::string_view text);
  uint32_t AddHashed(std::string_view text, uint32_t hash);
  // Buckets for this many codes, at least half of them free.
  void MakeRoomFor(size_t codes);

  std::vector<const char*> texts_;  // by code: the length in one byte, or in five, then the text
  // The hash is stored beside the code, so that growing and skipping other texts never reads a text.
  struct Bucket {
    uint32_t hash = 0;
    uint32_t code = 0;  // 0 is free
  };
  std::vector<Bucket> buckets_;
  base::SeededHash hash_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::vector<uint32_t> block_codes_;  // the first code of each block
  size_t block_used_ = 0;
  size_t block_size_ = 0;
  size_t stored_bytes_ = 0;
};

}  // namespace stockbook::columns
