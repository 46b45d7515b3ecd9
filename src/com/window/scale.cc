// SPDX-License-Identifier: MIT
#include "com/window/scale.h"

#include <algorithm>

namespace stockbook::com {
namespace {

constexpr double kDotsPerInch = 96.0;

using DpiOfWindow = UINT(WINAPI*)(HWND window);

// Systems before the summer of 2016 do not have it.
DpiOfWindow FindDpiOfWindow() {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
  return reinterpret_cast<DpiOfWindow>(reinterpret_cast<void*>(found));
}

}  // namespace

double ScaleOf(HWND window) {
  static const DpiOfWindow dpi_of_window = FindDpiOfWindow();
  const UINT dots = dpi_of_window != nullptr && window != nullptr ? dpi_of_window(window) : 0;
  if (dots > 0) return dots / kDotsPerInch;
  const HDC screen = GetDC(nullptr);
  const double scale = ScaleOf(screen);
  ReleaseDC(nullptr, screen);
  return scale;
}

double ScaleOf(HDC device) { return std::max(1, GetDeviceCaps(device, LOGPIXELSY)) / kDotsPerInch; }

}  // namespace stockbook::com
