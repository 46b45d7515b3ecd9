// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace stockbook::app {

// A set of the records 0 to size() - 1, one bit each. A plain value; what combines two sets of one size works on 64
// records at once.
class RowBits {
 public:
  static constexpr size_t kWordRows = 64;

  RowBits() = default;
  explicit RowBits(size_t size) : size_(size), words_((size + kWordRows - 1) / kWordRows) {}
  static RowBits All(size_t size) {
    RowBits all(size);
    for (uint64_t& word : all.words_) word = ~uint64_t{0};
    if (size % kWordRows != 0) all.words_.back() = (uint64_t{1} << size % kWordRows) - 1;
    return all;
  }

  size_t size() const { return size_; }
  std::vector<uint64_t>& words() { return words_; }
  const std::vector<uint64_t>& words() const { return words_; }
  bool Has(size_t record) const { return (words_[record / kWordRows] >> record % kWordRows & 1U) != 0; }
  void Add(size_t record) { words_[record / kWordRows] |= uint64_t{1} << record % kWordRows; }
  size_t Count() const {
    size_t count = 0;
    for (const uint64_t word : words_) count += static_cast<size_t>(std::popcount(word));
    return count;
  }
  void KeepOnly(const std::vector<uint64_t>& others) {
    for (size_t at = 0; at < words_.size(); ++at) words_[at] &= others[at];
  }
  void Join(const RowBits& others) {
    for (size_t at = 0; at < words_.size(); ++at) words_[at] |= others.words_[at];
  }
  void Drop(const RowBits& others) {
    for (size_t at = 0; at < words_.size(); ++at) words_[at] &= ~others.words_[at];
  }

 private:
  size_t size_ = 0;
  std::vector<uint64_t> words_;
};

}  // namespace stockbook::app
