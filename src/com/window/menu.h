// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include "stockbook/platform/menu.h"

namespace stockbook::com {

// Pop-up menus of the system at the mouse, or where a window says. PopUp waits for the choice in a message loop of the
// system's own; if its owner is destroyed meanwhile, nothing was chosen.
class WindowsMenu : public platform::Menu {
 public:
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;
  // The window that owns the following menus; without one a menu belongs to the active window.
  void SetOwner(std::function<HWND()> owner) { owner_ = std::move(owner); }
  // The position of the following menus, in screen coordinates.
  void SetPlace(std::function<POINT()> place) { place_ = std::move(place); }
  // Closes the menu that is open if it belongs to the window. Not every system does so for a window that ends, and
  // whoever opened the menu waits for it.
  static void EndOf(HWND owner);

 private:
  std::function<HWND()> owner_;
  std::function<POINT()> place_;
};

}  // namespace stockbook::com
