// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "stockbook/import/workbook_cells.h"

namespace stockbook::app {

// Whether this build has the libraries that read workbooks.
bool CanReadWorkbooks();

// What ReadWorkbook does with an archive that has been looked at. Throws TableError.
Workbook ReadWorkbookFile(std::string_view bytes, const std::string& name);

}  // namespace stockbook::app
