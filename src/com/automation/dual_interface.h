// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/automation/com_ptr.h"
#include "com/automation/delegating.h"
#include "com/automation/late_call.h"

namespace stockbook::com {

// What IDispatch asks of a dual interface, answered by its type information.
HRESULT TypeInfoOf(ITypeInfo* described, UINT index, ITypeInfo** result) noexcept;
HRESULT IdsOfNames(ITypeInfo* described, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

// The dispatch half of a dual interface: late-bound calls go by the type library to the functions that early-bound ones
// call directly. The object outlives it.
template <typename Interface>
class DualInterface : public Delegating<Interface> {
 public:
  DualInterface(IUnknown& object, ComPtr<ITypeInfo> described)
      : Delegating<Interface>(object), described_(std::move(described)) {}

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) final {
    return TypeInfoOf(described_.get(), index, result);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) final {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return IdsOfNames(described_.get(), names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                   EXCEPINFO* exception, UINT* wrong_argument) final {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (arguments == nullptr) return E_POINTER;
    if (!described_) return TYPE_E_LIBNOTREGISTERED;
    // What an earlier call of this thread left behind is not the description of this one's failure.
    SetErrorInfo(0, nullptr);
    // The call may drop the last reference but this one.
    const ComPtr<IUnknown> pin(&this->object());
    return InvokeDescribed(*described_, static_cast<Interface*>(this),
                           {id, flags, arguments, result, exception, wrong_argument});
  }

 protected:
  ITypeInfo* described() const { return described_.get(); }

 private:
  ComPtr<ITypeInfo> described_;
};

}  // namespace stockbook::com
