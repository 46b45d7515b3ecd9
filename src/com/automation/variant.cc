// SPDX-License-Identifier: MIT
#include "com/automation/variant.h"

#include <windows.h>

#include <olectl.h>

#include <cmath>
#include <limits>
#include <utility>

#include "com/automation/automation_error.h"
#include "com/automation/text.h"

namespace stockbook::com {
namespace {

constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 13));

[[noreturn]] void FailToConvert(HRESULT result) {
  switch (result) {
    case DISP_E_OVERFLOW:
      throw AutomationError(CTL_E_OVERFLOW, "溢出：数值超出了这个类型的范围。");
    case E_OUTOFMEMORY:
      throw std::bad_alloc();
    default:
      throw AutomationError(kTypeMismatch, "类型不匹配：这个值不能转换为所需的类型。");
  }
}

// The system's functions read these and do not say so.
VARIANT* Unconst(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

Variant Converted(const VARIANT& value, VARTYPE type) {
  Variant converted;
  const HRESULT result =
      VariantChangeTypeEx(&converted.get(), Unconst(value), LOCALE_USER_DEFAULT, VARIANT_ALPHABOOL, type);
  if (FAILED(result)) FailToConvert(result);
  return converted;
}

// Dates before the zero date have their time of day counted forward from a day that is negative.
double LinearDays(DATE date) {
  if (date >= 0) return date;
  const double day = std::trunc(date);
  return day + (day - date);
}

}  // namespace

base::Date DateOfAutomation(DATE date) {
  constexpr double kMostDays = 4e6;  // beyond the year 9999
  if (!(std::abs(date) < kMostDays)) FailToConvert(DISP_E_OVERFLOW);
  return base::Date::FromSeconds(std::llround(LinearDays(date) * static_cast<double>(base::Date::kSecondsPerDay)));
}

DATE ToAutomationDate(const base::Date& date) {
  const int64_t days = date.days();
  const int64_t seconds = date.seconds() - days * base::Date::kSecondsPerDay;
  const double fraction = static_cast<double>(seconds) / static_cast<double>(base::Date::kSecondsPerDay);
  return days < 0 ? static_cast<double>(days) - fraction : static_cast<double>(days) + fraction;
}

Variant::Variant(std::string_view text) : Variant() {
  variant_.bstrVal = Bstr(text).Detach();
  variant_.vt = VT_BSTR;
}

Variant::Variant(int16_t number) : Variant() {
  variant_.vt = VT_I2;
  variant_.iVal = number;
}

Variant::Variant(int32_t number) : Variant() {
  variant_.vt = VT_I4;
  variant_.lVal = number;
}

Variant::Variant(float number) : Variant() {
  variant_.vt = VT_R4;
  variant_.fltVal = number;
}

Variant::Variant(double number) : Variant() {
  variant_.vt = VT_R8;
  variant_.dblVal = number;
}

Variant::Variant(bool truth) : Variant() {
  variant_.vt = VT_BOOL;
  variant_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(IDispatch* object) : Variant() {
  if (object != nullptr) object->AddRef();
  variant_.vt = VT_DISPATCH;
  variant_.pdispVal = object;
}

Variant::Variant(const base::Value& value) : Variant() {
  if (const auto* text = value.As<std::string>()) {
    *this = Variant(std::string_view(*text));
  } else if (const auto* number = value.As<double>()) {
    *this = Variant(*number);
  } else if (const auto* money = value.As<base::Money>()) {
    variant_.vt = VT_CY;
    variant_.cyVal.int64 = money->units();
  } else if (const auto* date = value.As<base::Date>()) {
    variant_.vt = VT_DATE;
    variant_.date = ToAutomationDate(*date);
  } else if (const auto* whole = value.As<int64_t>()) {
    // Scripts know no whole numbers of 64 bits.
    const bool is_long = *whole >= std::numeric_limits<int32_t>::min() && *whole <= std::numeric_limits<int32_t>::max();
    *this = is_long ? Variant(static_cast<int32_t>(*whole)) : Variant(static_cast<double>(*whole));
  }
}

Variant Variant::CopyOf(const VARIANT& other) {
  Variant copy;
  const HRESULT result = VariantCopyInd(&copy.variant_, Unconst(other));
  if (FAILED(result)) FailToConvert(result);
  return copy;
}

VARIANT Variant::Detach() { return std::exchange(variant_, VARIANT{}); }

int16_t ToShort(const VARIANT& value) { return Converted(value, VT_I2).get().iVal; }

int32_t ToLong(const VARIANT& value) { return Converted(value, VT_I4).get().lVal; }

float ToSingle(const VARIANT& value) { return Converted(value, VT_R4).get().fltVal; }

double ToDouble(const VARIANT& value) { return Converted(value, VT_R8).get().dblVal; }

bool ToBoolean(const VARIANT& value) { return Converted(value, VT_BOOL).get().boolVal != VARIANT_FALSE; }

std::string ToText(const VARIANT& value) { return FromBstr(Converted(value, VT_BSTR).get().bstrVal); }

uint32_t ToBits(const VARIANT& value) {
  const int64_t number = Converted(value, VT_I8).get().llVal;
  if (number < std::numeric_limits<int32_t>::min() || number > std::numeric_limits<uint32_t>::max())
    FailToConvert(DISP_E_OVERFLOW);
  return static_cast<uint32_t>(number);
}

ComPtr<IDispatch> ToDispatch(const VARIANT& value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return {};
  return ComPtr<IDispatch>(Converted(value, VT_DISPATCH).get().pdispVal);
}

base::Value ToValue(const VARIANT& value) {
  const Variant plain = Variant::CopyOf(value);
  const VARIANT& held = plain.get();
  switch (held.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BSTR:
      return base::Value(FromBstr(held.bstrVal));
    case VT_CY:
      return base::Value(base::Money::FromUnits(held.cyVal.int64));
    case VT_DATE:
      return base::Value(DateOfAutomation(held.date));
    case VT_R4:
    case VT_R8:
    case VT_DECIMAL:
      return base::Value(ToDouble(held));
    default:
      if (IsMissing(held)) return {};
      return base::Value(Converted(held, VT_I8).get().llVal);
  }
}

bool IsMissing(const VARIANT& value) {
  if (value.vt == (VT_BYREF | VT_VARIANT)) return IsMissing(*value.pvarVal);
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace stockbook::com
