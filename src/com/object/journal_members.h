// SPDX-License-Identifier: MIT
#pragma once

#include "com/object/member_calls.h"

namespace stockbook::com {

// The members that choose the journal and its captions. The connection is read back as the object that was given.
class JournalMembers : public MemberCalls {
 public:
  using MemberCalls::MemberCalls;

  // Connection, rights and journal selection.
  STDMETHODIMP get_Conn(IDispatch** result) override;
  STDMETHODIMP putref_Conn(IDispatch* value) override;
  STDMETHODIMP put_JournalType(tqJournalTypeContants value) override;
  STDMETHODIMP get_JournalType(tqJournalTypeContants* result) override;
  STDMETHODIMP get_FmtName(BSTR* result) override { return Get(result, &Control::FmtName); }
  STDMETHODIMP put_AllowQty2(VARIANT_BOOL value) override { return Put(&Control::SetAllowQty2, value); }
  STDMETHODIMP get_AllowQty2(VARIANT_BOOL* result) override { return Get(result, &Control::AllowQty2); }
  STDMETHODIMP put_AllowInv(VARIANT_BOOL value) override { return Put(&Control::SetAllowInv, value); }
  STDMETHODIMP get_AllowInv(VARIANT_BOOL* result) override { return Get(result, &Control::AllowInv); }
  STDMETHODIMP put_dpID(LONG value) override { return Put(&Control::SetdpID, value); }
  STDMETHODIMP get_dpID(LONG* result) override { return Get(result, &Control::dpID); }
  STDMETHODIMP put_dpCode(BSTR value) override { return Put(&Control::SetdpCode, value); }
  STDMETHODIMP get_dpCode(BSTR* result) override { return Get(result, &Control::dpCode); }
  STDMETHODIMP get_AccPeriod(BSTR* result) override { return Get(result, &Control::AccPeriod); }
  STDMETHODIMP get_DepotName(BSTR* result) override { return Get(result, &Control::DepotName); }
  STDMETHODIMP put_KeyID(LONG value) override { return Put(&Control::SetKeyID, value); }
  STDMETHODIMP get_KeyID(LONG* result) override { return Get(result, &Control::KeyID); }
  STDMETHODIMP get_KeyName(BSTR* result) override { return Get(result, &Control::KeyName); }
  STDMETHODIMP get_ProductNo(BSTR* result) override { return Get(result, &Control::ProductNo); }
  STDMETHODIMP get_Model(BSTR* result) override { return Get(result, &Control::Model); }
  STDMETHODIMP get_Standard(BSTR* result) override { return Get(result, &Control::Standard); }
  STDMETHODIMP get_Measure(BSTR* result) override { return Get(result, &Control::Measure); }

