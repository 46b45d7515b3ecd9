// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace stockbook::qt {

// What to give a tooltip so that it shows the text as it is, whatever marks stand in it. Its own line breaks are kept;
// lines are broken only where they are wider than one reads in a tooltip.
QString PlainToolTip(const QString& text);

}  // namespace stockbook::qt
