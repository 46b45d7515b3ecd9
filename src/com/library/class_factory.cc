// SPDX-License-Identifier: MIT
#include "com/library/class_factory.h"

namespace stockbook::com {

HRESULT STDMETHODCALLTYPE ClassFactory::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (id != __uuidof(IUnknown) && id != __uuidof(IClassFactory)) return E_NOINTERFACE;
  *result = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG STDMETHODCALLTYPE ClassFactory::AddRef() { return ++references_; }

ULONG STDMETHODCALLTYPE ClassFactory::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT STDMETHODCALLTYPE ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (outer != nullptr && id != __uuidof(IUnknown)) return CLASS_E_NOAGGREGATION;
  return create_(outer, id, result);
}

HRESULT STDMETHODCALLTYPE ClassFactory::LockServer(BOOL lock) {
  if (lock == FALSE) return UnlockModule() ? S_OK : E_UNEXPECTED;
  LockModule();
  return S_OK;
}

}  // namespace stockbook::com
