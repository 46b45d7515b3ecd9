// SPDX-License-Identifier: MIT
#include "com/window/sheet_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "com/window/menu.h"
#include "com/window/rectangle.h"
#include "com/window/scale.h"
#include "stockbook/base/scope_exit.h"

namespace stockbook::com {
namespace {

constexpr UINT kDpiChangedAfterParent = 0x02E3;  // WM_DPICHANGED_AFTERPARENT

const wchar_t* NameOf(sheet::Cursor cursor) {
  switch (cursor) {
    case sheet::Cursor::kColumnResize:
      return MAKEINTRESOURCEW(32644);  // to the west and the east
    case sheet::Cursor::kRowResize:
      return MAKEINTRESOURCEW(32645);  // to the north and the south
    case sheet::Cursor::kBusy:
      return MAKEINTRESOURCEW(32650);  // an arrow with an hourglass
    case sheet::Cursor::kDefault:
      break;
  }
  return MAKEINTRESOURCEW(32512);  // an arrow
}

void ShowCursorNow(sheet::Cursor cursor) { SetCursor(LoadCursorW(nullptr, NameOf(cursor))); }

POINT MouseOnScreen() {
  POINT place{};
  GetCursorPos(&place);
  return place;
}

}  // namespace

SheetWindow::SheetWindow(WindowHost& host, sheet::View& view) : Window(host), input_(*this, *this), news_(*this) {
  ShowView(view);
}

SheetWindow::~SheetWindow() { Leave(); }

WindowStyle SheetWindow::Style() const {
  return {L"tqStockbookSheet", CS_DBLCLKS, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS};
}

void SheetWindow::ShowView(sheet::View& view) {
  view_ = &view;
  input_.ShowView(view);
  view.SetViewer(this);
  shows_ = true;
  if (handle() != nullptr) FitView();
}

void SheetWindow::Leave() {
  // The view may be gone when a window that has ended is destroyed, which nobody tells it then.
  if (std::exchange(shows_, false) && view_->viewer() == this) view_->SetViewer(nullptr);
  if (accessible_) accessible_->Detach();
  accessible_.Reset();
}

void SheetWindow::ViewGone() {
  input_.LetGo();
  nothing_ = std::make_unique<sheet::GridSheet>();
  nothing_->SetRows(0);
  nothing_->SetCols(0);
  ShowView(nothing_->view());
  input_.HideTip();
}

void SheetWindow::Damaged(const sheet::Rect& area) {
  surface_.AddDamage(area);
  if (handle() == nullptr) return;
  const RECT rect = ToRECT(area);
  InvalidateRect(handle(), &rect, FALSE);
  news_.Tell();
}

RECT SheetWindow::ToScreen(const sheet::Rect& rect) const {
  RECT area = ToRECT(rect);
  MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

std::optional<sheet::Point> SheetWindow::FromScreen(POINT point) const {
  RECT client{};
  if (handle() == nullptr || ScreenToClient(handle(), &point) == 0) return std::nullopt;
  GetClientRect(handle(), &client);
  if (PtInRect(&client, point) == 0) return std::nullopt;
  return sheet::Point{static_cast<int>(point.x), static_cast<int>(point.y)};
}

void SheetWindow::FitView() {
  RECT client{};
  GetClientRect(handle(), &client);
  const sheet::Size size{std::max(1, static_cast<int>(client.right)), std::max(1, static_cast<int>(client.bottom))};
  const double scale = ScaleOf(handle());
  if (size != view_->size() || scale != view_->scale()) view_->SetSize(size, scale);
}

void SheetWindow::SystemChanged() {
  surface_.fonts().Clear();
  if (handle() == nullptr) return;
  FitView();
  DamageAll();
}

int SheetWindow::TextWidth(const platform::Font& font, std::string_view line) {
  return surface_.fonts().Find(font, view_->scale()).Width(line);
}

int SheetWindow::LineHeight(const platform::Font& font) {
  return surface_.fonts().Find(font, view_->scale()).line_height();
}

std::optional<LRESULT> SheetWindow::Handle(UINT message, WPARAM wide, LPARAM data) {
  if (const std::optional<LRESULT> result = input_.Handle(message, wide, data)) return result;
  if (const std::optional<LRESULT> result = HandleChange(message, wide, data)) return result;
  return HandleWindow(message, wide, data);
}

std::optional<LRESULT> SheetWindow::HandleWindow(UINT message, WPARAM wide, LPARAM data) {
  switch (message) {
    case WM_CREATE:
      view_->SetFocused(false);
      FitView();
      bars_.Update(handle(), *view_);
      return 0;
    case WM_PAINT:
      PaintWindow();
      return 0;
    case WM_PRINTCLIENT:
      PaintDamage();
      surface_.Show(reinterpret_cast<HDC>(wide), {0, 0, view_->size().width, view_->size().height});
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_HSCROLL:
    case WM_VSCROLL:
      Scroll(message == WM_HSCROLL ? SB_HORZ : SB_VERT, wide);
      return 0;
    case WM_SETCURSOR:
      if (LOWORD(data) != HTCLIENT) return std::nullopt;
      ShowCursorNow(cursor_);
      return TRUE;
    case WM_GETOBJECT:
      if (static_cast<LONG>(data) == static_cast<LONG>(OBJID_CLIENT)) return AnswerReader(wide);
      return std::nullopt;
    case WM_DESTROY:
      input_.LetGo();
      input_.HideTip();
      WindowsMenu::EndOf(handle());
      Leave();
      return 0;
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> SheetWindow::HandleChange(UINT message, WPARAM wide, LPARAM /*data*/) {
  switch (message) {
    case WM_SETFOCUS:
      view_->SetFocused(true);
      news_.TellFocus();
      host().FocusChanged(Focus::kGained);
      return 0;
    case WM_KILLFOCUS:
      input_.HideTip();  // the mouse does not leave when another program is chosen by a key
      view_->SetFocused(false);
      host().FocusChanged(Focus::kLost);
      return 0;
    case WM_SIZE:
    case kDpiChangedAfterParent:
      FitView();
      return 0;
    case WM_ENABLE:
      input_.LetGo();
      DamageAll();
      return 0;
    case WM_SHOWWINDOW:
      if (wide == FALSE) {
        input_.LetGo();
        input_.HideTip();
      }
      return std::nullopt;
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      SystemChanged();
      return 0;
    default:
      return std::nullopt;
  }
}

LRESULT SheetWindow::AnswerReader(WPARAM wide) {
  if (!accessible_) accessible_ = ComPtr<AccessibleSheet>::Adopt(new AccessibleSheet(*this));
  return LresultFromObject(IID_IAccessible, wide, accessible_.get());
}

void SheetWindow::PaintWindow() {
  PAINTSTRUCT paint{};
  const HDC dc = BeginPaint(handle(), &paint);
  const base::ScopeExit done([&paint, window = handle()] { EndPaint(window, &paint); });
  PaintDamage();
  surface_.Show(dc, FromRECT(paint.rcPaint));
}

// While redraw is off, the last frame stays; where the window has grown meanwhile, it is blank.
void SheetWindow::PaintDamage() {
  if (!sheet().Redraw()) {
    surface_.Fit(*view_);
    return;
  }
  std::optional<platform::Colour> dimmed;
  if (IsWindowEnabled(handle()) == 0) dimmed = sheet().ColourOf(platform::GridColour::kBackColor);
  surface_.Paint(*view_, dimmed);
}

void SheetWindow::ScrollChanged() {
  input_.HideTip();  // its cell is no longer under the mouse
  if (sheet().Redraw()) MovePixels();
  if (handle() != nullptr) bars_.Update(handle(), *view_);
}

// Moves the pixels that remain visible and damages what comes into view.
void SheetWindow::MovePixels() {
  for (const sheet::PixelMove& move : pixel_moves_.Follow(*view_)) {
    if (move.IsDamage()) {
      Damaged(move.area);
    } else {
      MovePart(move.area, move.dx, move.dy);
    }
  }
}

void SheetWindow::MovePart(const sheet::Rect& part, int64_t dx, int64_t dy) {
  constexpr int64_t kFar = 1 << 20;  // larger than any window
  surface_.Move(part, static_cast<int>(std::clamp(dx, -kFar, kFar)), static_cast<int>(std::clamp(dy, -kFar, kFar)));
  const RECT rect = ToRECT(part);
  if (handle() != nullptr) InvalidateRect(handle(), &rect, FALSE);
}

void SheetWindow::CursorChanged(sheet::Cursor cursor) {
  cursor_ = cursor;
  // The system asks only when the mouse moves, which it may not do for a while.
  if (handle() != nullptr && WindowFromPoint(MouseOnScreen()) == handle()) ShowCursorNow(cursor);
}

void SheetWindow::Scroll(int bar, WPARAM message) {
  const std::optional<int64_t> wanted = bars_.Wanted(handle(), bar, message, *view_);
  if (!wanted) return;
  const sheet::ScrollPosition at = view_->geometry().scroll();
  view_->ScrollTo(bar == SB_HORZ ? sheet::ScrollPosition{*wanted, at.y} : sheet::ScrollPosition{at.x, *wanted});
}

POINT SheetWindow::MenuPlace() const {
  const auto [row, column] = view_->mouse_cell();
  if (!input_.IsMenuByKey() || row < 0 || column < 0) return MouseOnScreen();
  const sheet::Geometry geometry = view_->geometry();
  const RECT cell = ToScreen(geometry.CellRect(row, column).Intersected(geometry.PaneOf(row, column)));
  return {cell.left, cell.bottom};
}

}  // namespace stockbook::com
