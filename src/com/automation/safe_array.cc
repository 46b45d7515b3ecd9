// SPDX-License-Identifier: MIT
#include "com/automation/safe_array.h"

#include "com/automation/automation_error.h"

namespace stockbook::com {
namespace {

base::Value ValueOrNothing(const VARIANT& element) {
  try {
    return ToValue(element);
  } catch (const AutomationError&) {
    return {};
  }
}

}  // namespace

std::vector<base::Value> ValuesFromZero(SAFEARRAY* array) {
  if (array == nullptr || SafeArrayGetDim(array) == 0) return {};
  VARTYPE type = VT_EMPTY;
  LONG first = 0;
  LONG last = -1;
  if (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetVartype(array, &type)) || type != VT_VARIANT ||
      FAILED(SafeArrayGetLBound(array, 1, &first)) || FAILED(SafeArrayGetUBound(array, 1, &last)))
    throw AutomationError(MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 13), "类型不匹配：须为一维的变体数组。");
  std::vector<base::Value> values;
  if (first > 0) return values;
  for (LONG index = 0; index <= last; ++index) {
    Variant element;
    Expect(SafeArrayGetElement(array, &index, &element.get()));
    values.push_back(index == 0 ? ToValue(element.get()) : ValueOrNothing(element.get()));
  }
  return values;
}

}  // namespace stockbook::com
