// SPDX-License-Identifier: MIT
#include "com/object/stockbook_members.h"

#include <string>
#include <vector>

#include "com/automation/safe_array.h"
#include "com/grid/grid_object.h"

namespace stockbook::com {

HRESULT StockbookMembers::get_Grid(IDispatch** result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = nullptr;
  return Call([&](Control&) {
    if (!grid_) grid_ = NewGridObject(parts().link());
    *result = ComPtr<IDispatch>(grid_).Detach();
  });
}

HRESULT StockbookMembers::Load(LONG rKeyID, LONG rdpID, BSTR rdpCode, VARIANT_BOOL* result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = VARIANT_FALSE;
  return Call([&](Control& control) {
    const bool loaded = control.Load(rKeyID, rdpID, FromBstr(rdpCode));
    *result = loaded ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT StockbookMembers::Prompt(BSTR Msg) {
  return Call([&](Control& control) { control.Prompt(FromBstr(Msg)); });
}

HRESULT StockbookMembers::Find(BSTR rSearchString, LONG StartRow, VARIANT_BOOL* result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  *result = VARIANT_FALSE;
  return Call([&](Control& control) {
    const bool found = control.Find(FromBstr(rSearchString), StartRow);
    *result = found ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT StockbookMembers::DefaultFormat() {
  return Call([](Control& control) { control.DefaultFormat(); });
}

HRESULT StockbookMembers::DoCommand(BSTR CmdName, SAFEARRAY** rParas, VARIANT* result) {
  if (result == nullptr) return RefuseNull(IID__Stockbook);
  VariantInit(result);
  if (rParas == nullptr) return RefuseNull(IID__Stockbook);
  return Call([&](Control& control) {
    const std::string name = FromBstr(CmdName);
    std::vector<base::Value> values = ValuesFromZero(*rParas);
    *result = Variant(control.DoCommand(name, values)).Detach();
  });
}

}  // namespace stockbook::com
