// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"

namespace stockbook::sheet {

class View;

// What a line of a wheel or a click on a scroll bar's arrow scrolls by, in device pixels: an ordinary row. Nodes among
// the first rows may be higher. At least 1.
STOCKBOOK_API int LineStep(const View& view);

}  // namespace stockbook::sheet
