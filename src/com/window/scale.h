// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace stockbook::com {

// Device pixels per pixel of 1/96 inch: those of the monitor that the window is on, where the system tells monitors
// apart and the program has asked for it, otherwise those of the whole desktop.
double ScaleOf(HWND window);
double ScaleOf(HDC device);
// One of the system's measures, as the window has it.
int MetricOf(HWND window, int index);

}  // namespace stockbook::com
