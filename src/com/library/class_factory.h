// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>

#include "com/library/module.h"

namespace stockbook::com {

// Makes objects of one class, without a licence. It is a counted object of its own that starts with one reference; any
// thread may hold it, the objects belong to the apartment that asks for them.
class ClassFactory final : public IClassFactory {
 public:
  // Makes an object, alone or as part of another one, and gives out its interface; on failure it gives out nothing.
  using Create = HRESULT (*)(IUnknown* outer, REFIID id, void** result);

  explicit ClassFactory(Create create) : create_(create) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  // An outer object may ask for nothing but IUnknown: otherwise CLASS_E_NOAGGREGATION.
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** result) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  ~ClassFactory() = default;

  ModuleUse use_;
  Create create_;
  std::atomic<ULONG> references_{1};
};

}  // namespace stockbook::com
