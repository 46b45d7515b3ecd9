// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "stockbook/import/table_reader.h"
#include "stockbook/import/workbook_cells.h"

namespace stockbook::app {

// Reads a sheet of a workbook row by row. Rows without any text are left out; every row has as many fields as the
// first one, or more if there are texts beyond them.
class WorkbookReader : public TableReader {
 public:
  // The sheet of the name, or the first one that is not empty for "". Throws TableError if there is none.
  WorkbookReader(Workbook workbook, const std::string& sheet);

  bool Next(CsvRecord& record) override;
  // Nothing of a sheet is ever torn.
  void GiveUpRecord() override {}

  const std::vector<std::string>& sheets() const { return names_; }
  std::string sheet() const { return workbook_.sheets[sheet_].name; }

 private:
  Workbook workbook_;
  std::vector<std::string> names_;
  size_t sheet_ = 0;
  size_t at_ = 0;  // the first cell that has not been read
  size_t width_ = 0;
};

}  // namespace stockbook::app