  // Captions and filters.
  STDMETHODIMP put_MaterielTitle(BSTR value) override { return Put(&Control::SetMaterielTitle, value); }
  STDMETHODIMP get_MaterielTitle(BSTR* result) override { return Get(result, &Control::MaterielTitle); }
  STDMETHODIMP put_SupplierTitle(BSTR value) override { return Put(&Control::SetSupplierTitle, value); }
  STDMETHODIMP get_SupplierTitle(BSTR* result) override { return Get(result, &Control::SupplierTitle); }
  STDMETHODIMP put_CustomerTitle(BSTR value) override { return Put(&Control::SetCustomerTitle, value); }
  STDMETHODIMP get_CustomerTitle(BSTR* result) override { return Get(result, &Control::CustomerTitle); }
  STDMETHODIMP put_ProjectTitle(BSTR value) override { return Put(&Control::SetProjectTitle, value); }
  STDMETHODIMP get_ProjectTitle(BSTR* result) override { return Get(result, &Control::ProjectTitle); }
  STDMETHODIMP put_Field00(BSTR value) override { return Put(&Control::SetField00, value); }
  STDMETHODIMP get_Field00(BSTR* result) override { return Get(result, &Control::Field00); }
  STDMETHODIMP put_Field01(BSTR value) override { return Put(&Control::SetField01, value); }
  STDMETHODIMP get_Field01(BSTR* result) override { return Get(result, &Control::Field01); }
  STDMETHODIMP put_Field02(BSTR value) override { return Put(&Control::SetField02, value); }
  STDMETHODIMP get_Field02(BSTR* result) override { return Get(result, &Control::Field02); }
  STDMETHODIMP put_Field03(BSTR value) override { return Put(&Control::SetField03, value); }
  STDMETHODIMP get_Field03(BSTR* result) override { return Get(result, &Control::Field03); }
  STDMETHODIMP put_Field04(BSTR value) override { return Put(&Control::SetField04, value); }
  STDMETHODIMP get_Field04(BSTR* result) override { return Get(result, &Control::Field04); }
  STDMETHODIMP put_Field05(BSTR value) override { return Put(&Control::SetField05, value); }
  STDMETHODIMP get_Field05(BSTR* result) override { return Get(result, &Control::Field05); }
  STDMETHODIMP put_Field06(BSTR value) override { return Put(&Control::SetField06, value); }
  STDMETHODIMP get_Field06(BSTR* result) override { return Get(result, &Control::Field06); }
  STDMETHODIMP put_Field10(BSTR value) override { return Put(&Control::SetField10, value); }
  STDMETHODIMP get_Field10(BSTR* result) override { return Get(result, &Control::Field10); }
  STDMETHODIMP put_Field11(BSTR value) override { return Put(&Control::SetField11, value); }
  STDMETHODIMP get_Field11(BSTR* result) override { return Get(result, &Control::Field11); }
  STDMETHODIMP put_Field12(BSTR value) override { return Put(&Control::SetField12, value); }
  STDMETHODIMP get_Field12(BSTR* result) override { return Get(result, &Control::Field12); }
  STDMETHODIMP put_Field13(BSTR value) override { return Put(&Control::SetField13, value); }
  STDMETHODIMP get_Field13(BSTR* result) override { return Get(result, &Control::Field13); }
  STDMETHODIMP put_Field14(BSTR value) override { return Put(&Control::SetField14, value); }
  STDMETHODIMP get_Field14(BSTR* result) override { return Get(result, &Control::Field14); }
  STDMETHODIMP put_Field15(BSTR value) override { return Put(&Control::SetField15, value); }
  STDMETHODIMP get_Field15(BSTR* result) override { return Get(result, &Control::Field15); }
  STDMETHODIMP put_Field16(BSTR value) override { return Put(&Control::SetField16, value); }
  STDMETHODIMP get_Field16(BSTR* result) override { return Get(result, &Control::Field16); }
  STDMETHODIMP put_Caption(BSTR value) override { return Put(&Control::SetCaption, value); }
  STDMETHODIMP get_Caption(BSTR* result) override { return Get(result, &Control::Caption); }
  STDMETHODIMP put_FieldsFilter(BSTR value) override { return Put(&Control::SetFieldsFilter, value); }
  STDMETHODIMP get_FieldsFilter(BSTR* result) override { return Get(result, &Control::FieldsFilter); }
  STDMETHODIMP get_ColsFilter(BSTR* result) override { return Get(result, &Control::ColsFilter); }
  STDMETHODIMP put_AccRestrict(BSTR value) override { return Put(&Control::SetAccRestrict, value); }
  STDMETHODIMP get_AccRestrict(BSTR* result) override { return Get(result, &Control::AccRestrict); }
  STDMETHODIMP put_PriceFormat(BSTR value) override { return Put(&Control::SetPriceFormat, value); }
  STDMETHODIMP get_PriceFormat(BSTR* result) override { return Get(result, &Control::PriceFormat); }
  STDMETHODIMP put_QuantityFormat(BSTR value) override { return Put(&Control::SetQuantityFormat, value); }
  STDMETHODIMP get_QuantityFormat(BSTR* result) override { return Get(result, &Control::QuantityFormat); }
  STDMETHODIMP put_AccountFormat(BSTR value) override { return Put(&Control::SetAccountFormat, value); }
  STDMETHODIMP get_AccountFormat(BSTR* result) override { return Get(result, &Control::AccountFormat); }

  // Plain flags for the host's use.
  STDMETHODIMP put_AllowView(VARIANT_BOOL value) override { return Put(&Control::SetAllowView, value); }
  STDMETHODIMP get_AllowView(VARIANT_BOOL* result) override { return Get(result, &Control::AllowView); }
  STDMETHODIMP put_AllowPrint(VARIANT_BOOL value) override { return Put(&Control::SetAllowPrint, value); }
  STDMETHODIMP get_AllowPrint(VARIANT_BOOL* result) override { return Get(result, &Control::AllowPrint); }

 private:
  ComPtr<IDispatch> connection_;
};

}  // namespace stockbook::com
