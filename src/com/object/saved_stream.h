// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <objidl.h>

#include "com/automation/picture.h"
#include "com/object/memory_bag.h"

namespace stockbook::com {

// The control's own format in a stream: a mark and a version, the size and a check sum of what follows, then key, type
// and value of each property; a picture is what it writes of itself, or nothing. Both throw AutomationError; a stream
// that is not of this format, of a later version or damaged gives no bag at all.
MemoryBag ReadSaved(IStream& stream, PictureObjects& pictures);
void WriteSaved(const MemoryBag& bag, IStream& stream, PictureObjects& pictures);

}  // namespace stockbook::com
