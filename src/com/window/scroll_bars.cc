// SPDX-License-Identifier: MIT
#include "com/window/scroll_bars.h"

#include "com/window/scale.h"
#include "sheet/input/line_step.h"
#include "stockbook/base/scope_exit.h"

namespace stockbook::com {
namespace {

bool IsWanted(const sheet::View& view, platform::ScrollBarsSetting which) {
  return (static_cast<int>(view.sheet().ScrollBars()) & static_cast<int>(which)) != 0;
}

void ShowBar(HWND window, int bar, LONG_PTR style, bool shown) {
  if (((GetWindowLongPtrW(window, GWL_STYLE) & style) != 0) != shown) ShowScrollBar(window, bar, shown ? TRUE : FALSE);
}

}  // namespace

// Whether a bar is needed depends on the room that the other one takes, and not on the bars that there are.
void ScrollBars::ShowAsNeeded(HWND window, const sheet::View& view) {
  RECT whole{};
  GetWindowRect(window, &whole);
  const sheet::Geometry geometry = view.geometry();
  const int64_t width = whole.right - whole.left;
  const int64_t height = whole.bottom - whole.top;
  const int bar_width = MetricOf(window, SM_CXVSCROLL);
  const int bar_height = MetricOf(window, SM_CYHSCROLL);
  const bool x_wanted = IsWanted(view, platform::ScrollBarsSetting::kHorizontal);
  const bool y_wanted = IsWanted(view, platform::ScrollBarsSetting::kVertical);
  bool y_bar = y_wanted && geometry.ContentHeight() > height;
  const bool x_bar = x_wanted && geometry.ContentWidth() > width - (y_bar ? bar_width : 0);
  y_bar = y_wanted && geometry.ContentHeight() > height - (x_bar ? bar_height : 0);
  ShowBar(window, SB_VERT, WS_VSCROLL, y_bar);
  ShowBar(window, SB_HORZ, WS_HSCROLL, x_bar);
}

void ScrollBars::Update(HWND window, const sheet::View& view) {
  // A bar that comes or goes gives the view another size, which leads here again.
  if (updating_) return;
  updating_ = true;
  const base::ScopeExit done([this] { updating_ = false; });
  ShowAsNeeded(window, view);
  const sheet::Geometry geometry = view.geometry();
  const sheet::ScrollPosition most = geometry.max_scroll();
  const sheet::ScrollPosition at = geometry.scroll();
  x_scale_ = sheet::BarScale(most.x);
  y_scale_ = sheet::BarScale(most.y);
  const auto place = [&](int bar, LONG_PTR style, int64_t position, int page) {
    if ((GetWindowLongPtrW(window, GWL_STYLE) & style) == 0) return;
    const sheet::BarScale& scale = ScaleOfBar(bar);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nPage = static_cast<UINT>(scale.Length(page));
    info.nMax = scale.MostOnBar() + static_cast<int>(info.nPage) - 1;
    info.nPos = scale.ToBar(position);
    SetScrollInfo(window, bar, &info, TRUE);
  };
  place(SB_HORZ, WS_HSCROLL, at.x, geometry.BodyRect().width);
  place(SB_VERT, WS_VSCROLL, at.y, geometry.BodyRect().height);
}

std::optional<int64_t> ScrollBars::Wanted(HWND window, int bar, WPARAM message, const sheet::View& view) const {
  const sheet::Geometry geometry = view.geometry();
  const int64_t at = bar == SB_HORZ ? geometry.scroll().x : geometry.scroll().y;
  const int64_t most = bar == SB_HORZ ? geometry.max_scroll().x : geometry.max_scroll().y;
  const int page = bar == SB_HORZ ? geometry.BodyRect().width : geometry.BodyRect().height;
  switch (LOWORD(message)) {
    case SB_LINEUP:
      return at - sheet::LineStep(view);
    case SB_LINEDOWN:
      return at + sheet::LineStep(view);
    case SB_PAGEUP:
      return at - page;
    case SB_PAGEDOWN:
      return at + page;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return most;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
      // The message itself has only 16 bits of the place.
      SCROLLINFO info{};
      info.cbSize = sizeof info;
      info.fMask = SIF_TRACKPOS;
      GetScrollInfo(window, bar, &info);
      return ScaleOfBar(bar).FromBar(info.nTrackPos);
    }
    default:
      return std::nullopt;
  }
}

}  // namespace stockbook::com
