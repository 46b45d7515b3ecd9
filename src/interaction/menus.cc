// SPDX-License-Identifier: MIT
#include "interaction/menus.h"

#include <utility>

namespace stockbook::interaction {
namespace {

using platform::MenuItem;

constexpr int kFieldItems = 35;

MenuItem Item(std::string name, std::string caption, int index = 0) {
  MenuItem item;
  item.name = std::move(name);
  item.caption = std::move(caption);
  item.index = index;
  return item;
}

MenuItem Separator(std::string name) {
  MenuItem item = Item(std::move(name), "");
  item.separator = true;
  return item;
}

MenuItem Shown(MenuItem item, bool visible) {
  item.visible = visible;
  return item;
}

MenuItem Enabled(MenuItem item, Offer offer) {
  item.enabled = offer == Offer::kEnabled;
  return item;
}

MenuItem FieldChooser(const platform::GridTable& grid, const grid::HiddenKeys& hidden_keys) {
  MenuItem chooser = Item("mnuFields", "字段显示(&l)");
  int index = 0;
  for (int column = grid.FixedCols(); column < grid.Cols(); ++column) {
    const std::string key = grid.ColKey(column);
    if (hidden_keys.IsHiddenKey(key)) continue;
    MenuItem field = Item("mnuField", grid.Rows() > 0 ? grid.TextMatrix(0, column) : key, index++);
    field.tag = key;
    field.checkable = true;
    field.checked = !grid.ColHidden(column);
    chooser.items.push_back(std::move(field));
  }
  for (; index < kFieldItems; ++index) chooser.items.push_back(Shown(Item("mnuField", "", index), false));
  return chooser;
}

// Of a menu or of one that is const.
template <typename Menu>
Menu* Find(Menu& menu, std::string_view name, int index) {
  for (Menu& item : menu.items) {
    if (item.name == name && item.index == index) return &item;
    if (Menu* found = Find<Menu>(item, name, index)) return found;
  }
  return nullptr;
}

}  // namespace

platform::MenuItem FastMenu(RowKind kind, Offer bill) {
  const bool node = kind == RowKind::kNode;
  MenuItem menu = Item("mnuFastMenu", "Fastmenu");
  menu.items = {
      Shown(Item("mnuCollapse", "展开全部(&E)", 0), node),
      Shown(Item("mnuCollapse", "折叠全部(&L)", 1), node),
      Shown(Separator("mnuSpCollapse"), node),
      Shown(Enabled(Item("mnuBill", "查看单据(&B)"), bill), !node),
      Shown(Separator("mnuSpBill"), !node),
      Item("mnuCopy", "复制(&C)"),
      Separator("mnuSpFind"),
      Item("mnuFind", "查找(&F)"),
      Separator("mnuSpRefresh"),
      Item("mnuRefresh", "刷新"),
  };
  return menu;
}

platform::MenuItem HeaderMenu(const platform::GridTable& grid, const grid::HiddenKeys& hidden_keys, Offer hiding) {
  MenuItem menu = Item("mnuHeader", "HeaderMenu");
  menu.items = {
      Item("mnuFrozen", "冻结列(&Z)"), Enabled(Item("mnuHiddenCol", "隐藏列(&H)"), hiding),
      Separator("mnuSpDefault"),       Item("mnuDefault", "默认格式(&F)"),
      Separator("mnuSpField"),         FieldChooser(grid, hidden_keys),
  };
  return menu;
}

const platform::MenuItem* FindItem(const platform::MenuItem& menu, std::string_view name, int index) {
  return Find(menu, name, index);
}

platform::MenuItem* FindItem(platform::MenuItem& menu, std::string_view name, int index) {
  return Find(menu, name, index);
}

}  // namespace stockbook::interaction
