// SPDX-License-Identifier: MIT
// Every member of the interface, late-bound and early-bound.
#include <gtest/gtest.h>

#include "com/automation/text.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;
using testing::NewControl;
using testing::NewPicture;

using ReadText = HRESULT (STDMETHODCALLTYPE _Stockbook::*)(BSTR*);
using WriteText = HRESULT (STDMETHODCALLTYPE _Stockbook::*)(BSTR);

std::string TextBy(_Stockbook* control, ReadText read) {
  Bstr text;
  EXPECT_EQ((control->*read)(text.Put()), S_OK);
  return text.Text();
}

struct TextMember {
  const char* name;
  ReadText read;
  WriteText write;
  const char* initial;
};

const TextMember kTextMembers[] = {
    {"dpCode", &_Stockbook::get_dpCode, &_Stockbook::put_dpCode, ""},
    {"MaterielTitle", &_Stockbook::get_MaterielTitle, &_Stockbook::put_MaterielTitle, "商品"},
    {"SupplierTitle", &_Stockbook::get_SupplierTitle, &_Stockbook::put_SupplierTitle, "发货单位"},
    {"CustomerTitle", &_Stockbook::get_CustomerTitle, &_Stockbook::put_CustomerTitle, "收货单位"},
    {"ProjectTitle", &_Stockbook::get_ProjectTitle, &_Stockbook::put_ProjectTitle, "项目"},
    {"Field00", &_Stockbook::get_Field00, &_Stockbook::put_Field00, "经手人"},
    {"Field01", &_Stockbook::get_Field01, &_Stockbook::put_Field01, "交接人"},
    {"Field02", &_Stockbook::get_Field02, &_Stockbook::put_Field02, "包装"},
    {"Field03", &_Stockbook::get_Field03, &_Stockbook::put_Field03, "货位"},
    {"Field04", &_Stockbook::get_Field04, &_Stockbook::put_Field04, "期限"},
    {"Field05", &_Stockbook::get_Field05, &_Stockbook::put_Field05, "序列号"},
    {"Field06", &_Stockbook::get_Field06, &_Stockbook::put_Field06, "生产日期"},
    {"Field10", &_Stockbook::get_Field10, &_Stockbook::put_Field10, "经手人"},
    {"Field11", &_Stockbook::get_Field11, &_Stockbook::put_Field11, "交接人"},
    {"Field12", &_Stockbook::get_Field12, &_Stockbook::put_Field12, "包装"},
    {"Field13", &_Stockbook::get_Field13, &_Stockbook::put_Field13, "货位"},
    {"Field14", &_Stockbook::get_Field14, &_Stockbook::put_Field14, "期限"},
    {"Field15", &_Stockbook::get_Field15, &_Stockbook::put_Field15, "序列号"},
    {"Field16", &_Stockbook::get_Field16, &_Stockbook::put_Field16, "生产日期"},
    {"FieldsFilter", &_Stockbook::get_FieldsFilter, &_Stockbook::put_FieldsFilter, ""},
    {"PriceFormat", &_Stockbook::get_PriceFormat, &_Stockbook::put_PriceFormat, "#,##0.00"},
    {"QuantityFormat", &_Stockbook::get_QuantityFormat, &_Stockbook::put_QuantityFormat, "#,##0.00"},
    {"AccountFormat", &_Stockbook::get_AccountFormat, &_Stockbook::put_AccountFormat, "#,##0.00"},
};

TEST(Members, KeepTextsByEarlyAndByLateBinding) {
  const auto control = NewControl();
  const Late late(control.get());
  for (const TextMember& member : kTextMembers) {
    SCOPED_TRACE(member.name);
    EXPECT_EQ(late.Get(member.name).Text(), member.initial);
    const std::string first = std::string("早 ") + member.name + " \xF0\xA0\xAE\xB7";
    EXPECT_EQ((control.get()->*member.write)(Bstr(first).get()), S_OK);
    EXPECT_EQ(late.Get(member.name).Text(), first);
    const std::string second = std::string("晚 ") + member.name;
    EXPECT_TRUE(late.Put(member.name, second.c_str()).Succeeded());
    EXPECT_EQ(TextBy(control.get(), member.read), second);
    EXPECT_EQ((control.get()->*member.read)(nullptr), E_POINTER);
    // A null text is the empty one.
    EXPECT_EQ((control.get()->*member.write)(nullptr), S_OK);
    EXPECT_EQ(late.Get(member.name).Text(), "");
  }
}

struct TextReader {
  const char* name;
  ReadText read;
  const char* empty;  // without a connection
};

