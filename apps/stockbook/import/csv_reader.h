// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stockbook/import/compressed_input.h"
#include "stockbook/import/table_reader.h"

namespace stockbook::app {

// Reads separated values record by record according to RFC 4180: quoted fields may contain separators, line breaks and
// doubled quotes; lines end with LF, CRLF or CR, the last one optionally; a byte-order mark at the start is skipped. A
// quote inside an unquoted field is text. A malformed record costs one line: reading continues at the line after the
// one where it began, whatever a quote that is never closed has run over. Memory: one record. Throws what its source
// throws, and platform::Error for UTF-16 text.
class CsvReader : public TableReader {
 public:
  static constexpr size_t kLongestRecord = size_t{1} << 20;

  // The source must outlive the reader.
  explicit CsvReader(ByteSource& source, char delimiter = ',');
  bool Next(CsvRecord& record) override;
  void GiveUpRecord() override;

 private:
  static constexpr int kEnd = -1;

  int Peek();
  void Skip() { ++at_; }
  void SkipByteOrderMark();
  void EndLine();
  void EndField() { ends_.push_back(text_.size()); }
  CsvFault ReadRecord();
  CsvFault ReadQuoted();
  CsvFault ReadPlain();
  bool AtFieldEnd(int next) const { return next == kEnd || next == '\n' || next == '\r' || next == delimiter_; }

  ByteSource& source_;
  int delimiter_;
  std::vector<char> buffer_;
  size_t at_ = 0;
  size_t end_ = 0;
  size_t record_at_ = 0;  // where the record begins in the buffer, which keeps it until the next one is read
  bool begun_ = false;
  int64_t line_ = 1;
  int64_t record_line_ = 1;
  int64_t last_line_ = 1;     // the last one that the record was read from
  std::string text_;          // the fields of the record, one after the other
  std::vector<size_t> ends_;  // where each field ends in it
};

}  // namespace stockbook::app
