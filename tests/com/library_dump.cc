// SPDX-License-Identifier: MIT
#include "com/library_dump.h"

#include <array>

#include "com/automation/text.h"

namespace stockbook::testing {
namespace {

using com::Bstr;
using com::ComPtr;

std::string NameOf(ITypeInfo& type) {
  Bstr name;
  type.GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr);
  return name.Text();
}

std::string TypeText(ITypeInfo& type, const TYPEDESC& description) {
  switch (description.vt) {
    case VT_PTR:
      return TypeText(type, *description.lptdesc) + "*";
    case VT_SAFEARRAY:
      return "array of " + TypeText(type, *description.lptdesc);
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> named;
      type.GetRefTypeInfo(description.hreftype, named.PutTyped());
      return named ? NameOf(*named) : "";
    }
    case VT_I2:
      return "short";
    case VT_I4:
      return "long";
    case VT_R4:
      return "float";
    case VT_BOOL:
      return "boolean";
    case VT_BSTR:
      return "string";
    case VT_VARIANT:
      return "variant";
    case VT_DISPATCH:
      return "object";
    case VT_HRESULT:
      return "result";
    case VT_VOID:
      return "nothing";
    default:
      return "type " + std::to_string(description.vt);
  }
}

std::string DefaultText(const PARAMDESC& parameter) {
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  if (value.vt == VT_I4) return std::to_string(value.lVal);
  if (value.vt == VT_BSTR) return "\"" + com::FromBstr(value.bstrVal) + "\"";
  return "type " + std::to_string(value.vt);
}

std::string FlagsText(const PARAMDESC& parameter) {
  std::string text;
  const auto add = [&text](const std::string& word) { text += (text.empty() ? "" : ", ") + word; };
  const WORD flags = parameter.wParamFlags;
  if ((flags & PARAMFLAG_FIN) != 0) add("in");
  if ((flags & PARAMFLAG_FOUT) != 0) add("out");
  if ((flags & PARAMFLAG_FRETVAL) != 0) add("retval");
  if ((flags & PARAMFLAG_FOPT) != 0) add("optional");
  if ((flags & PARAMFLAG_FHASDEFAULT) != 0) add("default " + DefaultText(parameter));
  return "[" + text + "] ";
}

const char* KindText(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_FUNC:
      return "call";
    case INVOKE_PROPERTYGET:
      return "get";
    case INVOKE_PROPERTYPUT:
      return "let";
    case INVOKE_PROPERTYPUTREF:
      return "set";
  }
  return "?";
}

std::string FunctionText(ITypeInfo& type, const FUNCDESC& function) {
  std::array<BSTR, 16> names{};
  UINT count = 0;
  type.GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count);
  const auto name = [&](size_t at) { return com::FromBstr(names[at]); };
  std::string text = std::to_string(function.memid) + " @" +
                     std::to_string(static_cast<size_t>(function.oVft) / sizeof(void*)) + " " +
                     KindText(function.invkind) + " " + name(0) + "(";
  const bool writes = function.invkind == INVOKE_PROPERTYPUT || function.invkind == INVOKE_PROPERTYPUTREF;
  for (SHORT at = 0; at < function.cParams; ++at) {
    const ELEMDESC& parameter = function.lprgelemdescParam[at];
    if (at > 0) text += ", ";
    text += FlagsText(parameter.paramdesc) + TypeText(type, parameter.tdesc);
    // The value that is written has no name for a caller.
    if (!writes && (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) == 0)
      text += " " + name(static_cast<size_t>(at) + 1);
  }
  for (BSTR each : names) SysFreeString(each);
  return text + ") " + TypeText(type, function.elemdescFunc.tdesc);
}

