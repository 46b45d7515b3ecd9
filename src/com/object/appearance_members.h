// SPDX-License-Identifier: MIT
#pragma once

#include "com/object/journal_members.h"

namespace stockbook::com {

// The members of the appearance, which a form keeps. Pictures are read back as the objects that were given.
class AppearanceMembers : public JournalMembers {
 public:
  using JournalMembers::JournalMembers;

  STDMETHODIMP get_BackColor(OLE_COLOR* result) override { return Get(result, &Control::BackColor); }
  STDMETHODIMP put_BackColor(OLE_COLOR value) override { return PutSaved("BackColor", &Control::SetBackColor, value); }
  STDMETHODIMP get_BackColorBkg(OLE_COLOR* result) override { return Get(result, &Control::BackColorBkg); }
  STDMETHODIMP put_BackColorBkg(OLE_COLOR value) override {
    return PutSaved("BackColorBkg", &Control::SetBackColorBkg, value);
  }
  STDMETHODIMP get_BackColorFixed(OLE_COLOR* result) override { return Get(result, &Control::BackColorFixed); }
  STDMETHODIMP put_BackColorFixed(OLE_COLOR value) override {
    return PutSaved("BackColorFixed", &Control::SetBackColorFixed, value);
  }
  STDMETHODIMP get_BackColorFrozen(OLE_COLOR* result) override { return Get(result, &Control::BackColorFrozen); }
  STDMETHODIMP put_BackColorFrozen(OLE_COLOR value) override {
    return PutSaved("BackColorFrozen", &Control::SetBackColorFrozen, value);
  }
  STDMETHODIMP get_BackColorSel(OLE_COLOR* result) override { return Get(result, &Control::BackColorSel); }
  STDMETHODIMP put_BackColorSel(OLE_COLOR value) override {
    return PutSaved("BackColorSel", &Control::SetBackColorSel, value);
  }
  STDMETHODIMP get_ForeColor(OLE_COLOR* result) override { return Get(result, &Control::ForeColor); }
  STDMETHODIMP put_ForeColor(OLE_COLOR value) override { return PutSaved("ForeColor", &Control::SetForeColor, value); }
  STDMETHODIMP get_ForeColorFixed(OLE_COLOR* result) override { return Get(result, &Control::ForeColorFixed); }
  STDMETHODIMP put_ForeColorFixed(OLE_COLOR value) override {
    return PutSaved("ForeColorFixed", &Control::SetForeColorFixed, value);
  }
  STDMETHODIMP get_ForeColorFrozen(OLE_COLOR* result) override { return Get(result, &Control::ForeColorFrozen); }
  STDMETHODIMP put_ForeColorFrozen(OLE_COLOR value) override {
    return PutSaved("ForeColorFrozen", &Control::SetForeColorFrozen, value);
  }
  STDMETHODIMP get_ForeColorSel(OLE_COLOR* result) override { return Get(result, &Control::ForeColorSel); }
  STDMETHODIMP put_ForeColorSel(OLE_COLOR value) override {
    return PutSaved("ForeColorSel", &Control::SetForeColorSel, value);
  }
  STDMETHODIMP get_GridColor(OLE_COLOR* result) override { return Get(result, &Control::GridColor); }
  STDMETHODIMP put_GridColor(OLE_COLOR value) override { return PutSaved("GridColor", &Control::SetGridColor, value); }
  STDMETHODIMP get_GridColorFixed(OLE_COLOR* result) override { return Get(result, &Control::GridColorFixed); }
  STDMETHODIMP put_GridColorFixed(OLE_COLOR value) override {
    return PutSaved("GridColorFixed", &Control::SetGridColorFixed, value);
  }
  STDMETHODIMP get_GridLines(LONG* result) override { return Get(result, &Control::GridLines); }
  STDMETHODIMP put_GridLines(LONG value) override { return PutCode({"GridLines", 7}, &Control::SetGridLines, value); }
  STDMETHODIMP get_GridLinesFixed(LONG* result) override { return Get(result, &Control::GridLinesFixed); }
  STDMETHODIMP put_GridLinesFixed(LONG value) override {
    return PutCode({"GridLinesFixed", 7}, &Control::SetGridLinesFixed, value);
  }
  STDMETHODIMP get_Outlinebar(LONG* result) override { return Get(result, &Control::Outlinebar); }
  STDMETHODIMP put_Outlinebar(LONG value) override {
    return PutCode({"Outlinebar", 6}, &Control::SetOutlinebar, value);
  }
  STDMETHODIMP get_RowHeightMin(FLOAT* result) override { return Get(result, &Control::RowHeightMin); }
  STDMETHODIMP put_RowHeightMin(FLOAT value) override {
    return PutSaved("RowHeightMin", &Control::SetRowHeightMin, value);
  }
  STDMETHODIMP get_RowHeightMax(FLOAT* result) override { return Get(result, &Control::RowHeightMax); }
  STDMETHODIMP put_RowHeightMax(FLOAT value) override {
    return PutSaved("RowHeightMax", &Control::SetRowHeightMax, value);
  }
  STDMETHODIMP get_ScrollBars(LONG* result) override { return Get(result, &Control::ScrollBars); }
  STDMETHODIMP put_ScrollBars(LONG value) override {
    return PutCode({"ScrollBars", 3}, &Control::SetScrollBars, value);
  }
  STDMETHODIMP get_BillPicture(IPictureDisp** result) override { return GetPicture(result, &Control::BillPicture); }
  STDMETHODIMP putref_BillPicture(IPictureDisp* value) override {
    return PutPicture("BillPicture", &Control::SetBillPicture, value);
  }
  STDMETHODIMP get_BillAuditedPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::BillAuditedPicture);
  }
  STDMETHODIMP putref_BillAuditedPicture(IPictureDisp* value) override {
    return PutPicture("BillAuditedPicture", &Control::SetBillAuditedPicture, value);
  }
  STDMETHODIMP get_RevPicture(IPictureDisp** result) override { return GetPicture(result, &Control::RevPicture); }
  STDMETHODIMP putref_RevPicture(IPictureDisp* value) override {
    return PutPicture("RevPicture", &Control::SetRevPicture, value);
  }
  STDMETHODIMP get_RevAuditedPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::RevAuditedPicture);
  }
  STDMETHODIMP putref_RevAuditedPicture(IPictureDisp* value) override {
    return PutPicture("RevAuditedPicture", &Control::SetRevAuditedPicture, value);
  }
  STDMETHODIMP get_IssPicture(IPictureDisp** result) override { return GetPicture(result, &Control::IssPicture); }
  STDMETHODIMP putref_IssPicture(IPictureDisp* value) override {
    return PutPicture("IssPicture", &Control::SetIssPicture, value);
  }
  STDMETHODIMP get_IssAuditedPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::IssAuditedPicture);
  }
  STDMETHODIMP putref_IssAuditedPicture(IPictureDisp* value) override {
    return PutPicture("IssAuditedPicture", &Control::SetIssAuditedPicture, value);
  }
  STDMETHODIMP get_ShiftPicture(IPictureDisp** result) override { return GetPicture(result, &Control::ShiftPicture); }
  STDMETHODIMP putref_ShiftPicture(IPictureDisp* value) override {
    return PutPicture("ShiftPicture", &Control::SetShiftPicture, value);
  }
  STDMETHODIMP get_ShiftAuditedPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::ShiftAuditedPicture);
  }
  STDMETHODIMP putref_ShiftAuditedPicture(IPictureDisp* value) override {
    return PutPicture("ShiftAuditedPicture", &Control::SetShiftAuditedPicture, value);
  }
  STDMETHODIMP get_NodeClosedPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::NodeClosedPicture);
  }
  STDMETHODIMP putref_NodeClosedPicture(IPictureDisp* value) override {
    return PutPicture("NodeClosedPicture", &Control::SetNodeClosedPicture, value);
  }
  STDMETHODIMP get_NodeOpenPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::NodeOpenPicture);
  }
  STDMETHODIMP putref_NodeOpenPicture(IPictureDisp* value) override {
    return PutPicture("NodeOpenPicture", &Control::SetNodeOpenPicture, value);
  }
  STDMETHODIMP get_BackColorHot(OLE_COLOR* result) override { return Get(result, &Control::BackColorHot); }
  STDMETHODIMP put_BackColorHot(OLE_COLOR value) override {
    return PutSaved("BackColorHot", &Control::SetBackColorHot, value);
  }
  STDMETHODIMP get_ForeColorHot(OLE_COLOR* result) override { return Get(result, &Control::ForeColorHot); }
  STDMETHODIMP put_ForeColorHot(OLE_COLOR value) override {
    return PutSaved("ForeColorHot", &Control::SetForeColorHot, value);
  }
  STDMETHODIMP get_TitleBackPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::TitleBackPicture);
  }
  STDMETHODIMP putref_TitleBackPicture(IPictureDisp* value) override {
    return PutPicture("TitleBackPicture", &Control::SetTitleBackPicture, value);
  }
  STDMETHODIMP get_MarkBackPicture(IPictureDisp** result) override {
    return GetPicture(result, &Control::MarkBackPicture);
  }
  STDMETHODIMP putref_MarkBackPicture(IPictureDisp* value) override {
    return PutPicture("MarkBackPicture", &Control::SetMarkBackPicture, value);
  }
  STDMETHODIMP get_BorderWidth(SHORT* result) override { return Get(result, &Control::BorderWidth); }
  STDMETHODIMP put_BorderWidth(SHORT value) override {
    return PutSaved("BorderWidth", &Control::SetBorderWidth, value);
  }
  STDMETHODIMP get_ChildSpacing(SHORT* result) override { return Get(result, &Control::ChildSpacing); }
  STDMETHODIMP put_ChildSpacing(SHORT value) override {
    return PutSaved("ChildSpacing", &Control::SetChildSpacing, value);
  }
  STDMETHODIMP get_BorderColor(OLE_COLOR* result) override { return Get(result, &Control::BorderColor); }
  STDMETHODIMP put_BorderColor(OLE_COLOR value) override {
    return PutSaved("BorderColor", &Control::SetBorderColor, value);
  }
  STDMETHODIMP get_SheetBorderColor(OLE_COLOR* result) override { return Get(result, &Control::SheetBorderColor); }
  STDMETHODIMP put_SheetBorderColor(OLE_COLOR value) override {
    return PutSaved("SheetBorderColor", &Control::SetSheetBorderColor, value);
  }
};

}  // namespace stockbook::com
