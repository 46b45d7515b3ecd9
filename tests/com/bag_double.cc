// SPDX-License-Identifier: MIT
#include "com/bag_double.h"

#include "com/automation/text.h"

namespace stockbook::testing {

HRESULT BagDouble::QueryInterface(REFIID id, void** result) {
  const bool known = id == IID_IUnknown || id == IID_IPropertyBag;
  *result = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

bool BagDouble::Fails() { return fails_at >= 0 && asked.size() == static_cast<size_t>(fails_at) + 1; }

HRESULT BagDouble::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
  asked.push_back(com::FromWide(name));
  types.push_back(value->vt);
  if (Fails()) return failure;
  const auto found = values.find(asked.back());
  if (found == values.end()) return E_INVALIDARG;
  *value = com::Variant::CopyOf(found->second.get()).Detach();
  return S_OK;
}

HRESULT BagDouble::Write(LPCOLESTR name, VARIANT* value) {
  asked.push_back(com::FromWide(name));
  types.push_back(value->vt);
  if (Fails()) return failure;
  values[asked.back()] = com::Variant::CopyOf(*value);
  return S_OK;
}

}  // namespace stockbook::testing
