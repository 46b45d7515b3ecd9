// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

// Hosts bind to the members by their order, so it is part of the interface.
namespace stockbook::control {
namespace {

std::string ReadSource(const std::string& path) {
  std::ifstream file(std::string(STOCKBOOK_SOURCE_DIR) + "/include/stockbook/" + path, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

void ExpectInOrder(const std::string& source, const std::string& begin, const std::vector<std::string>& members) {
  size_t at = source.find(begin);
  ASSERT_NE(at, std::string::npos);
  for (const std::string& member : members) {
    const size_t found = source.find(" " + member + "(", at);
    const size_t alone = std::min(found, source.find("& " + member + "(", at));
    ASSERT_NE(alone, std::string::npos) << member << " is missing, or stands before the member that it follows";
    at = alone + 1;
  }
}

TEST(MemberOrder, OfThePublicInterfaceIsFixed) {
  ExpectInOrder(ReadSource("control/stockbook.h"), "class STOCKBOOK_API Stockbook {",
                {"Conn",
                 "SetConn",
                 "SetJournalType",
                 "JournalType",
                 "FmtName",
                 "SetAllowQty2",
                 "AllowQty2",
                 "SetAllowInv",
                 "AllowInv",
                 "SetdpID",
                 "dpID",
                 "SetdpCode",
                 "dpCode",
                 "AccPeriod",
                 "DepotName",
                 "SetKeyID",
                 "KeyID",
                 "KeyName",
                 "ProductNo",
                 "Model",
                 "Standard",
                 "Measure",
                 "SetMaterielTitle",
                 "MaterielTitle",
                 "SetSupplierTitle",
                 "SupplierTitle",
                 "SetCustomerTitle",
                 "CustomerTitle",
                 "SetProjectTitle",
                 "ProjectTitle",
                 "SetField00",
                 "Field00",
                 "SetField01",
                 "Field01",
                 "SetField02",
                 "Field02",
                 "SetField03",
                 "Field03",
                 "SetField04",
                 "Field04",
                 "SetField05",
                 "Field05",
                 "SetField06",
                 "Field06",
                 "SetField10",
                 "Field10",
                 "SetField11",
                 "Field11",
                 "SetField12",
                 "Field12",
                 "SetField13",
                 "Field13",
                 "SetField14",
                 "Field14",
                 "SetField15",
                 "Field15",
                 "SetField16",
                 "Field16",
                 "SetCaption",
                 "Caption",
                 "SetFieldsFilter",
                 "FieldsFilter",
                 "ColsFilter",
                 "SetAccRestrict",
                 "AccRestrict",
                 "SetPriceFormat",
                 "PriceFormat",
                 "SetQuantityFormat",
                 "QuantityFormat",
                 "SetAccountFormat",
                 "AccountFormat",
                 "Grid",
                 "BillID",
                 "BillName",
                 "Flag",
                 "FlagName",
                 "SetRow",
                 "Row",
                 "Rows",
                 "OutlineColKey",
                 "SetRowHeight",
                 "RowHeight",
                 "SetRowHeightTitle",
                 "RowHeightTitle",
                 "SetRowHeightSum",
                 "RowHeightSum",
                 "SetBackColor",
                 "BackColor",
                 "SetBackColorBkg",
                 "BackColorBkg",
                 "SetBackColorFixed",
                 "BackColorFixed",
                 "SetBackColorFrozen",
                 "BackColorFrozen",
                 "SetBackColorSel",
                 "BackColorSel",
                 "SetForeColor",
                 "ForeColor",
                 "SetForeColorFixed",
                 "ForeColorFixed",
                 "SetForeColorFrozen",
                 "ForeColorFrozen",
                 "SetForeColorSel",
                 "ForeColorSel",
                 "SetGridColor",
                 "GridColor",
                 "SetGridColorFixed",
                 "GridColorFixed",
                 "SetGridLines",
                 "GridLines",
                 "SetGridLinesFixed",
                 "GridLinesFixed",
                 "SetOutlinebar",
                 "Outlinebar",
                 "SetRowHeightMin",
                 "RowHeightMin",
                 "SetRowHeightMax",
                 "RowHeightMax",
                 "SetScrollBars",
                 "ScrollBars",
                 "SetBillPicture",
                 "BillPicture",
                 "SetBillAuditedPicture",
                 "BillAuditedPicture",
                 "SetRevPicture",
                 "RevPicture",
                 "SetRevAuditedPicture",
                 "RevAuditedPicture",
                 "SetIssPicture",
                 "IssPicture",
                 "SetIssAuditedPicture",
                 "IssAuditedPicture",
                 "SetShiftPicture",
                 "ShiftPicture",
                 "SetShiftAuditedPicture",
                 "ShiftAuditedPicture",
                 "SetNodeClosedPicture",
                 "NodeClosedPicture",
                 "SetNodeOpenPicture",
                 "NodeOpenPicture",
                 "SetBackColorHot",
                 "BackColorHot",
                 "SetForeColorHot",
                 "ForeColorHot",
                 "SetTitleBackPicture",
                 "TitleBackPicture",
                 "SetMarkBackPicture",
                 "MarkBackPicture",
                 "SetBorderWidth",
                 "BorderWidth",
                 "SetChildSpacing",
                 "ChildSpacing",
                 "SetBorderColor",
                 "BorderColor",
                 "SetSheetBorderColor",
                 "SheetBorderColor",
                 "Load",
                 "Prompt",
                 "Find",
                 "IsRangeSelected",
                 "DefaultFormat",
                 "Statistics",
                 "DoCommand",
                 "AllowView",
                 "SetAllowView",
                 "AllowPrint",
                 "SetAllowPrint"});
}

TEST(MemberOrder, OfTheEventsIsFixed) {
  ExpectInOrder(ReadSource("interaction/event_listener.h"), "class STOCKBOOK_API EventListener",
                {"Process", "AfterLoaded", "AfterFormatted", "CommandExecute", "Notify", "AfterRowChanged",
                 "AfterRangeSelected", "MouseUp", "FindMsg"});
}

TEST(MemberOrder, OfTheJournalTypesIsFixed) {
  const std::string source = ReadSource("base/journal_type.h");
  size_t at = source.find("enum tqJournalTypeContants");
  for (const char* member :
       {"MaterialJournal = 0", "SupplierJournal = 1", "CustomerJournal = 2", "ProjectJournal = 3"}) {
    at = source.find(member, at);
    ASSERT_NE(at, std::string::npos) << member;
  }
}

}  // namespace
}  // namespace stockbook::control
