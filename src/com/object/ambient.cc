// SPDX-License-Identifier: MIT
#include "com/object/ambient.h"

#include <ocidl.h>
#include <olectl.h>

#include "com/automation/text.h"
#include "com/automation/variant.h"

namespace stockbook::com {
namespace {

std::optional<Variant> AmbientProperty(IDispatch* form, DISPID property) {
  Variant value;
  DISPPARAMS none{};
  if (form == nullptr) return std::nullopt;
  const HRESULT result =
      form->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Put(), nullptr, nullptr);
  if (FAILED(result)) return std::nullopt;
  return value;
}

std::optional<platform::Font> FontOf(const VARIANT& value) {
  if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) return std::nullopt;
  const auto font = ComPtr<IUnknown>(value.punkVal).As<IFont>();
  if (!font) return std::nullopt;
  constexpr double kUnitsPerPoint = 10000.0;  // a currency's
  Bstr name;
  CY size{};
  BOOL bold = FALSE;
  BOOL italic = FALSE;
  if (FAILED(font->get_Name(name.Put())) || FAILED(font->get_Size(&size)) || size.int64 <= 0) return std::nullopt;
  font->get_Bold(&bold);
  font->get_Italic(&italic);
  return platform::Font{name.Text(), static_cast<double>(size.int64) / kUnitsPerPoint, bold != FALSE, italic != FALSE};
}

std::optional<platform::Colour> ColourOf(const VARIANT& value) {
  COLORREF colour = 0;
  if (value.vt != VT_I4 && value.vt != VT_UI4) return std::nullopt;
  if (FAILED(OleTranslateColor(static_cast<OLE_COLOR>(value.lVal), nullptr, &colour))) return std::nullopt;
  return colour;
}

}  // namespace

Ambient Ambient::Of(const ComPtr<IOleClientSite>& site) {
  Ambient ambient;
  const auto form = site.As<IDispatch>();
  if (const auto font = AmbientProperty(form.get(), DISPID_AMBIENT_FONT)) ambient.font = FontOf(font->get());
  if (const auto back = AmbientProperty(form.get(), DISPID_AMBIENT_BACKCOLOR))
    ambient.back_colour = ColourOf(back->get());
  const auto mode = AmbientProperty(form.get(), DISPID_AMBIENT_USERMODE);
  if (mode && mode->get().vt == VT_BOOL) ambient.user_mode = mode->get().boolVal != VARIANT_FALSE;
  const auto locale = AmbientProperty(form.get(), DISPID_AMBIENT_LOCALEID);
  if (locale && locale->get().vt == VT_I4) ambient.locale = static_cast<LCID>(locale->get().lVal);
  return ambient;
}

}  // namespace stockbook::com
