// SPDX-License-Identifier: MIT
#include "com/ado/ado_column.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "base/number.h"
#include "base/text.h"
#include "com/ado/decimal_digits.h"
#include "com/ado/utf8_text.h"
#include "com/automation/variant.h"
#include "stockbook/base/date.h"

namespace stockbook::com {
namespace {

// A single-precision number is the decimal that it is shown as, not that decimal's nearest neighbour in binary.
double WidenedSingle(float number) {
  if (!std::isfinite(number)) return static_cast<double>(number);
  char digits[32];
  const auto written = std::to_chars(digits, digits + sizeof digits, number);
  double widened = static_cast<double>(number);
  std::from_chars(digits, written.ptr, widened);
  return widened;
}

}  // namespace

void AdoColumn::Append(const VARIANT& value) {
  switch (value.vt) {
    case VT_BSTR:
      return AppendWide({value.bstrVal, SysStringLen(value.bstrVal)});
    case VT_R8:
      return builder_.AppendDouble(value.dblVal);
    case VT_CY:
      return builder_.AppendMoney(base::Money::FromUnits(value.cyVal.int64));
    case VT_DATE:
      return AppendDate(value.date);
    case VT_NULL:
    case VT_EMPTY:
      return builder_.AppendNull();
    case VT_I4:
    case VT_INT:
      return builder_.AppendInteger(value.lVal);
    case VT_I2:
      return builder_.AppendInteger(value.iVal);
    case VT_BOOL:
      return builder_.AppendInteger(value.boolVal == VARIANT_FALSE ? 0 : -1);
    case VT_DECIMAL:
      return AppendDecimal(value.decVal);
    default:
      return AppendRare(value);
  }
}

void AdoColumn::AppendRare(const VARIANT& value) {
  switch (value.vt) {
    case VT_I1:
      return builder_.AppendInteger(static_cast<signed char>(value.cVal));
    case VT_UI1:
      return builder_.AppendInteger(value.bVal);
    case VT_UI2:
      return builder_.AppendInteger(value.uiVal);
    case VT_UI4:
    case VT_UINT:
      return builder_.AppendInteger(value.ulVal);
    case VT_I8:
      return builder_.AppendInteger(value.llVal);
    case VT_UI8:
      if (value.ullVal > static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) {
        return builder_.AppendDouble(static_cast<double>(value.ullVal));
      }
      return builder_.AppendInteger(static_cast<int64_t>(value.ullVal));
    case VT_R4:
      return builder_.AppendDouble(WidenedSingle(value.fltVal));
    default:
      return AppendConverted(value);
  }
}

// References, bytes and whatever else a provider may give.
void AdoColumn::AppendConverted(const VARIANT& value) {
  if ((value.vt & VT_BYREF) != 0) {
    const Variant plain = Variant::CopyOf(value);
    return (plain.get().vt & VT_BYREF) != 0 ? builder_.AppendNull() : Append(plain.get());
  }
  if (value.vt != (VT_ARRAY | VT_UI1) || value.parray == nullptr || SafeArrayGetDim(value.parray) != 1) {
    return builder_.AppendNull();
  }
  void* bytes = nullptr;
  if (FAILED(SafeArrayAccessData(value.parray, &bytes))) return builder_.AppendNull();
  utf8_ = base::CleanUtf8({static_cast<const char*>(bytes), value.parray->rgsabound[0].cElements});
  SafeArrayUnaccessData(value.parray);
  builder_.AppendText(utf8_);
}

void AdoColumn::AppendDate(DATE date) {
  // The calendar of automation ends with the year 9999, and begins with the year 100.
  constexpr double kFirst = -657435;
  constexpr double kEnd = 2958466;
  if (!(date > kFirst && date < kEnd)) return builder_.AppendNull();
  builder_.AppendDate(DateOfAutomation(date));
}

void AdoColumn::AppendDecimal(const DECIMAL& decimal) {
  if (decimal.scale == 0) {
    if (const auto whole = UnitsOfDecimal(decimal, 0)) return builder_.AppendInteger(*whole);
  } else if (decimal.scale <= base::Money::kDecimals) {
    if (const auto units = UnitsOfDecimal(decimal, base::Money::kDecimals)) {
      return builder_.AppendMoney(base::Money::FromUnits(*units));
    }
  }
  const auto number = base::ParseNumber(DigitsOfDecimal(decimal));
  if (!number) return builder_.AppendNull();
  builder_.AppendDouble(*number);
}

void AdoColumn::AppendWide(std::wstring_view wide) {
  KnownText* known = SlotFor(wide);
  if (known == nullptr) return builder_.AppendTextCode(CodeOf(wide));
  if (known->code == 0 || known->wide != wide) {
    known->wide = wide;
    known->code = CodeOf(wide);
  } else {
    ++found_;
  }
  builder_.AppendTextCode(known->code);
}

uint32_t AdoColumn::CodeOf(std::wstring_view wide) {
  utf8_.clear();
  AppendCleanUtf8(wide, utf8_);
  return builder_.AddText(utf8_);
}

// Where the text is if it is known; nothing in a column whose texts hardly ever come again.
AdoColumn::KnownText* AdoColumn::SlotFor(std::wstring_view wide) {
  constexpr size_t kTrial = 4096;
  constexpr size_t kLeastShare = 4;
  if (known_are_useless_ || wide.size() > kLongestKnown) return nullptr;
  if (known_.empty()) known_.resize(kSlots);
  if (++asked_ == kTrial) {
    known_are_useless_ = found_ < kTrial / kLeastShare;
    asked_ = 0;
    found_ = 0;
  }
  // Its ends and its length; texts that collide here are as slow as they would be without this.
  constexpr uint32_t kSpread = 0x9E3779B9U;
  uint32_t mixed = static_cast<uint32_t>(wide.size());
  if (!wide.empty()) mixed ^= static_cast<uint32_t>(wide.front()) << 8 ^ static_cast<uint32_t>(wide.back()) << 16;
  if (wide.size() > 1) mixed ^= static_cast<uint32_t>(wide[wide.size() - 2]) << 4;
  return &known_[mixed * kSpread >> 26];
}

}  // namespace stockbook::com
