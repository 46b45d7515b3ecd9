// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace stockbook::fuzz {

// Takes the bytes that a fuzzer makes up apart. Whatever is asked for after the last byte is zero or empty, so that
// every input means something.
class FuzzedBytes {
 public:
  FuzzedBytes(const uint8_t* data, size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return rest_.empty(); }
  // Raw bits, also of numbers that are no number.
  template <typename Number>
  Number Take() {
    Number number{};
    const std::string_view bytes = TakeBytes(sizeof number);
    std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }
  size_t Below(size_t limit) { return limit <= 1 ? 0 : Take<uint16_t>() % limit; }
  std::string_view TakeBytes(size_t count) {
    const std::string_view taken = rest_.substr(0, std::min(count, rest_.size()));
    rest_.remove_prefix(taken.size());
    return taken;
  }
  // Up to the next line feed, which belongs to neither.
  std::string_view TakeLine() {
    const std::string_view line = TakeBytes(std::min(rest_.find('\n'), rest_.size()));
    TakeBytes(1);
    return line;
  }
  std::string_view TakeAll() { return TakeBytes(rest_.size()); }

 private:
  std::string_view rest_;
};

// What always holds; otherwise the fuzzer has found something, and keeps the input.
inline void Require(bool holds, std::string_view what, const std::string& details = {}) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: it does not hold that %.*s\n%s\n", static_cast<int>(what.size()), what.data(),
               details.c_str());
  std::abort();
}

}  // namespace stockbook::fuzz