TEST(Members, ReadTextsThatOnlyTheControlWrites) {
  const TextReader readers[] = {
      {"FmtName", &_Stockbook::get_FmtName, "Stockbook"},
      {"AccPeriod", &_Stockbook::get_AccPeriod, ""},
      {"DepotName", &_Stockbook::get_DepotName, "全部仓库"},
      {"KeyName", &_Stockbook::get_KeyName, ""},
      {"ProductNo", &_Stockbook::get_ProductNo, ""},
      {"Model", &_Stockbook::get_Model, ""},
      {"Standard", &_Stockbook::get_Standard, ""},
      {"Measure", &_Stockbook::get_Measure, ""},
      {"FlagName", &_Stockbook::get_FlagName, "入库"},
      {"OutlineColKey", &_Stockbook::get_OutlineColKey, "BillNo"},
  };
  const auto control = NewControl();
  const Late late(control.get());
  for (const TextReader& reader : readers) {
    SCOPED_TRACE(reader.name);
    EXPECT_EQ(TextBy(control.get(), reader.read), reader.empty);
    EXPECT_EQ(late.Get(reader.name).Text(), reader.empty);
    EXPECT_EQ((control.get()->*reader.read)(nullptr), E_POINTER);
    EXPECT_FALSE(late.Put(reader.name, "x").Succeeded());
  }
  EXPECT_EQ(late.Get("ColsFilter").Text(), TextBy(control.get(), &_Stockbook::get_ColsFilter));
  EXPECT_NE(late.Get("ColsFilter").Text(), "");
}

TEST(Members, TrimTheCaption) {
  const auto control = NewControl();
  const Late late(control.get());
  EXPECT_TRUE(late.Put("Caption", "  台账 甲  ").Succeeded());
  EXPECT_EQ(late.Get("Caption").Text(), "台账 甲");
  EXPECT_EQ(TextBy(control.get(), &_Stockbook::get_Caption), "台账 甲");
  EXPECT_EQ(Late(Late(late.Get("Grid").Object().get()).Get("C1EHeader").Object().get()).Get("Caption").Text(),
            "台账 甲   ");
}

TEST(Members, KeepFlags) {
  struct Flag {
    const char* name;
    HRESULT (STDMETHODCALLTYPE _Stockbook::*read)(VARIANT_BOOL*);
    HRESULT (STDMETHODCALLTYPE _Stockbook::*write)(VARIANT_BOOL);
  };
  const Flag flags[] = {
      {"AllowQty2", &_Stockbook::get_AllowQty2, &_Stockbook::put_AllowQty2},
      {"AllowInv", &_Stockbook::get_AllowInv, &_Stockbook::put_AllowInv},
      {"AllowView", &_Stockbook::get_AllowView, &_Stockbook::put_AllowView},
      {"AllowPrint", &_Stockbook::get_AllowPrint, &_Stockbook::put_AllowPrint},
  };
  const auto control = NewControl();
  const Late late(control.get());
  for (const Flag& flag : flags) {
    SCOPED_TRACE(flag.name);
    EXPECT_FALSE(late.Get(flag.name).Truth());
    EXPECT_EQ((control.get()->*flag.write)(VARIANT_TRUE), S_OK);
    EXPECT_EQ(late.Get(flag.name).value.get().vt, VT_BOOL);
    EXPECT_EQ(late.Get(flag.name).value.get().boolVal, VARIANT_TRUE);
    EXPECT_TRUE(late.Put(flag.name, 0).Succeeded());  // a number converts
    VARIANT_BOOL read = VARIANT_TRUE;
    EXPECT_EQ((control.get()->*flag.read)(&read), S_OK);
    EXPECT_EQ(read, VARIANT_FALSE);
    EXPECT_EQ((control.get()->*flag.read)(nullptr), E_POINTER);
  }
}

TEST(Members, ChooseTheJournal) {
  const auto control = NewControl();
  const Late late(control.get());
  const char* const names[] = {"Stockbook", "SupplierJournal", "CustomerJournal", "ProjectJournal"};
  for (const int type : {1, 2, 3, 0}) {
    EXPECT_TRUE(late.Put("JournalType", type).Succeeded());
    EXPECT_EQ(late.Get("JournalType").Long(), type);
    EXPECT_EQ(late.Get("FmtName").Text(), names[type]);
    tqJournalTypeContants early = ProjectJournal;
    EXPECT_EQ(control->get_JournalType(&early), S_OK);
    EXPECT_EQ(early, static_cast<tqJournalTypeContants>(type));
  }
  EXPECT_TRUE(late.Put("JournalType", 7).Succeeded());
  EXPECT_EQ(late.Get("FmtName").Text(), "");
  EXPECT_EQ(control->get_JournalType(nullptr), E_POINTER);
  EXPECT_EQ(control->put_KeyID(12), S_OK);
  EXPECT_EQ(late.Get("KeyID").Long(), 12);
  EXPECT_TRUE(late.Put("KeyID", "13").Succeeded());  // a text that spells a number converts
  LONG key = 0;
  EXPECT_EQ(control->get_KeyID(&key), S_OK);
  EXPECT_EQ(key, 13);
  EXPECT_EQ(control->put_dpID(-32768), S_OK);
  EXPECT_EQ(late.Get("dpID").Long(), -32768);
}

