// SPDX-License-Identifier: MIT
#include "stockbook/import/compressed_input.h"

#include <lzma.h>
#include <zlib.h>

#include <sstream>

#include "app/inventory_fixture.h"
#include "stockbook/platform/error.h"
#include "stockbook/sample/sample_random.h"

namespace stockbook::app {
namespace {

std::string Xz(const std::string& text) {
  std::string packed(text.size() + 1000, '\0');
  size_t size = 0;
  const lzma_ret code =
      lzma_easy_buffer_encode(1, LZMA_CHECK_CRC32, nullptr, reinterpret_cast<const uint8_t*>(text.data()), text.size(),
                              reinterpret_cast<uint8_t*>(packed.data()), &size, packed.size());
  EXPECT_EQ(code, LZMA_OK);
  packed.resize(size);
  return packed;
}

std::string Gzip(const std::string& text) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string packed(text.size() + 1000, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

// Text that compresses badly, so that it spans several blocks.
std::string LongText() {
  SampleRandom random(3);
  std::string text;
  for (int count = 0; count < 300000; ++count) text += static_cast<char>('a' + random.Below(26));
  return text;
}

class CompressedInputTest : public InventoryTest {
 protected:
  std::string Unpacked(const std::string& path, const std::string& input = {}) {
    std::istringstream in(input);
    const auto source = OpenInput(path, in);
    std::string text;
    std::string buffer(5000, '\0');
    while (const size_t count = source->Read(buffer.data(), buffer.size())) text.append(buffer, 0, count);
    EXPECT_EQ(source->Read(buffer.data(), buffer.size()), 0u) << "the end is not the end";
    return text;
  }
};

TEST_F(CompressedInputTest, ReadsPlainXzAndGzipDataByTheirFirstBytes) {
  const std::string text = LongText();
  EXPECT_EQ(Unpacked(Write("a.csv", text)), text);
  EXPECT_EQ(Unpacked(Write("b.csv", Xz(text))), text);
  EXPECT_EQ(Unpacked(Write("c.csv", Gzip(text))), text);
  EXPECT_EQ(Unpacked("-", text), text);
  EXPECT_EQ(Unpacked("-", Xz(text)), text);
  EXPECT_EQ(Unpacked("-", Gzip(text)), text);
}

TEST_F(CompressedInputTest, ReadsEmptyInput) {
  EXPECT_EQ(Unpacked(Write("a.csv", "")), "");
  EXPECT_EQ(Unpacked("-", Xz("")), "");
  EXPECT_EQ(Unpacked("-", Gzip("")), "");
}

TEST_F(CompressedInputTest, ReadsSeveralMembersAsOneText) {
  EXPECT_EQ(Unpacked("-", Xz("ab") + Xz("cd")), "abcd");
  EXPECT_EQ(Unpacked("-", Gzip("ab") + Gzip("") + Gzip("cd")), "abcd");
  EXPECT_EQ(Unpacked("-", Gzip("ab") + std::string(600, '\0')), "ab");
}

TEST_F(CompressedInputTest, ReportsDataThatEndsTooEarlyWhereverItEnds) {
  const std::string text = LongText();
  for (const std::string& packed : {Xz(text), Gzip(text)}) {
    for (const size_t size :
         {packed.size() - 1, packed.size() - 5, packed.size() / 2, size_t{65536}, size_t{131072}, size_t{20}}) {
      EXPECT_THROW(Unpacked("-", packed.substr(0, size)), platform::Error) << size;
    }
  }
}

TEST_F(CompressedInputTest, ReportsDamageAndNamesThatPromiseTooMuch) {
  std::string damaged = Gzip(LongText());
  damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 0x55);
  EXPECT_THROW(Unpacked("-", damaged), platform::Error);
  damaged = Xz(LongText());
  damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 0x55);
  EXPECT_THROW(Unpacked("-", damaged), platform::Error);
  EXPECT_THROW(Unpacked(Write("a.xz", "a,b\n")), platform::Error);
  EXPECT_THROW(Unpacked(Write("a.gz", "a,b\n")), platform::Error);
  EXPECT_THROW(Unpacked(Write("b.gz", "")), platform::Error);
  EXPECT_THROW(Unpacked("-", Gzip("a") + "garbage"), platform::Error);
}

TEST_F(CompressedInputTest, ReportsAFileThatIsNotThereAndAFolder) {
  EXPECT_THROW(Unpacked(PathOf("missing.csv")), platform::Error);
  EXPECT_THROW(Unpacked(PathOf(".")), platform::Error);
}

}  // namespace
}  // namespace stockbook::app
