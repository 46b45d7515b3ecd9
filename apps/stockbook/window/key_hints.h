// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::app {

// The control's own menus show the keys that the menu bar has for what they offer.
void HintAtKeys(qt::StockbookWidget& stockbook);

}  // namespace stockbook::app
