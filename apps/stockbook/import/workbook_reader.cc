// SPDX-License-Identifier: MIT
#include "stockbook/import/workbook_reader.h"

#include <algorithm>
#include <utility>

#include "stockbook/import/import_sentence.h"

namespace stockbook::app {
namespace {

std::string ListedNames(const std::vector<std::string>& names, std::string_view separator) {
  std::string list;
  for (const std::string& name : names) list.append(list.empty() ? "" : separator).append(name);
  return list;
}

}  // namespace

WorkbookReader::WorkbookReader(Workbook workbook, const std::string& sheet) : workbook_(std::move(workbook)) {
  for (const WorkbookSheet& known : workbook_.sheets) names_.push_back(known.name);
  const auto found = std::find_if(workbook_.sheets.begin(), workbook_.sheets.end(), [&](const WorkbookSheet& known) {
    return sheet.empty() ? !known.rows.empty() : known.name == sheet;
  });
  if (found == workbook_.sheets.end()) {
    if (sheet.empty())
      throw TableError(
          {"The workbook is empty: it needs a sheet with a header line.", "工作簿是空的，应有带标题行的工作表。"});
    throw TableError({"The workbook has no sheet '" + sheet + "'; it has " + ListedNames(names_, ", ") + ".",
                      "工作簿中没有工作表“" + sheet + "”，只有" + ListedNames(names_, "、") + "。"});
  }
  sheet_ = static_cast<size_t>(found - workbook_.sheets.begin());
  row_ = found->rows.begin();
}

bool WorkbookReader::Next(CsvRecord& record) {
  record.fields.clear();
  record.fault = CsvFault::None;
  record.line_count = 1;
  const auto& rows = workbook_.sheets[sheet_].rows;
  if (row_ == rows.end()) return false;
  record.line = row_->first + 1;
  const auto last = static_cast<size_t>(row_->second.rbegin()->first) + 1;
  if (row_ == rows.begin()) width_ = last;
  record.fields.resize(std::max(width_, last));
  for (const auto& cell : row_->second)
    record.fields[static_cast<size_t>(cell.first)] = workbook_.texts.At(cell.second);
  ++row_;
  return true;
}

}  // namespace stockbook::app
