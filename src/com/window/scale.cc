// SPDX-License-Identifier: MIT
#include "com/window/scale.h"

#include <algorithm>

namespace stockbook::com {
namespace {

constexpr double kDotsPerInch = 96.0;

using DpiOfWindow = UINT(WINAPI*)(HWND window);
using MetricForDpi = int(WINAPI*)(int index, UINT dots);

// Systems before the summer of 2016 do not have them.
template <typename Function>
Function FindInUser(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

// Of the monitor that the window is on, or 0 if the system does not tell.
UINT DotsOf(HWND window) {
  static const auto dpi_of_window = FindInUser<DpiOfWindow>("GetDpiForWindow");
  return dpi_of_window != nullptr && window != nullptr ? dpi_of_window(window) : 0;
}

}  // namespace

double ScaleOf(HWND window) {
  const UINT dots = DotsOf(window);
  if (dots > 0) return dots / kDotsPerInch;
  const HDC screen = GetDC(nullptr);
  const double scale = ScaleOf(screen);
  ReleaseDC(nullptr, screen);
  return scale;
}

int MetricOf(HWND window, int index) {
  static const auto metric_for_dpi = FindInUser<MetricForDpi>("GetSystemMetricsForDpi");
  const UINT dots = DotsOf(window);
  return metric_for_dpi != nullptr && dots > 0 ? metric_for_dpi(index, dots) : GetSystemMetrics(index);
}

double ScaleOf(HDC device) { return std::max(1, GetDeviceCaps(device, LOGPIXELSY)) / kDotsPerInch; }

}  // namespace stockbook::com
