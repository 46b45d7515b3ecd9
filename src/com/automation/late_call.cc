// SPDX-License-Identifier: MIT
#include "com/automation/late_call.h"

#include <oleauto.h>

#include <optional>
#include <vector>

namespace stockbook::com {
namespace {

VARIANT& HeldIn(VARIANT& given) {
  const bool is_variable = given.vt == (VT_BYREF | VT_VARIANT) && given.pvarVal != nullptr;
  return is_variable ? *given.pvarVal : given;
}

// Arrays are the one thing that members take by reference. Everything else is left to type information, which copies
// what is in a variable: the script may change it meanwhile.
VARIANT AsTypeInformationHasIt(VARIANT& given) {
  VARIANT& held = HeldIn(given);
  if ((held.vt & VT_ARRAY) == 0) return given;
  VARIANT array{};
  array.vt = static_cast<VARTYPE>(held.vt | VT_BYREF);
  array.pparray = (held.vt & VT_BYREF) != 0 ? held.pparray : &held.parray;
  return array;
}

std::optional<VARIANT> AsObject(VARIANT& given) {
  VARIANT object = HeldIn(given);
  switch (object.vt) {
    case VT_DISPATCH:
    case VT_UNKNOWN:
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN:
      return object;
    case VT_NULL:
      object.vt = VT_DISPATCH;
      object.pdispVal = nullptr;
      return object;
    default:
      return std::nullopt;
  }
}

std::optional<VARIANT> AsUnsigned(VARIANT& given) {
  const VARIANT& held = HeldIn(given);
  VARIANT number{};
  number.vt = VT_I4;
  if (held.vt == VT_I4) number.lVal = held.lVal;
  if (held.vt == (VT_BYREF | VT_I4)) number.lVal = *held.plVal;
  if (number.lVal >= 0) return std::nullopt;
  number.vt = VT_UI4;
  return number;
}

HRESULT InvokeOnce(ITypeInfo& described, void* target, const LateCall& call, WORD flags) {
  return described.Invoke(target, call.id, flags, call.arguments, call.result, call.exception, call.wrong_argument);
}

// The call failed before it reached the member, if it failed for one of these two reasons.
HRESULT InvokeForScripts(ITypeInfo& described, void* target, const LateCall& call) {
  const HRESULT result = InvokeOnce(described, target, call, call.flags);
  const bool writes = (call.flags & DISPATCH_PROPERTYPUT) != 0 && call.arguments->cArgs == 1;
  if (!writes || (result != DISP_E_MEMBERNOTFOUND && result != DISP_E_OVERFLOW)) return result;
  VARIANT& value = call.arguments->rgvarg[0];
  const auto other = result == DISP_E_OVERFLOW ? AsUnsigned(value) : AsObject(value);
  if (!other) return result;
  value = *other;
  return InvokeOnce(described, target, call, result == DISP_E_OVERFLOW ? call.flags : DISPATCH_PROPERTYPUTREF);
}

}  // namespace

HRESULT InvokeDescribed(ITypeInfo& described, void* target, const LateCall& call) noexcept {
  const UINT count = call.arguments->cArgs;
  if (count > 0 && call.arguments->rgvarg == nullptr) return E_INVALIDARG;
  std::vector<VARIANT> values;
  try {
    values.reserve(count);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  for (UINT at = 0; at < count; ++at) values.push_back(AsTypeInformationHasIt(call.arguments->rgvarg[at]));
  DISPPARAMS arguments = *call.arguments;
  arguments.rgvarg = values.data();
  LateCall own = call;
  own.arguments = &arguments;
  const HRESULT result = InvokeForScripts(described, target, own);
  if (SUCCEEDED(result) && call.result != nullptr && call.result->vt == VT_UI4) call.result->vt = VT_I4;
  return result;
}

}  // namespace stockbook::com
