// SPDX-License-Identifier: MIT
#include "com/member_table.h"

namespace stockbook::testing {
namespace {

constexpr const char* kRow = "[in, optional, default -1] long Row";

// In the interface's order. Access: R reads, W writes, S writes by reference, in the order of the functions.
struct Member {
  const char* name;
  const char* access;
  const char* type;
  const char* argument = "";
};

constexpr Member kProperties[] = {
    {"Conn", "RS", "object"},
    {"JournalType", "WR", "tqJournalTypeContants"},
    {"FmtName", "R", "string"},
    {"AllowQty2", "WR", "boolean"},
    {"AllowInv", "WR", "boolean"},
    {"dpID", "WR", "long"},
    {"dpCode", "WR", "string"},
    {"AccPeriod", "R", "string"},
    {"DepotName", "R", "string"},
    {"KeyID", "WR", "long"},
    {"KeyName", "R", "string"},
    {"ProductNo", "R", "string"},
    {"Model", "R", "string"},
    {"Standard", "R", "string"},
    {"Measure", "R", "string"},
    {"MaterielTitle", "WR", "string"},
    {"SupplierTitle", "WR", "string"},
    {"CustomerTitle", "WR", "string"},
    {"ProjectTitle", "WR", "string"},
    {"Field00", "WR", "string"},
    {"Field01", "WR", "string"},
    {"Field02", "WR", "string"},
    {"Field03", "WR", "string"},
    {"Field04", "WR", "string"},
    {"Field05", "WR", "string"},
    {"Field06", "WR", "string"},
    {"Field10", "WR", "string"},
    {"Field11", "WR", "string"},
    {"Field12", "WR", "string"},
    {"Field13", "WR", "string"},
    {"Field14", "WR", "string"},
    {"Field15", "WR", "string"},
    {"Field16", "WR", "string"},
    {"Caption", "WR", "string"},
    {"FieldsFilter", "WR", "string"},
    {"ColsFilter", "R", "string"},
    {"AccRestrict", "WR", "string"},
    {"PriceFormat", "WR", "string"},
    {"QuantityFormat", "WR", "string"},
    {"AccountFormat", "WR", "string"},
    {"Grid", "R", "object"},
    {"BillID", "R", "long", kRow},
    {"BillName", "R", "string", kRow},
    {"Flag", "R", "short", kRow},
    {"FlagName", "R", "string"},
    {"Row", "WR", "long"},
    {"Rows", "R", "long"},
    {"OutlineColKey", "R", "string"},
    {"RowHeight", "WR", "float"},
    {"RowHeightTitle", "WR", "float"},
    {"RowHeightSum", "WR", "float"},
    {"BackColor", "RW", "OLE_COLOR"},
    {"BackColorBkg", "RW", "OLE_COLOR"},
    {"BackColorFixed", "RW", "OLE_COLOR"},
    {"BackColorFrozen", "RW", "OLE_COLOR"},
    {"BackColorSel", "RW", "OLE_COLOR"},
    {"ForeColor", "RW", "OLE_COLOR"},
    {"ForeColorFixed", "RW", "OLE_COLOR"},
    {"ForeColorFrozen", "RW", "OLE_COLOR"},
    {"ForeColorSel", "RW", "OLE_COLOR"},
    {"GridColor", "RW", "OLE_COLOR"},
    {"GridColorFixed", "RW", "OLE_COLOR"},
    {"GridLines", "RW", "long"},
    {"GridLinesFixed", "RW", "long"},
    {"Outlinebar", "RW", "long"},
    {"RowHeightMin", "RW", "float"},
    {"RowHeightMax", "RW", "float"},
    {"ScrollBars", "RW", "long"},
    {"BillPicture", "RS", "IPictureDisp*"},
    {"BillAuditedPicture", "RS", "IPictureDisp*"},
    {"RevPicture", "RS", "IPictureDisp*"},
    {"RevAuditedPicture", "RS", "IPictureDisp*"},
    {"IssPicture", "RS", "IPictureDisp*"},
    {"IssAuditedPicture", "RS", "IPictureDisp*"},
    {"ShiftPicture", "RS", "IPictureDisp*"},
    {"ShiftAuditedPicture", "RS", "IPictureDisp*"},
    {"NodeClosedPicture", "RS", "IPictureDisp*"},
    {"NodeOpenPicture", "RS", "IPictureDisp*"},
    {"BackColorHot", "RW", "OLE_COLOR"},
    {"ForeColorHot", "RW", "OLE_COLOR"},
    {"TitleBackPicture", "RS", "IPictureDisp*"},
    {"MarkBackPicture", "RS", "IPictureDisp*"},
    {"BorderWidth", "RW", "short"},
    {"ChildSpacing", "RW", "short"},
    {"BorderColor", "RW", "OLE_COLOR"},
    {"SheetBorderColor", "RW", "OLE_COLOR"},
};

struct Method {
  const char* name;
  const char* arguments;
};

constexpr Method kMethods[] = {
    {"Load",
     "[in, optional, default -1] long rKeyID, [in, optional, default -1] long rdpID, "
     "[in, optional, default \"\"] string rdpCode, [out, retval] boolean*"},
    {"Prompt", "[in] string Msg"},
    {"Find", "[in] string rSearchString, [in, optional, default -1] long StartRow, [out, retval] boolean*"},
    {"IsRangeSelected", "[out, retval] boolean*"},
    {"DefaultFormat", ""},
    {"Statistics", "[out, retval] string*"},
    {"DoCommand", "[in] string CmdName, [in, out] array of variant* rParas, [out, retval] variant*"},
};

constexpr Member kFlags[] = {{"AllowView", "RW", "boolean"}, {"AllowPrint", "RW", "boolean"}};

constexpr Method kEvents[] = {
    {"Process", "[in] short Indicator"},
    {"AfterLoaded", ""},
    {"AfterFormatted", ""},
    {"CommandExecute", "[in] string CommandName, [in, out] boolean* Cancel"},
    {"Notify", "[in] string Msg"},
    {"AfterRowChanged", ""},
    {"AfterRangeSelected", ""},
    {"MouseUp", "[in, out] short* Button, [in, out] short* Shift, [in, out] float* X, [in, out] float* Y"},
    {"FindMsg", "[in] string rMsg"},
};

// What every automation interface begins its table of functions with.
constexpr size_t kInherited = 7;

// Writes functions down one by one.
class Writer {
 public:
  explicit Writer(std::vector<std::string>& lines) : lines_(lines) {}

