// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/import/import_number.h"
#include "stockbook/import/table_reader.h"
#include "stockbook/import/text_encoding.h"

namespace stockbook::app {

// How to read a table. What is not given is found out.
struct TableOptions {
  TextEncoding encoding = TextEncoding::kDetected;
  std::optional<char> delimiter;
  std::string sheet;  // of a workbook; "" for the first one that is not empty
  std::optional<DecimalMark> decimal;
};

// A table and what it turned out to be.
class OpenedTable : public TableReader {
 public:
  // "GBK", known once the table has been read; "" for a workbook.
  virtual std::string_view EncodingName() const = 0;
  // 0 for a workbook.
  virtual char delimiter() const = 0;
  // The names of a workbook's sheets, and of the one that is read.
  virtual const std::vector<std::string>& sheets() const = 0;
  virtual std::string sheet() const = 0;
  // As given, or else: a point in a workbook and where commas separate fields, either one otherwise.
  virtual DecimalMark decimal() const = 0;
};

// Opens separated values or an .xlsx workbook, told apart by their first bytes and not by their names; .xz and .gz are
// unpacked; "-" is `in`, which must outlive the table. Throws TableError for files of other kinds, and platform::Error
// for what cannot be read.
std::unique_ptr<OpenedTable> OpenTable(const std::string& path, std::istream& in, const TableOptions& options);

}  // namespace stockbook::app
