// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace stockbook::com {

// Device pixels per pixel of 1/96 inch: those of the monitor that the window is on, where the system tells monitors
// apart and the program has asked for it, otherwise those of the whole desktop.
double ScaleOf(HWND window);
double ScaleOf(HDC device);

}  // namespace stockbook::com
