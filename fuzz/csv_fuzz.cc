// SPDX-License-Identifier: MIT
// Tables of any bytes give the same records whole and in pieces, and every line is in one of them.
#include <vector>

#include "fuzzed_bytes.h"
#include "stockbook/import/csv_reader.h"
#include "stockbook/platform/error.h"

namespace stockbook::fuzz {
namespace {

// Delivers a text in pieces of the given sizes, in turn.
class Pieces : public app::ByteSource {
 public:
  Pieces(std::string_view text, std::vector<size_t> sizes) : text_(text), sizes_(std::move(sizes)) {}
  size_t Read(char* buffer, size_t size) override {
    const size_t count = std::min({sizes_[turn_++ % sizes_.size()], size, text_.size() - at_});
    text_.copy(buffer, count, at_);
    at_ += count;
    return count;
  }

 private:
  std::string_view text_;
  std::vector<size_t> sizes_;
  size_t turn_ = 0;
  size_t at_ = 0;
};

std::string Records(std::string_view text, std::vector<size_t> sizes, char delimiter) {
  Pieces source(text, std::move(sizes));
  app::CsvReader reader(source, delimiter);
  app::CsvRecord record;
  std::string records;
  int64_t line = 0;
  try {
    while (reader.Next(record)) {
      Require(record.line > line, "records come line after line", records);
      line = record.line;
      records += std::to_string(record.line) + (record.fault == app::CsvFault::None ? " " : " ! ");
      for (const std::string_view field : record.fields) records.append("[").append(field).append("]");
      records += "\n";
    }
  } catch (const platform::Error& error) {
    records += error.what();
  }
  return records;
}

}  // namespace
}  // namespace stockbook::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  stockbook::fuzz::FuzzedBytes bytes(data, size);
  const char delimiter = ",;\t|"[bytes.Below(4)];
  std::vector<size_t> sizes;
  for (int count = 0; count < 4; ++count) sizes.push_back(1 + bytes.Below(17));
  const std::string_view text = bytes.TakeAll();
  const std::string whole = stockbook::fuzz::Records(text, {text.size() + 1}, delimiter);
  const std::string pieces = stockbook::fuzz::Records(text, sizes, delimiter);
  stockbook::fuzz::Require(whole == pieces, "a table in pieces is the same table", whole + "\nin pieces\n" + pieces);
  return 0;
}
