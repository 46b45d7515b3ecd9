// SPDX-License-Identifier: MIT
#include "stockbook/import/peeked_source.h"

#include <algorithm>
#include <cstring>

namespace stockbook::app {

std::string_view PeekedSource::Front(size_t most) {
  constexpr size_t kPeekBlock = size_t{1} << 16;
  front_.erase(0, at_);
  at_ = 0;
  while (front_.size() < most) {
    const size_t before = front_.size();
    front_.resize(before + kPeekBlock);
    const size_t more = source_->Read(front_.data() + before, kPeekBlock);
    front_.resize(before + more);
    if (more == 0) break;
  }
  return std::string_view(front_).substr(0, most);
}

size_t PeekedSource::Read(char* buffer, size_t size) {
  if (at_ == front_.size()) return source_->Read(buffer, size);
  const size_t count = std::min(size, front_.size() - at_);
  std::memcpy(buffer, front_.data() + at_, count);
  at_ += count;
  return count;
}

}  // namespace stockbook::app
