// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include "sheet/input/events.h"

namespace stockbook::com {

// Converts the system's messages into the sheet's events.

// Of a key that goes down; the modifiers are those held now.
sheet::KeyEvent KeyEventOf(WPARAM virtual_key);
// Of a mouse message, whose words they are. `button` is the one pressed or released.
sheet::MouseEvent MouseEventOf(sheet::MouseButton button, WPARAM keys, LPARAM place);
// A move carries the button that is held.
sheet::MouseEvent MouseMoveOf(WPARAM keys, LPARAM place);

}  // namespace stockbook::com
