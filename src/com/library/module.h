// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

namespace stockbook::com {

// The DLL, or the program that this code is linked into.
HINSTANCE ModuleInstance();
// Its full path; throws std::bad_alloc alone. "" where Windows does not tell it.
std::wstring ModulePath();

// Whatever a host can hold keeps one of these: the DLL is unloaded only when there is none, and no lock of a class
// factory's. Any thread may make and end one.
class ModuleUse {
 public:
  ModuleUse();
  ModuleUse(const ModuleUse&);
  ModuleUse& operator=(const ModuleUse&) = default;
  ~ModuleUse();
};

// For IClassFactory::LockServer. False for a lock that is not there: it takes no use away.
void LockModule();
bool UnlockModule();
bool ModuleIsInUse();

}  // namespace stockbook::com
