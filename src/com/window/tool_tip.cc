// SPDX-License-Identifier: MIT
#include "com/window/tool_tip.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>

#include "com/automation/text.h"

namespace stockbook::com {
namespace {

constexpr double kWidestLine = 560;
constexpr int kBelowMouse = 20;

// What every version of the control understands.
TTTOOLINFOW ToolOf(HWND owner) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = owner;
  return tool;
}

HWND NewTip(HWND owner) {
  const INITCOMMONCONTROLSEX wanted{sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES};
  InitCommonControlsEx(&wanted);
  const HWND tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                                   0, 0, 0, owner, nullptr, nullptr, nullptr);
  TTTOOLINFOW tool = ToolOf(owner);
  SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  return tip;
}

// The place for a window of the size, on the monitor that the mouse is on and not under the mouse.
POINT PlaceFor(SIZE size, int below) {
  POINT mouse{};
  GetCursorPos(&mouse);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromPoint(mouse, MONITOR_DEFAULTTONEAREST), &monitor);
  POINT place{std::max(monitor.rcWork.left, std::min(mouse.x, monitor.rcWork.right - size.cx)), mouse.y + below};
  if (place.y + size.cy > monitor.rcWork.bottom) place.y = mouse.y - size.cy - below / 4;
  return place;
}

}  // namespace

ToolTip::~ToolTip() {
  if (tip_ != nullptr && IsWindow(tip_) != 0) DestroyWindow(tip_);
}

void ToolTip::Show(HWND owner, const std::string& text, const sheet::Rect& area, double scale) {
  if (text.empty()) {
    Hide();
    return;
  }
  // The system destroys it with its owner.
  if (tip_ == nullptr || IsWindow(tip_) == 0) tip_ = NewTip(owner);
  owner_ = owner;
  area_ = area;
  Place(text, scale);
  shown_ = true;
}

void ToolTip::Place(const std::string& text, double scale) {
  std::wstring wide = ToWide(text);
  TTTOOLINFOW tool = ToolOf(owner_);
  tool.lpszText = wide.data();
  // Without a width a tip has one line.
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, std::lround(kWidestLine * scale));
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  const LRESULT size = SendMessageW(tip_, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool));
  const POINT place = PlaceFor({LOWORD(size), HIWORD(size)}, static_cast<int>(kBelowMouse * scale));
  SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(place.x, place.y));
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTip::Hide() {
  if (!shown_) return;
  shown_ = false;
  TTTOOLINFOW tool = ToolOf(owner_);
  SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

void ToolTip::MouseAt(sheet::Point at) {
  if (!area_.Contains(at)) Hide();
}

}  // namespace stockbook::com
