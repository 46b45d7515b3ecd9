// SPDX-License-Identifier: MIT
#include "com/component.h"

#include <objbase.h>

#include "com/automation/text.h"
#include "com/library/identifiers.h"

namespace stockbook::testing {

std::wstring ComponentPath() {
  // The build names it as its own system does; both slashes lead there.
  std::wstring path(MAX_PATH * 4, L'\0');
  path.resize(GetFullPathNameW(com::ToWide(STOCKBOOK_COMPONENT).c_str(), static_cast<DWORD>(path.size()), path.data(),
                               nullptr));
  return path;
}

HMODULE LoadedComponent() {
  static const HMODULE component = LoadLibraryW(ComponentPath().c_str());
  return component;
}

FARPROC ComponentExport(const char* name) {
  const HMODULE component = LoadedComponent();
  return component == nullptr ? nullptr : GetProcAddress(component, name);
}

com::ComPtr<IClassFactory> StockbookFactory() {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  com::ComPtr<IClassFactory> factory;
  const auto get = reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(ComponentExport("DllGetClassObject")));
  if (get != nullptr) get(CLSID_Stockbook, __uuidof(IClassFactory), factory.Put());
  return factory;
}

Apartment::Apartment() { OleInitialize(nullptr); }

Apartment::~Apartment() { OleUninitialize(); }

}  // namespace stockbook::testing
