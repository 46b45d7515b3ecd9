// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/import/compressed_input.h"

namespace stockbook::app {

enum class CsvFault {
  None,
  TextAfterQuote,  // something other than a separator after a closing quote
  UnclosedQuote,   // the input ends within a quoted field
  TooLong,         // a record of more than kLongestRecord bytes, mostly a quote that is never closed
};

// One record. The fields are views into the reader and live until the next record is read.
struct CsvRecord {
  int64_t line = 0;        // where it begins, counted from 1; a quoted line break counts
  int64_t line_count = 1;  // how many lines it spans, as far as it was read
  CsvFault fault = CsvFault::None;
  std::vector<std::string_view> fields;

  // An empty line reads as one empty field.
  bool IsBlank() const { return fault == CsvFault::None && fields.size() == 1 && fields.front().empty(); }
};

// Reads separated values record by record according to RFC 4180: quoted fields may contain separators, line breaks and
// doubled quotes; lines end with LF, CRLF or CR, the last one optionally; a byte-order mark at the start is skipped. A
// quote inside an unquoted field is text. A malformed record costs one line: reading continues at the line after the
// one where it began, whatever a quote that is never closed has run over. Memory: one record. Throws what its source
// throws, and platform::Error for UTF-16 text.
class CsvReader {
 public:
  static constexpr size_t kLongestRecord = size_t{1} << 20;

  // The source must outlive the reader.
  explicit CsvReader(ByteSource& source, char delimiter = ',');
  // False at the end of the input.
  bool Next(CsvRecord& record);
  // Gives up the record that Next read last: the next one begins at the line after the one where it began.
  void GiveUpRecord();

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
