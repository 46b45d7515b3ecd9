// SPDX-License-Identifier: MIT
#include "com/automation/dual_interface.h"

#include <algorithm>

namespace stockbook::com {

HRESULT TypeInfoOf(ITypeInfo* described, UINT index, ITypeInfo** result) noexcept {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  if (described == nullptr) return TYPE_E_LIBNOTREGISTERED;
  described->AddRef();
  *result = described;
  return S_OK;
}

HRESULT IdsOfNames(ITypeInfo* described, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  if (std::find(names, names + count, nullptr) != names + count) return E_POINTER;
  if (described == nullptr) return TYPE_E_LIBNOTREGISTERED;
  return DispGetIDsOfNames(described, names, count, ids);
}

}  // namespace stockbook::com
