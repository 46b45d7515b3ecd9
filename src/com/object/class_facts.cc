// SPDX-License-Identifier: MIT
#include "com/object/class_facts.h"

#include "com/automation/guarded.h"
#include "com/object/type_descriptions.h"

namespace stockbook::com {

HRESULT ClassInfo::GetClassInfo(ITypeInfo** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return Guarded(IID_IProvideClassInfo, [&] {
    *result = DescriptionOf(CLSID_Stockbook).Detach();
    if (*result == nullptr) throw AutomationError(TYPE_E_CANTLOADLIBRARY, "类型库无法读取：请重新安装本控件。");
  });
}

HRESULT ClassInfo::GetGUID(DWORD kind, GUID* result) {
  if (result == nullptr) return E_POINTER;
  *result = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *result = DIID___Stockbook;
  return S_OK;
}

HRESULT ErrorSupport::InterfaceSupportsErrorInfo(REFIID id) {
  const bool described = id == IID__Stockbook || id == IID_IPersistPropertyBag || id == IID_IPersistStreamInit ||
                         id == IID_IPersistStorage;
  return described ? S_OK : S_FALSE;
}

}  // namespace stockbook::com
