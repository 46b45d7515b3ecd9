// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace stockbook::qt {

// The rich text that makes a tooltip show the text literally, whatever markup it contains. Line breaks are kept; only
// lines too wide for a tooltip are wrapped.
QString PlainToolTip(const QString& text);

}  // namespace stockbook::qt
