// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/automation/com_ptr.h"
#include "com/grid/member_call.h"

namespace stockbook::com {

// One of the frames as an object for the host, late-bound. What the control decides by itself can only be read.
ComPtr<IDispatch> NewFrameObject(ControlLinkRef link, FrameName frame);

}  // namespace stockbook::com