struct ColourMember {
  const char* name;
  HRESULT (STDMETHODCALLTYPE _Stockbook::*read)(OLE_COLOR*);
  HRESULT (STDMETHODCALLTYPE _Stockbook::*write)(OLE_COLOR);
};

TEST(Members, KeepColours) {
  const ColourMember members[] = {
      {"BackColor", &_Stockbook::get_BackColor, &_Stockbook::put_BackColor},
      {"BackColorBkg", &_Stockbook::get_BackColorBkg, &_Stockbook::put_BackColorBkg},
      {"BackColorFixed", &_Stockbook::get_BackColorFixed, &_Stockbook::put_BackColorFixed},
      {"BackColorFrozen", &_Stockbook::get_BackColorFrozen, &_Stockbook::put_BackColorFrozen},
      {"BackColorSel", &_Stockbook::get_BackColorSel, &_Stockbook::put_BackColorSel},
      {"ForeColor", &_Stockbook::get_ForeColor, &_Stockbook::put_ForeColor},
      {"ForeColorFixed", &_Stockbook::get_ForeColorFixed, &_Stockbook::put_ForeColorFixed},
      {"ForeColorFrozen", &_Stockbook::get_ForeColorFrozen, &_Stockbook::put_ForeColorFrozen},
      {"ForeColorSel", &_Stockbook::get_ForeColorSel, &_Stockbook::put_ForeColorSel},
      {"GridColor", &_Stockbook::get_GridColor, &_Stockbook::put_GridColor},
      {"GridColorFixed", &_Stockbook::get_GridColorFixed, &_Stockbook::put_GridColorFixed},
      {"BackColorHot", &_Stockbook::get_BackColorHot, &_Stockbook::put_BackColorHot},
      {"ForeColorHot", &_Stockbook::get_ForeColorHot, &_Stockbook::put_ForeColorHot},
      {"BorderColor", &_Stockbook::get_BorderColor, &_Stockbook::put_BorderColor},
      {"SheetBorderColor", &_Stockbook::get_SheetBorderColor, &_Stockbook::put_SheetBorderColor},
  };
  const auto control = NewControl();
  const Late late(control.get());
  OLE_COLOR colour = 0x00102030;
  for (const ColourMember& member : members) {
    SCOPED_TRACE(member.name);
    EXPECT_EQ((control.get()->*member.write)(++colour), S_OK);
    EXPECT_EQ(static_cast<OLE_COLOR>(late.Get(member.name).Double()), colour);
    EXPECT_TRUE(late.Put(member.name, static_cast<int>(++colour)).Succeeded());
    OLE_COLOR read = 0;
    EXPECT_EQ((control.get()->*member.read)(&read), S_OK);
    EXPECT_EQ(read, colour);
    EXPECT_EQ((control.get()->*member.read)(nullptr), E_POINTER);
  }
  // One of the system's colours is kept as what it is now.
  EXPECT_EQ(control->put_BackColor(0x80000000 | COLOR_HIGHLIGHT), S_OK);
  EXPECT_EQ(static_cast<COLORREF>(late.Get("BackColor").Double()), GetSysColor(COLOR_HIGHLIGHT));
}

TEST(Members, KeepSettingsAndSizes) {
  const auto control = NewControl();
  const Late late(control.get());
  for (const char* name : {"GridLines", "GridLinesFixed", "Outlinebar", "ScrollBars"}) {
    SCOPED_TRACE(name);
    for (const int code : {0, 3, 1}) {
      EXPECT_TRUE(late.Put(name, code).Succeeded());
      EXPECT_EQ(late.Get(name).Long(), code);
    }
  }
  for (const char* name : {"RowHeight", "RowHeightTitle", "RowHeightSum", "RowHeightMin", "RowHeightMax"}) {
    SCOPED_TRACE(name);
    EXPECT_TRUE(late.Put(name, 450.5).Succeeded());
    EXPECT_EQ(late.Get(name).Double(), 450.5);
    EXPECT_EQ(late.Get(name).value.get().vt, VT_R4);
  }
  for (const char* name : {"BorderWidth", "ChildSpacing"}) {
    EXPECT_TRUE(late.Put(name, 6).Succeeded());
    EXPECT_EQ(late.Get(name).Long(), 6);
    EXPECT_EQ(late.Get(name).value.get().vt, VT_I2);
  }
  LONG lines = 0;
  EXPECT_EQ(control->put_GridLines(7), S_OK);
  EXPECT_EQ(control->get_GridLines(&lines), S_OK);
  EXPECT_EQ(lines, 7);
}