  void Property(const Member& member) {
    ++id_;
    const std::string argument = member.argument;
    const std::string before = argument.empty() ? argument : argument + ", ";
    for (const char* access = member.access; *access != '\0'; ++access) {
      if (*access == 'R') Function("get", member.name, before + "[out, retval] " + member.type + "*");
      if (*access == 'W') Function("let", member.name, before + "[in] " + member.type);
      if (*access == 'S') Function("set", member.name, before + "[in] " + member.type);
    }
  }
  void Call(const Method& method) {
    ++id_;
    Function("call", method.name, method.arguments);
  }

 private:
  void Function(const char* kind, const char* name, const std::string& arguments) {
    lines_.push_back(std::to_string(id_) + " @" + std::to_string(kInherited + lines_.size()) + " " + kind + " " + name +
                     "(" + arguments + ") result");
  }

  std::vector<std::string>& lines_;
  int id_ = 0;
};

}  // namespace

std::vector<std::string> ExpectedMembers() {
  std::vector<std::string> lines;
  Writer writer(lines);
  for (const Member& member : kProperties) writer.Property(member);
  for (const Method& method : kMethods) writer.Call(method);
  for (const Member& member : kFlags) writer.Property(member);
  return lines;
}

std::vector<std::string> ExpectedEvents() {
  std::vector<std::string> lines;
  for (const Method& event : kEvents)
    lines.push_back(std::to_string(lines.size() + 1) + " @0 call " + event.name + "(" + event.arguments + ") nothing");
  return lines;
}

}  // namespace stockbook::testing
