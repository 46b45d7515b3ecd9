// SPDX-License-Identifier: MIT
#pragma once

#include "com/library/identifiers.h"

#include "com/automation/com_ptr.h"

namespace stockbook::com {

// What the type library inside the DLL says of an interface or a class; nothing where it cannot be read. The library is
// loaded at the first need and shared while anybody uses it.
ComPtr<ITypeInfo> DescriptionOf(REFGUID id);

}  // namespace stockbook::com
