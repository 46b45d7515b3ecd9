// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <span>

#include "com/automation/com_ptr.h"
#include "com/grid/member_call.h"

namespace stockbook::com {

// An object whose members are called by name, from a table. It counts for itself: it may outlive the control, and then
// every call fails and says so.
ComPtr<IDispatch> NewLateObject(ControlLinkRef link, FrameName frame, std::span<const LateMember> members);

}  // namespace stockbook::com
