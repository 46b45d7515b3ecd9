// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/automation/com_ptr.h"
#include "com/grid/control_link.h"

namespace stockbook::com {

// The grid as an object for the host, late-bound.
ComPtr<IDispatch> NewGridObject(ControlLinkRef link);

}  // namespace stockbook::com
