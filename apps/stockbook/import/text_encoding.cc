// SPDX-License-Identifier: MIT
#include "stockbook/import/text_encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "base/text.h"
#include "stockbook/import/encoding_guess.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

constexpr size_t kDecodedBlock = size_t{1} << 16;
constexpr size_t kLookAhead = size_t{1} << 20;

struct EncodingSpelling {
  std::string_view spelling;  // in lower case, without dashes and blanks
  TextEncoding encoding;
};

constexpr std::array<EncodingSpelling, 18> kSpellings{{
    {"utf8", TextEncoding::kUtf8},
    {"gb18030", TextEncoding::kGb18030},
    {"gbk", TextEncoding::kGb18030},
    {"gb2312", TextEncoding::kGb18030},
    {"cp936", TextEncoding::kGb18030},
    {"936", TextEncoding::kGb18030},
    {"windows936", TextEncoding::kGb18030},
    {"ansi", TextEncoding::kGb18030},
    {"big5", TextEncoding::kBig5},
    {"cp950", TextEncoding::kBig5},
    {"utf16", TextEncoding::kUtf16Le},
    {"utf16le", TextEncoding::kUtf16Le},
    {"unicode", TextEncoding::kUtf16Le},
    {"utf16be", TextEncoding::kUtf16Be},
    {"windows1252", TextEncoding::kWindows1252},
    {"cp1252", TextEncoding::kWindows1252},
    {"latin1", TextEncoding::kWindows1252},
    {"iso88591", TextEncoding::kWindows1252},
}};

struct EncodingNamePair {
  std::string_view shown;
  const char* converters;  // as the C library calls it
};

EncodingNamePair NamesOf(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::kGb18030:
      return {"GB18030", "GB18030"};
    case TextEncoding::kBig5:
      return {"Big5", "BIG5-HKSCS"};
    case TextEncoding::kUtf16Le:
      return {"UTF-16", "UTF-16LE"};
    case TextEncoding::kUtf16Be:
      return {"UTF-16BE", "UTF-16BE"};
    case TextEncoding::kWindows1252:
      return {"Windows-1252", "WINDOWS-1252"};
    case TextEncoding::kDetected:
    case TextEncoding::kUtf8:
      break;
  }
  return {"UTF-8", "UTF-8"};
}

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

}  // namespace

