// SPDX-License-Identifier: MIT
#include "com/automation/late_call.h"

#include <oleauto.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "com/automation/com_ptr.h"

namespace stockbook::com {
namespace {

VARIANT& HeldIn(VARIANT& given) {
  const bool is_variable = given.vt == (VT_BYREF | VT_VARIANT) && given.pvarVal != nullptr;
  return is_variable ? *given.pvarVal : given;
}

bool LeadsNowhere(const VARIANT& given) { return (given.vt & VT_BYREF) != 0 && given.byref == nullptr; }

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

// The functions of a dual interface as its table has them. Its other half counts inherited ones, or does not.
ComPtr<ITypeInfo2> TableOf(ITypeInfo& described) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> table;
  if (SUCCEEDED(described.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
    described.GetRefTypeInfo(reference, table.PutTyped());
  return (table ? table : ComPtr<ITypeInfo>(&described)).As<ITypeInfo2>();
}

// How many arguments a reader or method takes, as far as it is known.
std::optional<UINT> MostArguments(ITypeInfo& described, DISPID id) {
  const auto table = TableOf(described);
  UINT index = 0;
  FUNCDESC* function = nullptr;
  if (!table || (FAILED(table->GetFuncIndexOfMemId(id, INVOKE_PROPERTYGET, &index)) &&
                 FAILED(table->GetFuncIndexOfMemId(id, INVOKE_FUNC, &index))))
    return std::nullopt;
  if (FAILED(table->GetFuncDesc(index, &function))) return std::nullopt;
  UINT most = 0;
  for (SHORT at = 0; at < function->cParams; ++at)
    most += (function->lprgelemdescParam[at].paramdesc.wParamFlags & PARAMFLAG_FRETVAL) == 0 ? 1 : 0;
  const bool is_it = function->memid == id;
  table->ReleaseFuncDesc(function);
  return is_it ? std::optional<UINT>(most) : std::nullopt;
}

// Type information hands arguments that are too many for a reader on to the object that was read, and does not look
// whether there is one.
bool AreTooMany(ITypeInfo& described, const LateCall& call) {
  constexpr WORD kWrites = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  if (call.arguments->cArgs == 0 || (call.flags & kWrites) != 0) return false;
  const std::optional<UINT> most = MostArguments(described, call.id);
  return most && call.arguments->cArgs > *most;
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

bool HaveHoles(const DISPPARAMS& arguments) noexcept {
  if (arguments.cArgs > 0 && arguments.rgvarg == nullptr) return true;
  if (arguments.cNamedArgs > arguments.cArgs || (arguments.cNamedArgs > 0 && arguments.rgdispidNamedArgs == nullptr))
    return true;
  return std::any_of(arguments.rgvarg, arguments.rgvarg + arguments.cArgs,
                     [](VARIANT& given) { return LeadsNowhere(given) || LeadsNowhere(HeldIn(given)); });
}

HRESULT InvokeDescribed(ITypeInfo& described, void* target, const LateCall& call) noexcept {
  if (HaveHoles(*call.arguments)) return E_INVALIDARG;
  if (AreTooMany(described, call)) return DISP_E_BADPARAMCOUNT;
  const UINT count = call.arguments->cArgs;
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
