// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <map>
#include <string>
#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/variant.h"

namespace stockbook::testing {

// A form's property bag that keeps what it is given and tells what it was asked for. It lives where it is made: nobody
// may keep it.
class BagDouble final : public IPropertyBag {
 public:
  virtual ~BagDouble() = default;

  std::map<std::string, com::Variant> values;
  std::vector<std::string> asked;  // keys, in order
  std::vector<VARTYPE> types;      // that the reader wanted
  int fails_at = -1;               // the call that fails
  HRESULT failure = static_cast<HRESULT>(0x8004ABCD);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }
  HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* log) override;
  HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;
  ULONG references() const { return references_; }

 private:
  bool Fails();

  ULONG references_ = 1;
};

}  // namespace stockbook::testing
