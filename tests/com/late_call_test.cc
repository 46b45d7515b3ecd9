// SPDX-License-Identifier: MIT
// Late-bound calls as scripts make them.
#include <gtest/gtest.h>

#include <olectl.h>

#include "com/automation/text.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;
using testing::NewControl;
using testing::NewPicture;

constexpr HRESULT kNoSuchElement = static_cast<HRESULT>(0x800A0009);

// Puts the value by these flags, as it stands.
HRESULT PutBy(IDispatch* object, const char* name, int flags, VARIANT value) {
  std::wstring wide = ToWide(name);
  LPOLESTR names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return DISP_E_UNKNOWNNAME;
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{&value, &put, 1, 1};
  return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, static_cast<WORD>(flags), &parameters, nullptr, nullptr,
                        nullptr);
}

VARIANT InAVariable(VARIANT& variable) {
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = &variable;
  return reference;
}

TEST(LateCalls, TakeNamedArguments) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  std::wstring load = L"Load";
  std::wstring second_key = L"rdpID";
  LPOLESTR names[] = {load.data(), second_key.data()};
  DISPID ids[2] = {};
  ASSERT_EQ(host->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
  Variant depot{int32_t{3}};
  DISPPARAMS parameters{&depot.get(), &ids[1], 1, 1};
  Variant loaded;
  EXPECT_EQ(
      host->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, loaded.Put(), nullptr, nullptr),
      S_OK);
  EXPECT_TRUE(ToBoolean(loaded.get()));
  EXPECT_EQ(host.late().Get("KeyID").Long(), 1);
  EXPECT_EQ(host.late().Get("dpID").Long(), 3);
}

TEST(LateCalls, AssignObjectsWithoutSet) {
  const auto control = NewControl();
  const Late late(control.get());
  const auto picture = NewPicture(6);
  Variant object{static_cast<IDispatch*>(picture.get())};
  for (const int flags : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF}) {
    EXPECT_EQ(PutBy(control.get(), "RevPicture", flags, object.get()), S_OK);
    EXPECT_EQ(late.Get("RevPicture").Object().get(), picture.get());
    EXPECT_EQ(PutBy(control.get(), "IssPicture", flags, InAVariable(object.get())), S_OK);
    EXPECT_EQ(late.Get("IssPicture").Object().get(), picture.get());
    EXPECT_TRUE(late.PutRef("RevPicture", nullptr).Succeeded());
  }
  VARIANT null{};
  null.vt = VT_NULL;
  EXPECT_EQ(PutBy(control.get(), "IssPicture", DISPATCH_PROPERTYPUT, null), S_OK);
  EXPECT_FALSE(late.Get("IssPicture").Object());
  // What cannot be written stays so.
  EXPECT_EQ(PutBy(control.get(), "Grid", DISPATCH_PROPERTYPUT, object.get()), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(PutBy(control.get(), "IssPicture", DISPATCH_PROPERTYPUT, Variant(int32_t{5}).get()), DISP_E_MEMBERNOTFOUND);
}

TEST(LateCalls, TakeArraysByValueAndFromVariables) {
  const auto control = NewControl();
  for (const ULONG elements : {0u, 1u}) {
    Variant array;
    array.get().vt = VT_ARRAY | VT_VARIANT;
    array.get().parray = SafeArrayCreateVector(VT_VARIANT, 0, elements);
    VARIANT by_reference{};
    by_reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    by_reference.pparray = &array.get().parray;
    const HRESULT expected = elements == 0 ? kNoSuchElement : S_OK;
    for (VARIANT given : {array.get(), InAVariable(array.get()), by_reference, InAVariable(by_reference)}) {
      SCOPED_TRACE(given.vt);
      Variant name{std::string_view("ColChanged")};
      VARIANT arguments[] = {given, name.get()};
      DISPPARAMS parameters{arguments, nullptr, 2, 0};
      std::wstring wide = L"DoCommand";
      LPOLESTR names[] = {wide.data()};
      DISPID id = DISPID_UNKNOWN;
      ASSERT_EQ(control->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
      Variant result;
      EXCEPINFO exception{};
      const HRESULT done = control->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                           &result.get(), &exception, nullptr);
      EXPECT_EQ(done == DISP_E_EXCEPTION ? exception.scode : done, expected);
      EXPECT_EQ(result.get().vt, VT_EMPTY);
      SysFreeString(exception.bstrSource);
      SysFreeString(exception.bstrDescription);
      SysFreeString(exception.bstrHelpFile);
    }
  }
}

