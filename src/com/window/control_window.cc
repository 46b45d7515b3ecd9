// SPDX-License-Identifier: MIT
#include "com/window/control_window.h"

#include <windowsx.h>

#include <utility>

#include "com/automation/text.h"
#include "com/window/rectangle.h"
#include "com/window/scale.h"
#include "stockbook/base/scope_exit.h"

namespace stockbook::com {
namespace {

constexpr UINT kParentChangedDpi = 0x02E3;  // WM_DPICHANGED_AFTERPARENT

}  // namespace

ControlWindow::ControlWindow(WindowHost& host, control::Stockbook& control, sheet::GridSheet& sheet)
    : Window(host),
      control_(control),
      looks_(DefaultFrameLooks()),
      sheet_window_(std::make_shared<SheetWindow>(host, sheet.view())) {}

WindowStyle ControlWindow::Style() const {
  // A form that is a dialog looks for the keyboard's next stop in it, and finds the sheet.
  return {L"tqStockbookControl", CS_DBLCLKS, WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT};
}

void ControlWindow::Open(HWND parent, const RECT& place) {
  Create(parent, place);
  sheet_window_->Create(handle(), ToRECT(layout_.sheet));
  UpdateFrames();
}

void ControlWindow::SetLooks(FrameLooks looks) {
  looks_ = std::move(looks);
  UpdateFrames();
}

void ControlWindow::UpdateFrames() {
  sheet_window_->SetName(control_.Caption());
  if (handle() == nullptr) return;
  Arrange();
  const std::wstring caption = ToWide(control_.Caption());
  SetWindowTextW(handle(), caption.c_str());
  InvalidateRect(handle(), nullptr, FALSE);
}

void ControlWindow::Arrange() {
  RECT client{};
  GetClientRect(handle(), &client);
  layout_ = Frames(control_, looks_)
                .LayOut({static_cast<int>(client.right), static_cast<int>(client.bottom)}, ScaleOf(handle()), fonts_);
  const sheet::Rect& cells = layout_.sheet;
  if (sheet_window_->handle() != nullptr)
    SetWindowPos(sheet_window_->handle(), nullptr, cells.x, cells.y, cells.width, cells.height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

std::optional<LRESULT> ControlWindow::Handle(UINT message, WPARAM wide, LPARAM data) {
  switch (message) {
    case WM_CREATE:
      Arrange();
      return 0;
    case WM_SIZE:
      UpdateFrames();
      return 0;
    case kParentChangedDpi:
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      fonts_.Clear();
      if (message != kParentChangedDpi) host().SystemChanged();
      UpdateFrames();
      if (message != kParentChangedDpi) sheet_window_->SystemChanged();
      return 0;
    case WM_PAINT:
      PaintWindow();
      return 0;
    case WM_PRINTCLIENT: {
      GdiCanvas canvas(reinterpret_cast<HDC>(wide), fonts_, layout_.scale);
      Frames(control_, looks_).PaintAround(canvas, layout_);
      Frames(control_, looks_).PaintHeader(canvas, layout_);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
      SetFocus(sheet_window_->handle());
      return 0;
    case WM_ENABLE:
      EnableWindow(sheet_window_->handle(), wide != FALSE ? TRUE : FALSE);
      InvalidateRect(handle(), nullptr, FALSE);
      return 0;
    default:
      return HandleMouse(message, data);
  }
}

std::optional<LRESULT> ControlWindow::HandleMouse(UINT message, LPARAM data) {
  switch (message) {
    case WM_MOUSEMOVE: {
      tip_.MouseAt({GET_X_LPARAM(data), GET_Y_LPARAM(data)});
      TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_HOVER, handle(), HOVER_DEFAULT};
      TrackMouseEvent(&track);
      return 0;
    }
    case WM_MOUSEHOVER:
      ShowTip(data);
      return 0;
    case WM_LBUTTONDOWN:
      SetFocus(sheet_window_->handle());
      return 0;
    case WM_MOUSELEAVE:
    case WM_DESTROY:
      tip_.Hide();
      return 0;
    default:
      return std::nullopt;
  }
}

void ControlWindow::ShowTip(LPARAM place) {
  if (!layout_.header.Contains(sheet::Point{GET_X_LPARAM(place), GET_Y_LPARAM(place)})) return;
  tip_.Show(handle(), Frames(control_, looks_).CutCaption(layout_, fonts_), layout_.header, layout_.scale);
}

// The band at once, so that its text does not flicker; around it are plain colours.
void ControlWindow::PaintWindow() {
  PAINTSTRUCT paint{};
  const HDC dc = BeginPaint(handle(), &paint);
  const base::ScopeExit done([&paint, window = handle()] { EndPaint(window, &paint); });
  const Frames frames(control_, looks_);
  GdiCanvas canvas(dc, fonts_, layout_.scale);
  frames.PaintAround(canvas, layout_);
  const sheet::Rect& band = layout_.header;
  band_.Resize({band.right(), band.bottom()});
  GdiCanvas on_band(band_.dc(), fonts_, layout_.scale);
  on_band.SetPixels(band_.pixels());
  if (IsWindowEnabled(handle()) == 0) on_band.DimToward(frames.BandColour());
  frames.PaintHeader(on_band, layout_);
  band_.Show(dc, band, {band.x, band.y});
}

}  // namespace stockbook::com