// The C library's converter to UTF-8.
class DecodedSource::Converter {
 public:
  explicit Converter(TextEncoding encoding)
      : handle_(iconv_open("UTF-8", NamesOf(encoding).converters)),
        unit_(encoding == TextEncoding::kUtf16Le || encoding == TextEncoding::kUtf16Be ? 2 : 1) {
    if (handle_ != reinterpret_cast<iconv_t>(-1)) return;
    const std::string name(NamesOf(encoding).shown);
    throw TableError({"This system cannot convert " + name + "; save the table as UTF-8 and import that.",
                      "本系统无法转换 " + name + " 编码，请把表另存为 UTF-8 再导入。"});
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Appends what can be converted and takes it away; a character that is cut off at the end stays unless it is the
  // end of everything.
  void Convert(std::string& raw, bool ended, std::string& text) {
    char* from = raw.data();
    size_t left = raw.size();
    while (left > 0) {
      std::array<char, 4096> block{};
      char* to = block.data();
      size_t room = block.size();
      const size_t result = iconv(handle_, &from, &left, &to, &room);
      text.append(block.data(), block.size() - room);
      if (result != static_cast<size_t>(-1) || errno == E2BIG) continue;
      if (errno == EINVAL && !ended) break;
      text += "\xEF\xBF\xBD";
      const size_t skipped = std::min(unit_, left);
      from += skipped;
      left -= skipped;
    }
    raw.erase(0, raw.size() - left);
  }

 private:
  iconv_t handle_;
  size_t unit_;  // the bytes of what a malformed character is given up by
};

std::optional<TextEncoding> EncodingOf(std::string_view name) {
  std::string spelling = base::AsciiLower(name);
  spelling.erase(
      std::remove_if(spelling.begin(), spelling.end(), [](char c) { return c == '-' || c == '_' || c == ' '; }),
      spelling.end());
  const auto found = std::find_if(kSpellings.begin(), kSpellings.end(),
                                  [&](const EncodingSpelling& known) { return known.spelling == spelling; });
  if (found == kSpellings.end()) return std::nullopt;
  return found->encoding;
}

std::string_view EncodingNames() { return "utf-8, gb18030 (gbk, gb2312), big5, utf-16, utf-16be or windows-1252"; }

DecodedSource::DecodedSource(std::unique_ptr<ByteSource> bytes, TextEncoding encoding)
    : bytes_(std::move(bytes)), encoding_(encoding) {}

DecodedSource::~DecodedSource() = default;

std::string_view DecodedSource::EncodingName() const { return within_gbk_ ? "GBK" : NamesOf(encoding()).shown; }

// Reads until that many bytes are there; false if the input ends before.
bool DecodedSource::Fill(size_t wanted) {
  while (raw_.size() < wanted && !ended_) {
    const size_t before = raw_.size();
    raw_.resize(before + kDecodedBlock);
    const size_t more = bytes_->Read(raw_.data() + before, kDecodedBlock);
    raw_.resize(before + more);
    ended_ = more == 0;
  }
  return raw_.size() >= wanted;
}

void DecodedSource::DecideByMark() {
  begun_ = true;
  Fill(3);
  const bool detects = encoding_ == TextEncoding::kDetected;
  if (raw_.starts_with("\xEF\xBB\xBF")) {
    raw_.erase(0, 3);
    if (detects) encoding_ = TextEncoding::kUtf8;
  } else if (raw_.starts_with("\xFF\xFE") || raw_.starts_with("\xFE\xFF")) {
    const bool little = raw_.front() == '\xFF';
    const bool is_utf16 = encoding_ == TextEncoding::kUtf16Le || encoding_ == TextEncoding::kUtf16Be;
    if (!detects && !is_utf16) return;
    raw_.erase(0, 2);
    encoding_ = little ? TextEncoding::kUtf16Le : TextEncoding::kUtf16Be;
  } else if (detects && raw_.size() >= 2 && raw_.front() != '\0' && raw_[1] == '\0') {
    // Without a mark, but no other text has zeros.
    encoding_ = TextEncoding::kUtf16Le;
  }
}

void DecodedSource::Decide() {
  if (encoding_ != TextEncoding::kDetected) return;
  const auto first = std::find_if_not(raw_.begin(), raw_.end(), IsAscii);
  if (first == raw_.end()) return;
  const auto at = static_cast<size_t>(first - raw_.begin());
  const bool is_cut_off = Fill(at + kLookAhead + 1);
  const std::string_view sample = std::string_view(raw_).substr(at, kLookAhead);
  encoding_ = GuessEncoding(sample, is_cut_off ? SampleEnd::kCutOff : SampleEnd::kWhole);
  within_gbk_ = encoding_ == TextEncoding::kGb18030 && !HasFourByteCharacters(sample);
}

void DecodedSource::Convert() {
  text_.clear();
  at_ = 0;
  while (text_.empty() && (Fill(1) || !raw_.empty())) {
    Decide();
    if (encoding() == TextEncoding::kUtf8) {
      text_.swap(raw_);
      raw_.clear();
      return;
    }
    if (converter_ == nullptr) converter_ = std::make_unique<Converter>(encoding_);
    // A character that was cut off needs more.
    const size_t before = raw_.size();
    converter_->Convert(raw_, ended_, text_);
    if (text_.empty() && raw_.size() == before) Fill(before + 1);
  }
}

size_t DecodedSource::Read(char* buffer, size_t size) {
  if (!begun_) DecideByMark();
  if (at_ == text_.size()) Convert();
  const size_t count = std::min(size, text_.size() - at_);
  std::memcpy(buffer, text_.data() + at_, count);
  at_ += count;
  return count;
}

}  // namespace stockbook::app