TEST(LateCalls, KnowColoursAsSignedNumbers) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const Late late = host.late();
  const int highlight = static_cast<int>(0x80000000u | COLOR_HIGHLIGHT);
  const auto shown = static_cast<int32_t>(GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(late.Get("BackColor").value.get().vt, VT_I4);
  EXPECT_TRUE(late.Put("BackColor", highlight).Succeeded());
  EXPECT_EQ(late.Get("BackColor").Long(), shown);
  EXPECT_TRUE(late.Put("ForeColor", 2147483648.0 + COLOR_HIGHLIGHT).Succeeded());
  EXPECT_EQ(late.Get("ForeColor").Long(), shown);
  const Late grid = host.grid();
  EXPECT_TRUE(grid.Put("GridColor", highlight).Succeeded());
  EXPECT_EQ(grid.Get("GridColor").Long(), shown);
  EXPECT_TRUE(grid.Put("BackColorBkg", 2147483648.0 + COLOR_HIGHLIGHT).Succeeded());
  EXPECT_EQ(grid.Get("BackColorBkg").Long(), shown);
  EXPECT_TRUE(grid.Put("CellForeColor", 0, 1, highlight).Succeeded());
  EXPECT_EQ(grid.Get("CellForeColor", 0, 1).Long(), shown);
  // Numbers that are too small stay too small.
  EXPECT_EQ(late.Put("BorderWidth", -70000).code, DISP_E_OVERFLOW);
  EXPECT_EQ(grid.Put("GridColor", -1e12).code, CTL_E_OVERFLOW);
}

TEST(LateCalls, FollowReferences) {
  const auto control = NewControl();
  const Late late(control.get());
  Variant number{int32_t{42}};
  EXPECT_EQ(PutBy(control.get(), "KeyID", DISPATCH_PROPERTYPUT, InAVariable(number.get())), S_OK);
  EXPECT_EQ(late.Get("KeyID").Long(), 42);
  VARIANT by_reference{};
  by_reference.vt = VT_BYREF | VT_I4;
  by_reference.plVal = &number.get().lVal;
  number.get().lVal = 43;
  EXPECT_EQ(PutBy(control.get(), "KeyID", DISPATCH_PROPERTYPUT, by_reference), S_OK);
  EXPECT_EQ(late.Get("KeyID").Long(), 43);
  const Late grid(late.Get("Grid").Object().get());
  Variant row{int32_t{0}};
  std::vector<Variant> arguments(1);
  arguments[0].get() = InAVariable(row.get());
  EXPECT_TRUE(grid.Invoke("RowHeight", DISPATCH_PROPERTYGET, std::move(arguments)).Succeeded());
}

TEST(LateCalls, RefuseArgumentsThatAreNotThere) {
  const auto control = NewControl();
  const auto grid = Late(control.get()).Get("Grid").Object();
  DISPPARAMS parameters{nullptr, nullptr, 1, 0};
  EXPECT_EQ(control->Invoke(88, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), E_INVALIDARG);
  EXPECT_EQ(grid->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), E_INVALIDARG);
  // One that is named, by no list of names; and more names than arguments.
  Variant number{int32_t{5}};
  parameters = {&number.get(), nullptr, 1, 1};
  EXPECT_EQ(control->Invoke(10, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr),
            E_INVALIDARG);
  EXPECT_EQ(grid->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr), E_INVALIDARG);
  DISPID names[] = {DISPID_PROPERTYPUT, 0};
  parameters = {&number.get(), names, 1, 2};
  EXPECT_EQ(control->Invoke(10, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr),
            E_INVALIDARG);
  // References to nowhere.
  VARIANT nowhere{};
  VARIANT variable = InAVariable(nowhere);
  parameters = {&variable, names, 1, 1};
  for (const int type : {VT_BYREF | VT_I4, VT_BYREF | VT_VARIANT, VT_BYREF | VT_ARRAY | VT_VARIANT}) {
    nowhere.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(control->Invoke(10, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(grid->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr), E_INVALIDARG);
  }
  LPOLESTR nameless[] = {nullptr};
  DISPID id = 0;
  EXPECT_EQ(control->GetIDsOfNames(IID_NULL, nameless, 1, 0, &id), E_POINTER);
  EXPECT_EQ(grid->GetIDsOfNames(IID_NULL, nameless, 1, 0, &id), DISP_E_UNKNOWNNAME);
}

}  // namespace
}  // namespace stockbook::com
