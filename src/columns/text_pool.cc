// SPDX-License-Identifier: MIT
#include "stockbook/columns/text_pool.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace stockbook::columns {
namespace {

constexpr size_t kFirstBlock = 256;
constexpr size_t kLargestBlock = size_t{1} << 20;
// Stands before the four bytes of the length of a text that is as long or longer.
constexpr unsigned char kLong = 255;

uint32_t Folded(uint64_t hash) { return static_cast<uint32_t>(hash ^ (hash >> 32)); }

}  // namespace

TextPool::TextPool() { texts_.push_back(nullptr); }

std::string_view TextPool::TextOf(uint32_t code) const {
  if (code == 0 || code >= texts_.size()) return {};
  const char* data = texts_[code];
  const auto first = static_cast<unsigned char>(*data);
  if (first != kLong) return {data + 1, first};
  uint32_t length = 0;
  std::memcpy(&length, data + 1, sizeof(length));
  return {data + 1 + sizeof(length), length};
}

void TextPool::Prefetch(std::span<const int64_t> codes) const {
  for (const int64_t code : codes) {
    const char* data = texts_[static_cast<size_t>(code)];
    if (data == nullptr) continue;
    __builtin_prefetch(data);
    __builtin_prefetch(data + kSlack);
  }
}

const char* TextPool::Store(std::string_view text) {
  const bool is_long = text.size() >= kLong;
  const auto length = static_cast<uint32_t>(text.size());
  const size_t header = is_long ? 1 + sizeof(length) : 1;
  const size_t needed = header + text.size();
  if (block_size_ - block_used_ < needed) {
    block_size_ = std::max(needed, std::clamp(block_size_ * 2, kFirstBlock, kLargestBlock));
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(block_size_ + kSlack));
    block_codes_.push_back(CodeCount());
    block_used_ = 0;
    stored_bytes_ += block_size_ + kSlack;
  }
  char* data = blocks_.back().get() + block_used_;
  *data = static_cast<char>(is_long ? kLong : length);
  if (is_long) std::memcpy(data + 1, &length, sizeof(length));
  if (!text.empty()) std::memcpy(data + header, text.data(), text.size());
  block_used_ += needed;
  return data;
}

void TextPool::MakeRoomFor(size_t codes) {
  constexpr size_t kFewest = 16;
  if (codes * 2 <= buckets_.size()) return;
  std::vector<Bucket> buckets(std::max(kFewest, std::bit_ceil(codes * 2)));
  const size_t mask = buckets.size() - 1;
  for (const Bucket& bucket : buckets_) {
    if (bucket.code == 0) continue;
    size_t at = bucket.hash & mask;
    while (buckets[at].code != 0) at = (at + 1) & mask;
    buckets[at] = bucket;
  }
  buckets_ = std::move(buckets);
}

uint32_t TextPool::Add(std::string_view text) { return AddHashed(text, Folded(hash_(text))); }

void TextPool::AddAll(std::span<const std::string_view> texts, std::span<uint32_t> codes) {
  MakeRoomFor(texts_.size() + texts.size());
  const size_t mask = buckets_.size() - 1;
  std::array<uint32_t, kMostAtOnce> hashes;
  for (size_t at = 0; at < texts.size(); ++at) {
    hashes[at] = Folded(hash_(texts[at]));
    __builtin_prefetch(&buckets_[hashes[at] & mask]);
  }
  for (size_t at = 0; at < texts.size(); ++at) codes[at] = AddHashed(texts[at], hashes[at]);
}

uint32_t TextPool::AddHashed(std::string_view text, uint32_t hash) {
  MakeRoomFor(texts_.size());
  const size_t mask = buckets_.size() - 1;
  size_t at = hash & mask;
  for (; buckets_[at].code != 0; at = (at + 1) & mask) {
    if (buckets_[at].hash == hash && TextOf(buckets_[at].code) == text) return buckets_[at].code;
  }
  const auto code = static_cast<uint32_t>(texts_.size());
  texts_.push_back(Store(text));
  buckets_[at] = {hash, code};
  return code;
}

void TextPool::MarkContaining(const base::Substring& part, uint8_t bits, std::span<uint8_t> marks) const {
  for (size_t block = 0; block < block_codes_.size(); ++block) {
    uint32_t code = block_codes_[block];
    const uint32_t end_code = block + 1 < block_codes_.size() ? block_codes_[block + 1] : CodeCount();
    const char* const begin = texts_[code];
    const std::string_view last = TextOf(end_code - 1);
    const std::string_view all(begin, static_cast<size_t>(last.data() + last.size() - begin));
    for (size_t at = part.FindIn(all, 0); at != base::Substring::kNone;) {
      // The text that contains it is usually close by.
      uint32_t step = 1;
      while (code + step < end_code && texts_[code + step] <= begin + at) {
        code += step;
        step *= 2;
      }
      for (; step > 0; step /= 2) {
        if (code + step < end_code && texts_[code + step] <= begin + at) code += step;
      }
      // The bytes of a stored length may look like part of a text.
      const std::string_view text = TextOf(code);
      const auto text_at = static_cast<size_t>(text.data() - begin);
      const bool inside = at >= text_at && at + part.text().size() <= text_at + text.size();
      if (inside) marks[code] |= bits;
      at = part.FindIn(all, inside ? text_at + text.size() : at + 1);
    }
  }
}

void TextPool::Seal() {
  std::vector<Bucket>().swap(buckets_);
  texts_.shrink_to_fit();
  block_codes_.shrink_to_fit();
}

size_t TextPool::MemoryBytes() const {
  return stored_bytes_ + texts_.capacity() * sizeof(texts_[0]) + buckets_.capacity() * sizeof(buckets_[0]);
}

}  // namespace stockbook::columns
