// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "stockbook/base/api.h"

namespace stockbook::qt {

// The rich text that makes a tooltip show the text literally, whatever markup it contains. Line breaks are kept; only
// lines too wide for a tooltip are wrapped.
STOCKBOOK_API QString PlainToolTip(const QString& text);

}  // namespace stockbook::qt
