// SPDX-License-Identifier: MIT
// Defines the identifiers that the generated header declares, which every other source leaves at declaring.
// clang-format off
#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <olectl.h>

#include <initguid.h>
// clang-format on
#include "tq_stockbook.h"
