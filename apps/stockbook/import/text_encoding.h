// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "stockbook/import/compressed_input.h"

namespace stockbook::app {

// How the bytes of a table are text. GBK and its subset GB2312 are read as GB18030, which contains them.
enum class TextEncoding { kDetected, kUtf8, kGb18030, kBig5, kUtf16Le, kUtf16Be, kWindows1252 };

// The encoding of a name in any spelling ("GBK", "gb-2312", "cp936", "utf8"); nothing for an unknown one.
std::optional<TextEncoding> EncodingOf(std::string_view name);
// The names that EncodingOf is asked for, for messages.
std::string_view EncodingNames();

// A stream of bytes as UTF-8. An encoding that is to be detected is decided by the byte-order mark, or at the first
// byte that is not ASCII by what follows it, up to a megabyte: UTF-8 if that is well-formed, GB18030 if that is and if
// it reads like Chinese, otherwise UTF-8 with what is malformed left to the reader. What cannot be converted becomes
// U+FFFD. Memory: what is looked at and a block.
class DecodedSource : public ByteSource {
 public:
  DecodedSource(std::unique_ptr<ByteSource> bytes, TextEncoding encoding);
  ~DecodedSource() override;

  size_t Read(char* buffer, size_t size) override;

  // What the bytes were read as so far; kUtf8 while they are ASCII.
  TextEncoding encoding() const { return encoding_ == TextEncoding::kDetected ? TextEncoding::kUtf8 : encoding_; }
  // The common name of encoding(); "GBK" for GB18030 that was detected in what needs no more than that.
  std::string_view EncodingName() const;

 private:
  class Converter;

  bool Fill(size_t wanted);
  void Decide();
  void DecideByMark();
  void Convert();

  std::unique_ptr<ByteSource> bytes_;
  TextEncoding encoding_;
  std::string raw_;  // read and not converted
  bool ended_ = false;
  bool begun_ = false;
  bool within_gbk_ = false;
  std::unique_ptr<Converter> converter_;
  std::string text_;  // converted and not taken from here on
  size_t at_ = 0;
};

}  // namespace stockbook::app
