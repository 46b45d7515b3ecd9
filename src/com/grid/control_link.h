// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <memory>

#include "com/automation/picture.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::com {

// What the objects that a control hands out know of it. They share it; the control empties it when it ends, so that an
// object which outlives the control can say so.
struct ControlLink {
  IUnknown* object = nullptr;  // to be held during every call that may run code of the host
  control::Stockbook* control = nullptr;
  sheet::GridSheet* grid = nullptr;
  PictureObjects* pictures = nullptr;
};

using ControlLinkRef = std::shared_ptr<ControlLink>;

}  // namespace stockbook::com
