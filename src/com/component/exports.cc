// SPDX-License-Identifier: MIT
// The four entrances of the DLL.
#include <windows.h>

#include <objbase.h>
#include <olectl.h>

#include <new>

#include "com/library/class_factory.h"
#include "com/library/identifiers.h"
#include "com/library/module.h"
#include "com/library/registration.h"
#include "com/object/stockbook_object.h"

namespace {

// The one C++ exception that registration may end with.
template <typename Body>
HRESULT WithinMemory(Body body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (class_id != CLSID_Stockbook) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new (std::nothrow) stockbook::com::ClassFactory(&stockbook::com::CreateStockbookObject);
  if (factory == nullptr) return E_OUTOFMEMORY;
  const HRESULT answer = factory->QueryInterface(id, result);
  factory->Release();
  return answer;
}

STDAPI DllCanUnloadNow() { return stockbook::com::ModuleIsInUse() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return WithinMemory(stockbook::com::RegisterComponent); }

STDAPI DllUnregisterServer() { return WithinMemory(stockbook::com::UnregisterComponent); }
