// SPDX-License-Identifier: MIT
#include "com/grid/grid_object.h"

#include "com/grid/grid_members.h"
#include "com/grid/late_object.h"

namespace stockbook::com {

ComPtr<IDispatch> NewGridObject(ControlLinkRef link) {
  return NewLateObject(std::move(link), FrameName::kDesk, GridMembers());
}

}  // namespace stockbook::com
