// SPDX-License-Identifier: MIT
// In the place of xlsx_writer.cc where there is no library for it.
#include "stockbook/export/xlsx_writer.h"
#include "stockbook/import/import_sentence.h"

namespace stockbook::app {

bool CanWriteXlsx() { return false; }

bool WriteXlsx(const sheet::GridSheet&, const XlsxOptions&, std::ostream&) {
  throw TableError(
      {"This build cannot write workbooks, as libxlsxwriter was missing; write csv, or build it anew with "
       "libxlsxwriter-dev installed.",
       "本程序编译时缺少 libxlsxwriter，不能写工作簿，请改用 CSV 格式。"});
}

}  // namespace stockbook::app