// As early binding sees it, where the type is dual.
ComPtr<ITypeInfo> FunctionsOf(const ComPtr<ITypeInfo>& type) {
  ComPtr<ITypeInfo> table;
  HREFTYPE reference = 0;
  if (SUCCEEDED(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
    type->GetRefTypeInfo(reference, table.PutTyped());
  return table ? table : type;
}

WORD FlagsOf(ITypeInfo& type) {
  TYPEATTR* attributes = nullptr;
  if (FAILED(type.GetTypeAttr(&attributes))) return 0;
  const WORD flags = attributes->wTypeFlags;
  type.ReleaseTypeAttr(attributes);
  return flags;
}

std::string TypeFlagsText(WORD flags) {
  std::string text;
  const auto add = [&](WORD flag, const char* word) {
    if ((flags & flag) != 0) text += std::string(" ") + word;
  };
  add(TYPEFLAG_FCANCREATE, "creatable");
  add(TYPEFLAG_FCONTROL, "control");
  add(TYPEFLAG_FLICENSED, "licensed");
  add(TYPEFLAG_FHIDDEN, "hidden");
  add(TYPEFLAG_FDUAL, "dual");
  add(TYPEFLAG_FNONEXTENSIBLE, "nonextensible");
  add(TYPEFLAG_FOLEAUTOMATION, "oleautomation");
  add(TYPEFLAG_FDISPATCHABLE, "dispatchable");
  return text;
}

}  // namespace

ComPtr<ITypeInfo> LibraryDump::Find(const char* name) const {
  for (UINT at = 0; at < library_.GetTypeInfoCount(); ++at) {
    ComPtr<ITypeInfo> type;
    library_.GetTypeInfo(at, type.PutTyped());
    if (type && NameOf(*type) == name) return type;
  }
  return {};
}

std::vector<std::string> LibraryDump::Types() const {
  std::vector<std::string> types;
  for (UINT at = 0; at < library_.GetTypeInfoCount(); ++at) {
    ComPtr<ITypeInfo> type;
    TYPEKIND kind = TKIND_MAX;
    library_.GetTypeInfo(at, type.PutTyped());
    library_.GetTypeInfoType(at, &kind);
    const char* kinds[] = {"enum", "record", "module", "interface", "dispatch", "class", "alias", "union", "?"};
    types.push_back(std::string(kinds[kind]) + " " + NameOf(*type) + TypeFlagsText(FlagsOf(*type)));
  }
  return types;
}

std::vector<std::string> LibraryDump::Functions(const char* interface_name) const {
  std::vector<std::string> functions;
  const ComPtr<ITypeInfo> found = Find(interface_name);
  if (!found) return functions;
  const ComPtr<ITypeInfo> type = FunctionsOf(found);
  FUNCDESC* function = nullptr;
  for (UINT at = 0; SUCCEEDED(type->GetFuncDesc(at, &function)); ++at) {
    functions.push_back(FunctionText(*type, *function));
    type->ReleaseFuncDesc(function);
  }
  return functions;
}

std::vector<std::string> LibraryDump::EnumMembers(const char* name) const {
  std::vector<std::string> members;
  const ComPtr<ITypeInfo> type = Find(name);
  VARDESC* member = nullptr;
  for (UINT at = 0; type && SUCCEEDED(type->GetVarDesc(at, &member)); ++at) {
    Bstr text;
    type->GetDocumentation(member->memid, text.Put(), nullptr, nullptr, nullptr);
    members.push_back(text.Text() + " = " + std::to_string(member->lpvarValue->lVal));
    type->ReleaseVarDesc(member);
  }
  return members;
}

std::vector<std::string> LibraryDump::Interfaces(const char* class_name) const {
  std::vector<std::string> interfaces;
  const ComPtr<ITypeInfo> type = Find(class_name);
  INT flags = 0;
  for (UINT at = 0; type && SUCCEEDED(type->GetImplTypeFlags(at, &flags)); ++at) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> implemented;
    if (SUCCEEDED(type->GetRefTypeOfImplType(at, &reference))) type->GetRefTypeInfo(reference, implemented.PutTyped());
    interfaces.push_back((implemented ? NameOf(*implemented) : "?") +
                         ((flags & IMPLTYPEFLAG_FDEFAULT) != 0 ? " default" : "") +
                         ((flags & IMPLTYPEFLAG_FSOURCE) != 0 ? " source" : ""));
  }
  return interfaces;
}

}  // namespace stockbook::testing
