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
    return sheet.empty() ? !known.cells.empty() : known.name == sheet;
  });
  if (found == workbook_.sheets.end()) {
    if (sheet.empty())
      throw TableError(
          {"The workbook is empty: it needs a sheet with a header line.", "工作簿是空的，应有带标题行的工作表。"});
    throw TableError({"The workbook has no sheet '" + sheet + "'; it has " + ListedNames(names_, ", ") + ".",
                      "工作簿中没有工作表“" + sheet + "”，只有" + ListedNames(names_, "、") + "。"});
  }
  sheet_ = static_cast<size_t>(found - workbook_.sheets.begin());
}

bool WorkbookReader::Next(CsvRecord& record) {
  record.fields.clear();
  record.fault = CsvFault::None;
  record.line_count = 1;
  const std::vector<WorkbookCell>& cells = workbook_.sheets[sheet_].cells;
  if (at_ == cells.size()) return false;
  const bool is_first = at_ == 0;
  const int row = cells[at_].row;
  record.line = row + 1;
  for (; at_ < cells.size() && cells[at_].row == row; ++at_) {
    record.fields.resize(static_cast<size_t>(cells[at_].column) + 1);
    record.fields.back() = workbook_.texts.At(cells[at_].text);
  }
  if (is_first) width_ = record.fields.size();
  record.fields.resize(std::max(width_, record.fields.size()));
  return true;
}

}  // namespace stockbook::app
