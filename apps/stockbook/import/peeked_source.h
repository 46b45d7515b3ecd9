// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "stockbook/import/compressed_input.h"

namespace stockbook::app {

// A stream whose first bytes can be looked at before it is read.
class PeekedSource : public ByteSource {
 public:
  explicit PeekedSource(std::unique_ptr<ByteSource> source) : source_(std::move(source)) {}

  // Up to `most` of the bytes that come next; fewer only at the end of the stream. Valid until the next call.
  std::string_view Front(size_t most);
  size_t Read(char* buffer, size_t size) override;

 private:
  std::unique_ptr<ByteSource> source_;
  std::string front_;
  size_t at_ = 0;
};

}  // namespace stockbook::app
