// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace stockbook::com {

// What a caller hands to IDispatch::Invoke.
struct LateCall {
  DISPID id;
  WORD flags;
  DISPPARAMS* arguments;
  VARIANT* result;
  EXCEPINFO* exception;
  UINT* wrong_argument;
};

// Whether arguments that should be there are missing: lists that are null although they are counted, more names than
// arguments, references to nowhere. Type information would follow them.
bool HaveHoles(const DISPPARAMS& arguments) noexcept;

// Calls the member of an interface by the type information that describes it, for scripts as well, which have fewer
// types: an array in a variable is one by reference; an object may be assigned without "Set", and null is no object;
// what has 32 bits without a sign is written and read as a signed number. E_INVALIDARG for arguments with holes.
HRESULT InvokeDescribed(ITypeInfo& described, void* target, const LateCall& call) noexcept;

}  // namespace stockbook::com