struct PictureMember {
  const char* name;
  HRESULT (STDMETHODCALLTYPE _Stockbook::*read)(IPictureDisp**);
  HRESULT (STDMETHODCALLTYPE _Stockbook::*write)(IPictureDisp*);
};

TEST(Members, GivePicturesBackAsTheSameObjects) {
  const PictureMember members[] = {
      {"BillPicture", &_Stockbook::get_BillPicture, &_Stockbook::putref_BillPicture},
      {"BillAuditedPicture", &_Stockbook::get_BillAuditedPicture, &_Stockbook::putref_BillAuditedPicture},
      {"RevPicture", &_Stockbook::get_RevPicture, &_Stockbook::putref_RevPicture},
      {"RevAuditedPicture", &_Stockbook::get_RevAuditedPicture, &_Stockbook::putref_RevAuditedPicture},
      {"IssPicture", &_Stockbook::get_IssPicture, &_Stockbook::putref_IssPicture},
      {"IssAuditedPicture", &_Stockbook::get_IssAuditedPicture, &_Stockbook::putref_IssAuditedPicture},
      {"ShiftPicture", &_Stockbook::get_ShiftPicture, &_Stockbook::putref_ShiftPicture},
      {"ShiftAuditedPicture", &_Stockbook::get_ShiftAuditedPicture, &_Stockbook::putref_ShiftAuditedPicture},
      {"NodeClosedPicture", &_Stockbook::get_NodeClosedPicture, &_Stockbook::putref_NodeClosedPicture},
      {"NodeOpenPicture", &_Stockbook::get_NodeOpenPicture, &_Stockbook::putref_NodeOpenPicture},
      {"TitleBackPicture", &_Stockbook::get_TitleBackPicture, &_Stockbook::putref_TitleBackPicture},
      {"MarkBackPicture", &_Stockbook::get_MarkBackPicture, &_Stockbook::putref_MarkBackPicture},
  };
  const auto control = NewControl();
  const Late late(control.get());
  for (const PictureMember& member : members) {
    SCOPED_TRACE(member.name);
    const auto first = NewPicture(8);
    EXPECT_EQ((control.get()->*member.write)(first.get()), S_OK);
    EXPECT_EQ(late.Get(member.name).Object().As<IUnknown>().get(), first.As<IUnknown>().get());
    const auto second = NewPicture(8);
    EXPECT_TRUE(late.PutRef(member.name, second.get()).Succeeded());
    ComPtr<IPictureDisp> read;
    EXPECT_EQ((control.get()->*member.read)(read.PutTyped()), S_OK);
    EXPECT_EQ(read.As<IUnknown>().get(), second.As<IUnknown>().get());
    EXPECT_EQ((control.get()->*member.write)(nullptr), S_OK);
    EXPECT_EQ((control.get()->*member.read)(read.PutTyped()), S_OK);
    EXPECT_FALSE(read);
    EXPECT_EQ((control.get()->*member.read)(nullptr), E_POINTER);
  }
}

TEST(Members, ShowTheirOwnPicturesAsObjects) {
  const auto control = NewControl();
  ComPtr<IPictureDisp> first;
  ComPtr<IPictureDisp> again;
  ASSERT_EQ(control->get_RevPicture(first.PutTyped()), S_OK);
  ASSERT_EQ(control->get_RevPicture(again.PutTyped()), S_OK);
  ASSERT_TRUE(first);
  EXPECT_EQ(first.get(), again.get());
  OLE_XSIZE_HIMETRIC width = 0;
  EXPECT_EQ(first.As<IPicture>()->get_Width(&width), S_OK);
  EXPECT_GT(width, 0);
  // Set as another one, it is the same picture.
  EXPECT_EQ(control->putref_IssPicture(first.get()), S_OK);
  EXPECT_EQ(control->get_IssPicture(again.PutTyped()), S_OK);
  EXPECT_EQ(first.get(), again.get());
}

