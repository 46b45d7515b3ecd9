// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clipboard.h"
#include "platform/grid.h"

namespace stockbook::interaction {

// Puts the selected range on the clipboard as text (see GridView::SelectionText), under the pointer of a program that
// is at work. The clipboard is cleared first: should the text not come about, it stays empty. Raises nothing.
void CopySelection(platform::Grid& grid, platform::Clipboard& clipboard);

}  // namespace stockbook::interaction
