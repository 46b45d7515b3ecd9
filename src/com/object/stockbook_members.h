// SPDX-License-Identifier: MIT
#pragma once

#include "com/object/appearance_members.h"

namespace stockbook::com {

// The whole interface: rows, grid and methods beside the members that the bases have.
class StockbookMembers final : public AppearanceMembers {
 public:
  using AppearanceMembers::AppearanceMembers;

  // Rows and grid.
  STDMETHODIMP get_Grid(IDispatch** result) override;
  STDMETHODIMP get_BillID(LONG Row, LONG* result) override { return Get(result, &Control::BillID, Row); }
  STDMETHODIMP get_BillName(LONG Row, BSTR* result) override { return Get(result, &Control::BillName, Row); }
  STDMETHODIMP get_Flag(LONG Row, SHORT* result) override { return Get(result, &Control::Flag, Row); }
  STDMETHODIMP get_FlagName(BSTR* result) override { return Get(result, &Control::FlagName); }
  STDMETHODIMP put_Row(LONG value) override { return Put(&Control::SetRow, value); }
  STDMETHODIMP get_Row(LONG* result) override { return Get(result, &Control::Row); }
  STDMETHODIMP get_Rows(LONG* result) override { return Get(result, &Control::Rows); }
  STDMETHODIMP get_OutlineColKey(BSTR* result) override { return Get(result, &Control::OutlineColKey); }
  STDMETHODIMP put_RowHeight(FLOAT value) override { return Put(&Control::SetRowHeight, value); }
  STDMETHODIMP get_RowHeight(FLOAT* result) override { return Get(result, &Control::RowHeight); }
  STDMETHODIMP put_RowHeightTitle(FLOAT value) override { return Put(&Control::SetRowHeightTitle, value); }
  STDMETHODIMP get_RowHeightTitle(FLOAT* result) override { return Get(result, &Control::RowHeightTitle); }
  STDMETHODIMP put_RowHeightSum(FLOAT value) override { return Put(&Control::SetRowHeightSum, value); }
  STDMETHODIMP get_RowHeightSum(FLOAT* result) override { return Get(result, &Control::RowHeightSum); }

  // Methods.
  STDMETHODIMP Load(LONG rKeyID, LONG rdpID, BSTR rdpCode, VARIANT_BOOL* result) override;
  STDMETHODIMP Prompt(BSTR Msg) override;
  STDMETHODIMP Find(BSTR rSearchString, LONG StartRow, VARIANT_BOOL* result) override;
  STDMETHODIMP IsRangeSelected(VARIANT_BOOL* result) override { return Get(result, &Control::IsRangeSelected); }
  STDMETHODIMP DefaultFormat() override;
  STDMETHODIMP Statistics(BSTR* result) override { return Get(result, &Control::Statistics); }
  // Element 0 is the one of that index, whatever bounds the array has.
  STDMETHODIMP DoCommand(BSTR CmdName, SAFEARRAY** rParas, VARIANT* result) override;

 private:
  ComPtr<IDispatch> grid_;
};

}  // namespace stockbook::com
