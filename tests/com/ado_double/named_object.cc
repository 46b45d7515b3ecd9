// SPDX-License-Identifier: MIT
#include "com/ado_double/named_object.h"

#include <oleauto.h>

#include "com/ado_double/bare_type.h"
#include "com/automation/text.h"

namespace stockbook::testing {
namespace {

HRESULT Report(const AdoFailure& failure, EXCEPINFO* exception) {
  if (exception == nullptr) return DISP_E_EXCEPTION;
  *exception = EXCEPINFO{};
  if (failure.code >= 0 && failure.code < 0x10000) {
    exception->wCode = static_cast<WORD>(failure.code);
  } else {
    exception->scode = failure.code;
  }
  exception->bstrDescription = com::Bstr(failure.description).Detach();
  exception->bstrSource = com::Bstr("ADODB.Connection").Detach();
  return DISP_E_EXCEPTION;
}

}  // namespace

NamedObject::NamedObject(AdoLog& log, std::optional<GUID> type, DISPID first_id)
    : log_(log), type_(type), first_id_(first_id) {
  ++log_.objects;
}

HRESULT NamedObject::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
  *result = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG NamedObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT NamedObject::GetTypeInfoCount(UINT* count) {
  *count = type_ ? 1 : 0;
  return S_OK;
}

HRESULT NamedObject::GetTypeInfo(UINT, LCID, ITypeInfo** result) {
  *result = nullptr;
  if (!type_) return E_NOTIMPL;
  *result = new BareType(*type_);
  return S_OK;
}

HRESULT NamedObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  ++log_.name_lookups;
  if (count != 1) return DISP_E_UNKNOWNNAME;
  for (size_t at = 0; at < members_.size(); ++at) {
    if (CompareStringOrdinal(names[0], -1, members_[at].name.c_str(), -1, TRUE) != CSTR_EQUAL) continue;
    ids[0] = first_id_ + static_cast<DISPID>(at);
    return S_OK;
  }
  ids[0] = DISPID_UNKNOWN;
  return DISP_E_UNKNOWNNAME;
}

HRESULT NamedObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT*) {
  const auto at = static_cast<size_t>(id - first_id_);
  if (at >= members_.size()) return DISP_E_MEMBERNOTFOUND;
  std::vector<const VARIANT*> arguments;
  for (UINT index = parameters->cArgs; index > 0; --index) arguments.push_back(&parameters->rgvarg[index - 1]);
  try {
    com::Variant answer = members_[at].call(arguments);
    if (result != nullptr) *result = answer.Detach();
    return S_OK;
  } catch (const AdoFailure& failure) {
    return Report(failure, exception);
  }
}

}  // namespace stockbook::testing
