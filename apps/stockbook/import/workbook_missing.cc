// SPDX-License-Identifier: MIT
// In the place of workbook_file.cc where there is no library for it.
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/workbook_file.h"

namespace stockbook::app {

bool CanReadWorkbooks() { return false; }

Workbook ReadWorkbookFile(std::string_view, const std::string& name) {
  throw TableError(
      {"Cannot read '" + name +
           "': this build reads no workbooks, as libzip or Expat was missing; save "
           "the sheet as .csv and import that.",
       "无法读取“" + name + "”：本程序编译时缺少 libzip 或 Expat，不能读取工作簿，请把工作表另存为 .csv 再导入。"});
}

}  // namespace stockbook::app
