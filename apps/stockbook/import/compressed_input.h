// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>

namespace stockbook::app {

// A stream of bytes that is read once from front to back.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // Reads up to `size` (at least 1) bytes; returns 0 only at the end. Throws platform::Error if the input cannot be
  // read, is damaged or ends too early.
  virtual size_t Read(char* buffer, size_t size) = 0;
};

// The bytes of a file, or of `in` for "-", decompressed if they are xz or gzip data, which is recognised by their first
// bytes or by the file extension, so that a damaged .xz file is an error and not text. Throws platform::Error if it
// cannot be opened.
std::unique_ptr<ByteSource> OpenInput(const std::string& path, std::istream& in);

}  // namespace stockbook::app
