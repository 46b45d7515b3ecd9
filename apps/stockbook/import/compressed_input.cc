// SPDX-License-Identifier: MIT
#include "stockbook/import/compressed_input.h"

#include <lzma.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string_view>
#include <system_error>
#include <vector>

#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

constexpr size_t kInputBlock = size_t{1} << 16;
constexpr uint64_t kMostMemory = uint64_t{1} << 30;
constexpr std::string_view kXzMagic(
    "\xFD"
    "7zXZ\0",
    6);
constexpr std::string_view kGzipMagic("\x1F\x8B", 2);

[[noreturn]] void Fail(const std::string& name, const std::string& english, const std::string& chinese) {
  throw TableError({"Cannot read '" + name + "': " + english + ".", "无法读取“" + name + "”：" + chinese + "。"});
}

// The unchanged bytes of a file or a stream; the first ones can be peeked at.
class PlainSource : public ByteSource {
 public:
  PlainSource(std::string name, std::istream& in) : name_(std::move(name)), in_(in) { Fill(); }
  PlainSource(std::string name, std::unique_ptr<std::istream> file)
      : name_(std::move(name)), file_(std::move(file)), in_(*file_) {
    Fill();
  }

  bool StartsWith(std::string_view magic) const { return std::string_view(buffer_.data(), end_).starts_with(magic); }
  const std::string& name() const { return name_; }

  size_t Read(char* buffer, size_t size) override {
    if (at_ == end_) Fill();
    const size_t count = std::min(size, end_ - at_);
    std::memcpy(buffer, buffer_.data() + at_, count);
    at_ += count;
    return count;
  }

 private:
  void Fill() {
    at_ = end_ = 0;
    in_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    end_ = static_cast<size_t>(in_.gcount());
    if (in_.bad()) Fail(name_, "the medium reports an error", "存储介质出错");
  }

  std::string name_;
  std::unique_ptr<std::istream> file_;
  std::istream& in_;
  std::vector<char> buffer_ = std::vector<char>(kInputBlock);
  size_t at_ = 0;
  size_t end_ = 0;
};

class XzSource : public ByteSource {
 public:
  explicit XzSource(std::unique_ptr<PlainSource> packed) : packed_(std::move(packed)) {
    Check(lzma_stream_decoder(&stream_, kMostMemory, LZMA_CONCATENATED));
  }
  ~XzSource() override { lzma_end(&stream_); }
  XzSource(const XzSource&) = delete;
  XzSource& operator=(const XzSource&) = delete;

  size_t Read(char* buffer, size_t size) override {
    stream_.next_out = reinterpret_cast<uint8_t*>(buffer);
    stream_.avail_out = size;
    while (stream_.avail_out == size && !ended_) {
      if (stream_.avail_in == 0 && !input_ended_) {
        stream_.next_in = reinterpret_cast<const uint8_t*>(block_.data());
        stream_.avail_in = packed_->Read(block_.data(), block_.size());
        input_ended_ = stream_.avail_in == 0;
      }
      Check(lzma_code(&stream_, input_ended_ ? LZMA_FINISH : LZMA_RUN));
    }
    return size - stream_.avail_out;
  }

 private:
  void Check(lzma_ret code) {
    if (code == LZMA_OK) return;
    if (code == LZMA_STREAM_END) {
      ended_ = true;
      return;
    }
    const std::string& name = packed_->name();
    if (code == LZMA_BUF_ERROR)
      Fail(name, "its xz data ends too early; fetch the file again", "xz 数据不完整，请重新获取文件");
    if (code == LZMA_FORMAT_ERROR) Fail(name, "it is no xz data", "内容不是 xz 数据");
    if (code == LZMA_MEM_ERROR || code == LZMA_MEMLIMIT_ERROR)
      Fail(name, "unpacking it needs more than 1 GiB of memory", "解压需要超过 1 GiB 的内存");
    Fail(name, "its xz data is damaged; fetch the file again", "xz 数据已损坏，请重新获取文件");
  }

  std::unique_ptr<PlainSource> packed_;
  lzma_stream stream_ = LZMA_STREAM_INIT;
  std::array<char, kInputBlock> block_{};
  bool input_ended_ = false;
  bool ended_ = false;
};

class GzipSource : public ByteSource {
 public:
  explicit GzipSource(std::unique_ptr<PlainSource> packed) : packed_(std::move(packed)) {
    constexpr int kGzipAlone = 16;
    if (inflateInit2(&stream_, MAX_WBITS + kGzipAlone) != Z_OK)
      Fail(packed_->name(), "there is not enough memory to unpack it", "内存不足，无法解压");
  }
  ~GzipSource() override { inflateEnd(&stream_); }
  GzipSource(const GzipSource&) = delete;
  GzipSource& operator=(const GzipSource&) = delete;

  size_t Read(char* buffer, size_t size) override {
    const auto wanted = static_cast<uInt>(std::min<size_t>(size, kInputBlock));
    stream_.next_out = reinterpret_cast<Bytef*>(buffer);
    stream_.avail_out = wanted;
    while (stream_.avail_out == wanted && !ended_) {
      if (stream_.avail_in == 0 && !Refill()) break;
      Inflate();
    }
    return wanted - stream_.avail_out;
  }

 private:
  // False if the input ends between two members, which is the end of the data.
  bool Refill() {
    stream_.next_in = reinterpret_cast<Bytef*>(block_.data());
    stream_.avail_in = static_cast<uInt>(packed_->Read(block_.data(), block_.size()));
    if (stream_.avail_in > 0) return true;
    if (!between_members_)
      Fail(packed_->name(), "its gzip data ends too early; fetch the file again", "gzip 数据不完整，请重新获取文件");
    ended_ = true;
    return false;
  }

  void Inflate() {
    if (between_members_ && members_ > 0) {
      // Files from tapes are padded with zeros.
      while (stream_.avail_in > 0 && *stream_.next_in == 0) ++stream_.next_in, --stream_.avail_in;
      if (stream_.avail_in == 0) return;
    }
    between_members_ = false;
    const int code = inflate(&stream_, Z_NO_FLUSH);
    if (code == Z_STREAM_END) {
      ++members_;
      between_members_ = true;
      inflateReset(&stream_);
    } else if (code != Z_OK) {
      Fail(packed_->name(), "its gzip data is damaged; fetch the file again", "gzip 数据已损坏，请重新获取文件");
    }
  }

  std::unique_ptr<PlainSource> packed_;
  z_stream stream_{};
  std::array<char, kInputBlock> block_{};
  int64_t members_ = 0;
  bool between_members_ = false;
  bool ended_ = false;
};

}  // namespace

std::unique_ptr<ByteSource> OpenInput(const std::string& path, std::istream& in) {
  std::unique_ptr<PlainSource> plain;
  if (path == "-") {
    plain = std::make_unique<PlainSource>("standard input", in);
  } else {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
      Fail(path, "it is a folder; give the name of a file", "这是文件夹，请选择文件");
    auto file = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!*file) {
      const std::string reason = std::generic_category().message(errno);
      Fail(path, reason, reason);
    }
    plain = std::make_unique<PlainSource>(path, std::move(file));
  }
  if (plain->StartsWith(kXzMagic) || path.ends_with(".xz")) return std::make_unique<XzSource>(std::move(plain));
  if (plain->StartsWith(kGzipMagic) || path.ends_with(".gz")) return std::make_unique<GzipSource>(std::move(plain));
  return plain;
}

}  // namespace stockbook::app
