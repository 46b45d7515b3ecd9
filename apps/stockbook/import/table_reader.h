// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace stockbook::app {

enum class CsvFault {
  None,
  TextAfterQuote,  // something other than a separator after a closing quote
  UnclosedQuote,   // the input ends within a quoted field
  TooLong,         // a record of more than CsvReader::kLongestRecord bytes, mostly a quote that is never closed
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

// A table that is read once from its first record to its last one, whatever it is stored as.
class TableReader {
 public:
  virtual ~TableReader() = default;
  // False at the end of the table.
  virtual bool Next(CsvRecord& record) = 0;
  // Gives up the record that Next read last: the next one begins at the line after the one where it began.
  virtual void GiveUpRecord() = 0;
};

}  // namespace stockbook::app
