// SPDX-License-Identifier: MIT
// Every function of the interface, as the type library lists them: called by its place in the table of functions, as
// early-bound hosts do, and by its name.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>

#include "com/automation/text.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;

constexpr LONG kLine = 3;  // a row with a bill

// One function, with the types of its arguments as variants know them.
struct Function {
  DISPID id = 0;
  std::string name;
  INVOKEKIND kind = INVOKE_FUNC;
  ULONG_PTR place = 0;
  std::vector<VARTYPE> types;
  bool gives_result = false;
};

VARTYPE PlainType(ITypeInfo& type, const TYPEDESC& description) {
  if (description.vt == VT_PTR) {
    const VARTYPE target = PlainType(type, *description.lptdesc);
    return target == VT_DISPATCH ? target : static_cast<VARTYPE>(VT_BYREF | target);
  }
  if (description.vt == VT_SAFEARRAY) return VT_ARRAY | VT_VARIANT;
  if (description.vt != VT_USERDEFINED) return description.vt;
  ComPtr<ITypeInfo> named;
  type.GetRefTypeInfo(description.hreftype, named.PutTyped());
  TYPEATTR* facts = nullptr;
  named->GetTypeAttr(&facts);
  const TYPEKIND kind = facts->typekind;
  const VARTYPE alias = facts->tdescAlias.vt;
  named->ReleaseTypeAttr(facts);
  // Pictures are an alias, too.
  if (kind == TKIND_ALIAS && alias != VT_USERDEFINED) return alias;
  return kind == TKIND_ENUM ? VARTYPE{VT_I4} : VARTYPE{VT_DISPATCH};
}

