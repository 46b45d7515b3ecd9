// SPDX-License-Identifier: MIT
#include "designer/stockbook_plugin.h"

namespace stockbook::designer {

QList<QDesignerCustomWidgetInterface*> StockbookPlugin::customWidgets() const { return {&journal_}; }

}  // namespace stockbook::designer
