// SPDX-License-Identifier: MIT
#include "com/window/menu.h"

#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "com/automation/text.h"

namespace stockbook::com {
namespace {

constexpr UINT kFirstCommand = 1;

// The window that the open menu of this thread belongs to.
thread_local HWND open_menus_owner = nullptr;

// A menu and its submenus.
class PopUpMenu {
 public:
  PopUpMenu() : handle_(CreatePopupMenu()) {}
  ~PopUpMenu() { DestroyMenu(handle_); }
  PopUpMenu(const PopUpMenu&) = delete;
  PopUpMenu& operator=(const PopUpMenu&) = delete;

  HMENU handle() const { return handle_; }

 private:
  HMENU handle_;
};

// The text has one line: a column caption may have two, and a tab would begin a second column.
std::wstring MenuCaption(const platform::MenuItem& item) {
  return ToWide(base::ReplaceAll(base::OneLine(item.caption, " "), "\t", " "));
}

// The command of an item that can be chosen is its index in `choices`, from kFirstCommand on.
void FillMenu(HMENU menu, const std::vector<platform::MenuItem>& items, std::vector<platform::MenuChoice>& choices) {
  for (const platform::MenuItem& item : items) {
    if (!item.visible) continue;
    const UINT enabled = item.enabled ? MF_ENABLED : MF_GRAYED;
    if (item.separator) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else if (!item.items.empty()) {
      const HMENU submenu = CreatePopupMenu();
      FillMenu(submenu, item.items, choices);
      AppendMenuW(menu, MF_POPUP | MF_STRING | enabled, reinterpret_cast<UINT_PTR>(submenu), MenuCaption(item).c_str());
    } else {
      const UINT checked = item.checked ? MF_CHECKED : MF_UNCHECKED;
      AppendMenuW(menu, MF_STRING | enabled | checked, kFirstCommand + choices.size(), MenuCaption(item).c_str());
      choices.push_back({item.name, item.index});
    }
  }
}

POINT MousePlace() {
  POINT place{};
  GetCursorPos(&place);
  return place;
}

}  // namespace

platform::MenuChoice WindowsMenu::PopUp(const platform::MenuItem& menu) {
  const PopUpMenu popup;
  std::vector<platform::MenuChoice> choices;
  FillMenu(popup.handle(), menu.items, choices);
  HWND owner = owner_ ? owner_() : nullptr;
  if (owner == nullptr) owner = GetActiveWindow();
  const POINT place = place_ ? place_() : MousePlace();
  const UINT side = GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0 ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
  // Whatever this object belongs to may be gone when the menu closes: only locals from here on.
  HWND outer = std::exchange(open_menus_owner, owner);
  const auto chosen =
      static_cast<UINT>(TrackPopupMenuEx(popup.handle(), side | TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                         static_cast<int>(place.x), static_cast<int>(place.y), owner, nullptr));
  open_menus_owner = outer;
  if (chosen < kFirstCommand || chosen - kFirstCommand >= choices.size()) return {};
  return choices[chosen - kFirstCommand];
}

void WindowsMenu::EndOf(HWND owner) {
  if (owner != nullptr && open_menus_owner == owner) EndMenu();
}

}  // namespace stockbook::com
