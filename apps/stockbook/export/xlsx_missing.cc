// SPDX-License-Identifier: MIT
// In the place of xlsx_writer.cc where there is no library for it.
#include "platform/error.h"
#include "stockbook/export/xlsx_writer.h"

namespace stockbook::app {

bool CanWriteXlsx() { return false; }

bool WriteXlsx(const sheet::GridSheet&, const XlsxOptions&, std::ostream&) {
  throw platform::Error("export",
                        "This build cannot write workbooks, as libxlsxwriter was missing; write csv, or build it anew "
                        "with libxlsxwriter-dev installed.");
}

}  // namespace stockbook::app
