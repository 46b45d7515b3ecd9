// SPDX-License-Identifier: MIT
#pragma once

#include "stockbook/base/api.h"
#include "stockbook/platform/grid_appearance.h"
#include "stockbook/platform/grid_busy.h"
#include "stockbook/platform/grid_outline.h"
#include "stockbook/platform/grid_table.h"
#include "stockbook/platform/grid_view.h"

namespace stockbook::platform {

// The grid control as the control's logic sees it, split by what a client wants of it. Rows and columns count from 0,
// fixed ones first; widths, heights in twips, colours 0x00BBGGRR. Arguments outside of the grid throw Error; readers of
// cells outside of it give the neutral value. The parts are virtual bases, so that they can be implemented separately.
class STOCKBOOK_API Grid : public virtual GridTable,
                           public virtual GridOutline,
                           public virtual GridView,
                           public virtual GridBusy,
                           public virtual GridAppearance {};

}  // namespace stockbook::platform
