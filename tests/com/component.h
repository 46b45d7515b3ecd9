// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

#include "com/automation/com_ptr.h"

namespace stockbook::testing {

// The path of the DLL as it was built, as Windows writes it.
std::wstring ComponentPath();

// The DLL in this process, loaded once and not unloaded before the process ends. Null if that fails, which is the
// failure of whoever asks.
HMODULE LoadedComponent();

// One of the DLL's four entrances; null for any other name.
FARPROC ComponentExport(const char* name);

// The class factory, got from the DLL without the registry.
com::ComPtr<IClassFactory> StockbookFactory();

// A new object as the interface asked for, or nothing.
template <typename Interface>
com::ComPtr<Interface> NewStockbook() {
  com::ComPtr<Interface> object;
  if (const com::ComPtr<IClassFactory> factory = StockbookFactory())
    factory->CreateInstance(nullptr, __uuidof(Interface), object.Put());
  return object;
}

// COM on this thread, as one that owns windows.
class Apartment {
 public:
  Apartment();
  ~Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

}  // namespace stockbook::testing
