// SPDX-License-Identifier: MIT
#pragma once

#include <unknwn.h>

#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/picture.h"
#include "com/grid/control_link.h"
#include "com/window/clipboard.h"
#include "com/window/images.h"
#include "com/window/menu.h"
#include "com/window/text_metrics.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/menu.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::com {

// Everything that the object composes, in order of dependency: the toolkit-free control with its grids and what it
// needs of Windows. The object owns it; the classes that make up the object's interfaces borrow it.
class ObjectParts : private platform::ControlSite, private platform::Menu {
 public:
  explicit ObjectParts(IUnknown& object);
  ~ObjectParts() override;
  ObjectParts(const ObjectParts&) = delete;
  ObjectParts& operator=(const ObjectParts&) = delete;

  // Keeps the object alive while code runs that may let everybody else drop it: every function that a window or a host
  // calls holds one until it has returned.
  ComPtr<IUnknown> Pin() { return ComPtr<IUnknown>(&object_); }

  sheet::GridSheet& fg() { return fg_; }
  control::Stockbook& control() { return control_; }
  // They are told of the window when there is one.
  WindowsMenu& menu() { return menu_; }
  WindowsClipboard& clipboard() { return clipboard_; }
  PictureObjects& pictures() { return pictures_; }
  const ControlLinkRef& link() const { return link_; }

  // They hear of every saved property that changes, by its key, and of frames to be redrawn. They outlive the parts or
  // leave before; a site must not add or remove sites while it hears.
  void AddSite(platform::ControlSite& site) { sites_.push_back(&site); }
  void RemoveSite(platform::ControlSite& site) { std::erase(sites_, &site); }
  // The grid follows a font of the form's, or of the system's, until somebody sets another one.
  void FollowFont(const platform::Font& font);

 private:
  // platform::ControlSite
  void PropertyChanged(std::string_view key) override;
  void FrameChanged() override;
  // platform::Menu
  platform::MenuChoice PopUp(const platform::MenuItem& menu) override;

  // The control lays out at once, which measures the grid's font.
  control::Surroundings Surroundings();

  IUnknown& object_;
  std::vector<platform::ControlSite*> sites_;
  GdiTextMetrics text_metrics_;
  WindowImages images_;
  WindowsMenu menu_;
  WindowsClipboard clipboard_;
  PictureObjects pictures_;
  sheet::GridSheet fg_;
  sheet::GridSheet fg1_;
  platform::Font followed_font_;
  control::Stockbook control_;
  ControlLinkRef link_;
};

}  // namespace stockbook::com