TEST(Members, GiveTheConnectionBackAsTheSameObject) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  ComPtr<IDispatch> read;
  EXPECT_EQ(host->get_Conn(read.PutTyped()), S_OK);
  EXPECT_EQ(read.get(), host.connection());
  EXPECT_EQ(host.late().Get("Conn").Object().get(), host.connection());
  EXPECT_TRUE(host.late().PutRef("Conn", nullptr).Succeeded());
  EXPECT_EQ(host->get_Conn(read.PutTyped()), S_OK);
  EXPECT_FALSE(read);
  EXPECT_EQ(host->get_Conn(nullptr), E_POINTER);
  EXPECT_TRUE(host.late().PutRef("Conn", host.connection()).Succeeded());
  EXPECT_TRUE(host.Load());
}

TEST(Members, LoadWithArgumentsLeftOut) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  EXPECT_TRUE(host.late().Put("KeyID", 1).Succeeded());
  EXPECT_TRUE(host.late().Call("Load").Truth());
  EXPECT_TRUE(host.late().Call("Load", 5).Truth());
  EXPECT_EQ(host.late().Get("KeyID").Long(), 5);
  EXPECT_TRUE(host.late().Call("Load", testing::Missing(), 3).Truth());
  EXPECT_EQ(host.late().Get("KeyID").Long(), 5);
  EXPECT_EQ(host.late().Get("dpID").Long(), 3);
  EXPECT_TRUE(host.late().Call("Load", 5, -1, "01").Truth());
  EXPECT_EQ(host.late().Get("dpCode").Text(), "01");
}

TEST(Members, ReadRowsWithTheCurrentOneForARowLeftOut) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  EXPECT_EQ(host.late().Get("Rows").Long(), 16);
  EXPECT_TRUE(host.late().Put("Row", 4).Succeeded());
  EXPECT_EQ(host.late().Get("Row").Long(), 4);
  EXPECT_EQ(host.late().Get("BillID").Long(), 1004);
  EXPECT_EQ(host.late().Get("BillID", -5).Long(), 1004);
  EXPECT_EQ(host.late().Get("BillID", 3).Long(), 1003);
  EXPECT_EQ(host.late().Get("BillName").Text(), "出库单");
  EXPECT_EQ(host.late().Get("BillName", 3).Text(), "入库单");
  EXPECT_EQ(host.late().Get("Flag").Long(), 1);
  EXPECT_EQ(host.late().Get("Flag", 3).Long(), 0);
  EXPECT_EQ(host.late().Get("FlagName").Text(), "出库");
  // Rows that are not there read as nothing.
  EXPECT_EQ(host.late().Get("BillID", 99999).Long(), 0);
  EXPECT_EQ(host.late().Get("BillName", 99999).Text(), "");
  LONG id = 7;
  EXPECT_EQ(host->get_BillID(3, &id), S_OK);
  EXPECT_EQ(id, 1003);
  EXPECT_EQ(host->get_BillID(3, nullptr), E_POINTER);
  EXPECT_EQ(host->get_BillName(3, nullptr), E_POINTER);
  EXPECT_EQ(host->get_Flag(3, nullptr), E_POINTER);
  // A fixed row, and one beyond the last, change nothing.
  EXPECT_TRUE(host.late().Put("Row", 0).Succeeded());
  EXPECT_TRUE(host.late().Put("Row", 16).Succeeded());
  EXPECT_EQ(host.late().Get("Row").Long(), 4);
}

TEST(Members, AnswerToTheOtherMethods) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  EXPECT_FALSE(host.late().Call("IsRangeSelected").Truth());
  EXPECT_TRUE(host.grid().Call("Select", 3, 2, 5, 4).Succeeded());
  EXPECT_TRUE(host.late().Call("IsRangeSelected").Truth());
  EXPECT_FALSE(host.late().Call("Find", "入库单 3").Truth());
  EXPECT_TRUE(host.late().Call("Find", "入库单 3", 4).Succeeded());
  EXPECT_TRUE(host.late().Call("Prompt", "").Succeeded());
  EXPECT_TRUE(host.late().Call("DefaultFormat").Succeeded());
  EXPECT_NE(host.late().Call("Statistics").Text(), "");
  EXPECT_EQ(host->Load(1, -1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(host->Find(nullptr, -1, nullptr), E_POINTER);
  EXPECT_EQ(host->IsRangeSelected(nullptr), E_POINTER);
  EXPECT_EQ(host->Statistics(nullptr), E_POINTER);
  EXPECT_EQ(host->get_Grid(nullptr), E_POINTER);
  EXPECT_EQ(host->Prompt(nullptr), S_OK);
}

}  // namespace
}  // namespace stockbook::com
