// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace stockbook::com {

// Writes for all users of the machine what programs find the control by: its names, its class with the path of this
// DLL, and its type library. What cannot be written is an error, and then nothing is left. Throws std::bad_alloc alone.
HRESULT RegisterComponent();

// Takes all of that out again, and leaves what belongs to a component of the other width, or to another class of the
// same name. To take out what is not there is no error.
HRESULT UnregisterComponent();

}  // namespace stockbook::com
