// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "stockbook/base/api.h"

namespace stockbook::platform {

// One item of a pop-up menu. Captions mark the access key by '&'; a separator has no caption.
struct MenuItem {
  std::string name;  // the control's own name for it, "mnuCopy"
  int index = 0;     // within items of the same name
  std::string caption;
  std::string tag;
  bool separator = false;
  bool visible = true;
  bool enabled = true;
  bool checkable = false;  // may keep the menu open, see Menu::PopUpToTick
  bool checked = false;
  std::vector<MenuItem> items;  // of a submenu
};

// What the user chose; an empty name means nothing.
struct MenuChoice {
  std::string name;
  int index = 0;
};

// Takes a checkable item that was ticked while its menu stays open, and tells whether its check mark is set now.
using MenuTick = std::function<bool(const MenuChoice& item)>;

// Shows a pop-up menu at the mouse and waits for the choice.
class STOCKBOOK_API Menu {
 public:
  virtual ~Menu() = default;
  // Returns when the menu is closed; a name that is empty where nothing was chosen.
  virtual MenuChoice PopUp(const MenuItem& menu) = 0;
  // For a menu in which several items may be ticked one after the other: it stays open for them, and what `tick` took
  // is no choice. Where menus close with every choice, as they do by default, a ticked item is the choice.
  virtual MenuChoice PopUpToTick(const MenuItem& menu, const MenuTick& /*tick*/) { return PopUp(menu); }
};

}  // namespace stockbook::platform