Function Described(ITypeInfo& type, const FUNCDESC& function) {
  Function described{function.memid, "", function.invkind, static_cast<ULONG_PTR>(function.oVft), {}, false};
  Bstr name;
  type.GetDocumentation(function.memid, name.Put(), nullptr, nullptr, nullptr);
  described.name = name.Text();
  for (SHORT at = 0; at < function.cParams; ++at) {
    const ELEMDESC& parameter = function.lprgelemdescParam[at];
    described.types.push_back(PlainType(type, parameter.tdesc));
    described.gives_result = (parameter.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0;
  }
  return described;
}

std::vector<Function> AllFunctions(IDispatch& control) {
  ComPtr<ITypeInfo> late;
  ComPtr<ITypeInfo> table;
  HREFTYPE reference = 0;
  control.GetTypeInfo(0, LOCALE_USER_DEFAULT, late.PutTyped());
  if (late && SUCCEEDED(late->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
    late->GetRefTypeInfo(reference, table.PutTyped());
  std::vector<Function> functions;
  FUNCDESC* function = nullptr;
  for (UINT at = 0; table && SUCCEEDED(table->GetFuncDesc(at, &function)); ++at) {
    functions.push_back(Described(*table, *function));
    table->ReleaseFuncDesc(function);
  }
  return functions;
}

// Calls what stands at the function's place.
HRESULT CallByPlace(IUnknown* control, const Function& function, std::vector<VARIANT> arguments) {
  std::vector<VARIANT*> pointers;
  for (VARIANT& argument : arguments) pointers.push_back(&argument);
  VARIANT result{};
  const HRESULT called = DispCallFunc(control, function.place, CC_STDCALL, VT_I4, static_cast<UINT>(arguments.size()),
                                      const_cast<VARTYPE*>(function.types.data()), pointers.data(), &result);
  return FAILED(called) ? called : result.lVal;
}

// Arguments that mean little: zeros, and one line's row.
std::vector<VARIANT> ZerosFor(const Function& function) {
  std::vector<VARIANT> arguments(function.types.size());
  for (size_t at = 0; at < arguments.size(); ++at) {
    arguments[at] = {};
    arguments[at].vt = function.types[at];
    if (function.types[at] == VT_I4) arguments[at].lVal = kLine;
  }
  return arguments;
}

// What the reader at the place gives, as a variant of its own.
Variant ReadByPlace(IUnknown* control, const Function& reader) {
  const bool is_object = reader.types.back() == VT_DISPATCH || reader.types.back() == (VT_BYREF | VT_DISPATCH);
  Variant value;
  value.get().vt = is_object ? VARTYPE{VT_DISPATCH} : static_cast<VARTYPE>(reader.types.back() & ~VT_BYREF);
  std::vector<VARIANT> arguments = ZerosFor(reader);
  arguments.back().vt = static_cast<VARTYPE>(VT_BYREF | value.get().vt);
  arguments.back().byref = &value.get().llVal;
  Function called = reader;
  called.types.back() = arguments.back().vt;
  EXPECT_EQ(CallByPlace(control, called, arguments), S_OK);
  return value;
}

class EveryMember : public ::testing::Test {
 protected:
  HostedJournal host_{HostedJournal::State::kLoaded};
  std::vector<Function> functions_ = AllFunctions(*host_.get());

  void SetUp() override { ASSERT_EQ(functions_.size(), 167u); }

  testing::LateResult ReadByName(const Function& reader) const {
    return reader.types.size() > 1 ? host_.late().Get(reader.name.c_str(), int{kLine})
                                   : host_.late().Get(reader.name.c_str());
  }
  // The same value, whichever way it was read.
  static void ExpectSame(const VARIANT& by_place, const VARIANT& by_name) {
    SCOPED_TRACE("types " + std::to_string(by_place.vt) + ", " + std::to_string(by_name.vt));
    if (by_place.vt == VT_DISPATCH) {
      EXPECT_EQ(ToDispatch(by_place).As<IUnknown>().get(), ToDispatch(by_name).As<IUnknown>().get());
    } else {
      EXPECT_NO_THROW(EXPECT_EQ(ToText(by_place), ToText(by_name)));
    }
  }
  const Function* Find(const std::string& name, INVOKEKIND kind) const {
    for (const Function& function : functions_)
      if (function.name == name && function.kind == kind) return &function;
    return nullptr;
  }
};

TEST_F(EveryMember, IsReadAtItsPlaceAsByItsName) {
  int readers = 0;
  for (const Function& reader : functions_) {
    if (reader.kind != INVOKE_PROPERTYGET) continue;
    SCOPED_TRACE(reader.name);
    ExpectSame(ReadByPlace(host_.get(), reader).get(), ReadByName(reader).value.get());
    ++readers;
  }
  EXPECT_EQ(readers, 88);
}

TEST_F(EveryMember, RefusesANullPlaceForItsResultWithASentence) {
  int refused = 0;
  for (const Function& function : functions_) {
    if (!function.gives_result) continue;
    SCOPED_TRACE(function.name);
    SetErrorInfo(0, nullptr);
    std::vector<VARIANT> arguments = ZerosFor(function);
    Function called = function;
    arguments.back().vt = called.types.back() = VT_BYREF | VT_I4;
    arguments.back().byref = nullptr;
    EXPECT_EQ(CallByPlace(host_.get(), called, arguments), E_POINTER);
    EXPECT_EQ(testing::LastDescription().substr(0, 9), "空指针");
    ++refused;
  }
  EXPECT_EQ(refused, 93);
}

// Two values that every property of the type takes, the second another than the first.
Variant ValueFor(VARTYPE type, int which) {
  switch (type) {
    case VT_BSTR:
      return Variant(std::string_view(which == 0 ? "1" : "2"));
    case VT_BOOL:
      return Variant(which == 0);
    case VT_R4:
      return Variant(which == 0 ? 300.0F : 450.0F);
    case VT_I2:
      return Variant(static_cast<int16_t>(which + 1));
    default:
      return Variant(int32_t{which + 1});
  }
}

TEST_F(EveryMember, IsWrittenAtItsPlaceAndByItsName) {
  int writers = 0;
  for (const Function& writer : functions_) {
    if (writer.kind != INVOKE_PROPERTYPUT && writer.kind != INVOKE_PROPERTYPUTREF) continue;
    SCOPED_TRACE(writer.name);
    const Function* const reader = Find(writer.name, INVOKE_PROPERTYGET);
    ASSERT_NE(reader, nullptr);
    const bool is_object = writer.kind == INVOKE_PROPERTYPUTREF;
    const auto picture = testing::NewPicture(5);
    IDispatch* const object = writer.name == "Conn" ? host_.connection() : static_cast<IDispatch*>(picture.get());
    Variant first = is_object ? Variant(object) : ValueFor(writer.types[0], 0);
    first.get().vt = writer.types[0];
    EXPECT_EQ(CallByPlace(host_.get(), writer, {first.get()}), S_OK);
    ExpectSame(first.get(), ReadByName(*reader).value.get());
    Variant second = is_object ? Variant(static_cast<IDispatch*>(nullptr)) : ValueFor(writer.types[0], 1);
    std::vector<Variant> arguments;
    arguments.push_back(Variant::CopyOf(second.get()));
    EXPECT_EQ(host_.late().Invoke(writer.name.c_str(), static_cast<WORD>(writer.kind), std::move(arguments)).code,
              S_OK);
    ExpectSame(second.get(), ReadByPlace(host_.get(), *reader).get());
    ++writers;
  }
  EXPECT_EQ(writers, 72);
}

Variant OfType(VARTYPE type, uint64_t bits) {
  Variant odd;
  odd.get().vt = type;
  odd.get().ullVal = bits;
  return odd;
}

// Whatever a host in any language might hand over by mistake.
std::vector<Variant> OddValues(IDispatch* object) {
  std::vector<Variant> values;
  for (const int32_t number :
       {-1, 0, 1, 40000, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()})
    values.push_back(Variant(number));
  for (const double number :
       {-0.5, 1e308, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    values.push_back(Variant(number));
    values.push_back(Variant(static_cast<float>(number)));
  }
  for (const char* text : {"", "x", "1", "9999999999999999999999"}) values.push_back(Variant(std::string_view(text)));
  values.push_back(Variant(std::string_view(std::string(70000, 'w'))));
  values.push_back(Variant(true));
  values.push_back(Variant(object));
  values.push_back(testing::Missing());
  // The highest number of a type, nothing, and a reference to nowhere.
  for (const VARTYPE type : {VT_CY, VT_DATE, VT_DECIMAL, VT_I1, VT_UI2, VT_UI8, VT_INT, VT_UINT})
    values.push_back(OfType(type, 0x7FFFFFFFFFFFFFFF));
  for (const VARTYPE type : {VT_EMPTY, VT_NULL, VT_DISPATCH, VT_UNKNOWN, VT_BSTR, VT_ERROR})
    values.push_back(OfType(type, 0));
  for (const int type : std::initializer_list<int>{VT_I2, VT_I4, VT_R4, VT_BSTR, VT_BOOL, VT_DISPATCH, VT_VARIANT,
                                                   VT_ARRAY | VT_VARIANT, VT_UI4})
    values.push_back(OfType(static_cast<VARTYPE>(VT_BYREF | type), 0));
  values.push_back(OfType(VT_ARRAY | VT_VARIANT, 0));
  values.push_back(OfType(VT_ARRAY | VT_I4, reinterpret_cast<uintptr_t>(SafeArrayCreateVector(VT_I4, 0, 2))));
  return values;
}

// Calls a member with so many of the value as every argument. A failure gives no result.
void CallWith(IDispatch* object, DISPID id, int flags, const Variant& value, UINT count) {
  std::vector<VARIANT> arguments(count, value.get());
  DISPID put = DISPID_PROPERTYPUT;
  const bool writes = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0 && count > 0;
  DISPPARAMS parameters{arguments.data(), writes ? &put : nullptr, count, writes ? 1u : 0u};
  Variant result;
  EXCEPINFO exception{};
  const HRESULT done = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(flags), &parameters,
                                      &result.get(), &exception, nullptr);
  EXPECT_TRUE(SUCCEEDED(done) || result.get().vt == VT_EMPTY);
  EXPECT_TRUE(done != DISP_E_EXCEPTION || SysStringLen(exception.bstrDescription) > 0);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
}

void CallOddly(IDispatch* object, DISPID last) {
  const std::vector<Variant> values = OddValues(object);
  for (DISPID id = -1; id <= last; ++id) {
    for (const int flags : {DISPATCH_METHOD | DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
      for (size_t at = 0; at < values.size(); ++at) {
        SCOPED_TRACE("member " + std::to_string(id) + ", value " + std::to_string(at));
        for (UINT count = at == 0 ? 0 : 1; count < 5; ++count) CallWith(object, id, flags, values[at], count);
      }
    }
  }
}

TEST_F(EveryMember, OutlivesWhateverItIsCalledWith) {
  CallOddly(host_.get(), functions_.back().id + 1);
  EXPECT_TRUE(host_.late().PutRef("Conn", host_.connection()).Succeeded());
  EXPECT_TRUE(host_.late().Put("dpCode", "").Succeeded());
  EXPECT_TRUE(host_.late().Put("JournalType", 0).Succeeded());
  EXPECT_TRUE(host_.Load());
}

TEST_F(EveryMember, OfTheGridOutlivesWhateverItIsCalledWith) {
  const auto grid = host_.late().Get("Grid").Object();
  constexpr DISPID kMore = 120;
  CallOddly(grid.get(), kMore);
  EXPECT_TRUE(host_.Load());
}

}  // namespace
}  // namespace stockbook::com
