// SPDX-License-Identifier: MIT
#include "com/object/host_bag.h"

#include <string>
#include <type_traits>

#include "com/automation/automation_error.h"
#include "com/automation/text.h"
#include "com/automation/variant.h"

namespace stockbook::com {
namespace {

VARTYPE TypeOf(const platform::BagValue& value) {
  if (std::holds_alternative<int16_t>(value)) return VT_I2;
  return std::holds_alternative<int32_t>(value) ? VT_I4 : VT_UNKNOWN;
}

ComPtr<IUnknown> ObjectIn(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_UNKNOWN:
      return ComPtr<IUnknown>(value.punkVal);
    default:
      return ToDispatch(value).As<IUnknown>();
  }
}

}  // namespace

platform::BagValue HostBag::Read(std::string_view key, const platform::BagValue& fallback) {
  const std::wstring name = ToWide(key);
  // The type asked for helps a bag that keeps texts.
  Variant held;
  held.get().vt = TypeOf(fallback);
  const HRESULT result = bag_.Read(name.c_str(), &held.get(), log_);
  if (result == E_INVALIDARG) {
    // What the bag may have said of that does not describe a later failure.
    SetErrorInfo(0, nullptr);
    return fallback;
  }
  Expect(result);
  // Some bags succeed with nothing for what they do not have. No number is nothing; a picture may be.
  if (held.get().vt == VT_EMPTY && TypeOf(fallback) != VT_UNKNOWN) return fallback;
  if (std::holds_alternative<int16_t>(fallback)) return ToShort(held.get());
  // Colours are stored in 32 bits without a sign, too.
  if (std::holds_alternative<int32_t>(fallback)) return static_cast<int32_t>(ToBits(held.get()));
  return pictures_.PictureOf(ObjectIn(held.get()).get());
}

void HostBag::Write(std::string_view key, const platform::BagValue& value) {
  const std::wstring name = ToWide(key);
  Variant written = std::visit(
      [&](const auto& held) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(held)>, platform::PictureRef>)
          return Variant(static_cast<IDispatch*>(pictures_.ObjectOf(held).get()));
        else
          return Variant(held);
      },
      value);
  Expect(bag_.Write(name.c_str(), &written.get()));
}

}  // namespace stockbook::com
