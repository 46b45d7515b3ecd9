// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "stockbook/window/main_window.h"

namespace stockbook::app {

// Opens in a window that remembers the file that was opened last, in this run or an earlier one. Where there was none
// yet it opens the file that `sample` names, and also where the last one has gone or cannot be opened; then a notice
// names that one, and offers to try again, and the next start tries it first. Throws platform::Error if the sample
// cannot be opened, either.
void OpenLastInventory(MainWindow& window, const std::function<std::string()>& sample);

}  // namespace stockbook::app
