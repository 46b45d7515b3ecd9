// SPDX-License-Identifier: MIT
// What the members of the control refuse, with its number and sentence.
#include <gtest/gtest.h>

#include <olectl.h>

#include "com/automation/text.h"
#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;
using testing::NewControl;

constexpr HRESULT kTypeMismatchNumber = static_cast<HRESULT>(0x800A000D);
constexpr HRESULT kBoundsNumber = static_cast<HRESULT>(0x800A0009);

TEST(Failures, OfASecondKeyBeyondSixteenBitsKeepTheOldOne) {
  const auto control = NewControl();
  const Late late(control.get());
  EXPECT_TRUE(late.Put("dpID", 7).Succeeded());
  const auto refused = late.Put("dpID", 40000);
  EXPECT_EQ(refused.code, CTL_E_OVERFLOW);
  EXPECT_EQ(refused.description.substr(0, 9), "溢出：");
  EXPECT_EQ(control->put_dpID(-32769), CTL_E_OVERFLOW);
  EXPECT_EQ(testing::LastDescription().substr(0, 9), "溢出：");
  EXPECT_EQ(late.Get("dpID").Long(), 7);
}

TEST(Failures, OfARestrictionThatIsNoTruthValueKeepTheOldOne) {
  const auto control = NewControl();
  const Late late(control.get());
  for (const char* text : {"true", "FALSE", "0", "-1", "2.5"}) {
    EXPECT_TRUE(late.Put("AccRestrict", text).Succeeded());
    EXPECT_EQ(late.Get("AccRestrict").Text(), text);
  }
  const auto refused = late.Put("AccRestrict", "vielleicht");
  EXPECT_EQ(refused.code, kTypeMismatchNumber);
  EXPECT_EQ(refused.description, "类型不匹配：AccRestrict 须为 True、False 或数字，收到的是“vielleicht”。");
  EXPECT_EQ(late.Get("AccRestrict").Text(), "2.5");
}

TEST(Failures, OfTheGridCarryANumberAndASentence) {
  const auto control = NewControl();
  const Late late(control.get());
  EXPECT_EQ(late.Put("RowHeight", -5).code, CTL_E_INVALIDPROPERTYVALUE);
  const auto refused = late.Put("GridLines", 8);
  EXPECT_EQ(refused.code, CTL_E_INVALIDPROPERTYVALUE);
  EXPECT_EQ(refused.description, "GridLines 须在 0 与 7 之间，收到的是 8。");
  EXPECT_EQ(control->put_ScrollBars(-1), CTL_E_INVALIDPROPERTYVALUE);
  EXPECT_EQ(control->put_Outlinebar(7), CTL_E_INVALIDPROPERTYVALUE);
}

TEST(Failures, OfLateCallsNameTheirReason) {
  const auto control = NewControl();
  const Late late(control.get());
  EXPECT_EQ(late.Get("NoSuchMember").code, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(late.Put("KeyID", "zwölf").code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late.Put("BorderWidth", 70000).code, DISP_E_OVERFLOW);
  EXPECT_EQ(late.Get("KeyID", 1).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(late.Get("TitleBackPicture", 1).code, DISP_E_BADPARAMCOUNT) << "there is no picture to ask";
  EXPECT_EQ(late.Call("Find", "x", 1, 2).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(late.Call("Prompt").code, DISP_E_BADPARAMCOUNT);
  EXPECT_FALSE(late.Put("Rows", 5).Succeeded());
  EXPECT_EQ(control->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(control->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(control->GetTypeInfo(0, 0, nullptr), E_POINTER);
  EXPECT_EQ(control->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr), E_POINTER);
}

TEST(Failures, OfNullPointersSayWhatIsMissing) {
  const auto control = NewControl();
  EXPECT_EQ(control->get_KeyID(nullptr), E_POINTER);
  EXPECT_EQ(testing::LastDescription().substr(0, 9), "空指针");
  EXPECT_EQ(control->get_Grid(nullptr), E_POINTER);
  EXPECT_EQ(testing::LastDescription().substr(0, 9), "空指针");
  EXPECT_EQ(control.As<IPersistStreamInit>()->Load(nullptr), E_POINTER);
  EXPECT_EQ(testing::LastDescription().substr(0, 9), "空指针");
}

TEST(Failures, AreNotDescribedByAnEarlierOne) {
  const auto control = NewControl();
  EXPECT_EQ(control->put_dpID(40000), CTL_E_OVERFLOW);
  EXPECT_EQ(control->put_dpID(4), S_OK);
  EXPECT_EQ(testing::LastDescription(), "");
}

TEST(Failures, AreDescribedByTheInterfacesThatSaySo) {
  const auto control = NewControl();
  const auto support = control.As<ISupportErrorInfo>();
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__Stockbook), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPoint), S_FALSE);
}

TEST(Failures, OfAPictureThatIsNoneKeepTheOldOne) {
  const auto control = NewControl();
  const auto picture = testing::NewPicture(4);
  EXPECT_EQ(control->putref_BillPicture(picture.get()), S_OK);
  // An object that says it is a picture's dispatch side and is none.
  EXPECT_EQ(control->putref_BillPicture(reinterpret_cast<IPictureDisp*>(control.get())), CTL_E_INVALIDPICTURE);
  ComPtr<IPictureDisp> read;
  EXPECT_EQ(control->get_BillPicture(read.PutTyped()), S_OK);
  EXPECT_EQ(read.get(), picture.get());
}

// An array of variants with these bounds, whose elements are the texts.
SAFEARRAY* TextArrayFrom(LONG first, std::initializer_list<const char*> texts) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, first, static_cast<ULONG>(texts.size()));
  LONG index = first;
  for (const char* text : texts) {
    Variant element{std::string_view(text)};
    SafeArrayPutElement(array, &index, &element.get());
    ++index;
  }
  return array;
}

HRESULT Command(_Stockbook* control, const char* name, SAFEARRAY* parameters) {
  Variant result{int32_t{5}};
  const HRESULT done = control->DoCommand(Bstr(name).get(), &parameters, result.Put());
  EXPECT_EQ(result.get().vt, VT_EMPTY);
  if (parameters != nullptr) SafeArrayDestroy(parameters);
  return done;
}

TEST(Commands, NeedElementZeroForChangedColumns) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  EXPECT_EQ(Command(host.get(), "ColChanged", TextArrayFrom(0, {"Standard"})), S_OK);
  EXPECT_EQ(Command(host.get(), "ColChanged", TextArrayFrom(0, {"Price"})), S_OK);
  EXPECT_EQ(Command(host.get(), "ColChanged", TextArrayFrom(0, {})), kBoundsNumber);
  EXPECT_EQ(testing::LastDescription(), "下标越界：数组中没有这个元素。");
  EXPECT_EQ(Command(host.get(), "ColChanged", TextArrayFrom(1, {"Standard"})), kBoundsNumber);
  EXPECT_EQ(Command(host.get(), "ColChanged", nullptr), kBoundsNumber);
  EXPECT_EQ(Command(host.get(), "colchanged", nullptr), S_OK);
  // Only element 0 is read, so that another one may be anything.
  SAFEARRAY* mixed = TextArrayFrom(0, {"Price", ""});
  LONG second = 1;
  Variant object{static_cast<IDispatch*>(host.get())};
  SafeArrayPutElement(mixed, &second, &object.get());
  EXPECT_EQ(Command(host.get(), "ColChanged", mixed), S_OK);
  EXPECT_EQ(Command(host.get(), "SetColFont", nullptr), S_OK);
  SAFEARRAY* longs = SafeArrayCreateVector(VT_I4, 0, 1);
  EXPECT_EQ(Command(host.get(), "ColChanged", longs), kTypeMismatchNumber);
  Variant result;
  EXPECT_EQ(host->DoCommand(nullptr, nullptr, &result.get()), E_POINTER);
  EXPECT_EQ(host->DoCommand(nullptr, nullptr, nullptr), E_POINTER);
}

TEST(Commands, RewriteProductNamesByLateBinding) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  SAFEARRAY* array = TextArrayFrom(0, {"del"});
  std::vector<Variant> arguments(2);
  arguments[0] = Variant(std::string_view("ColChanged"));
  arguments[1].get().vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
  arguments[1].get().pparray = &array;
  const auto done = host.late().Invoke("DoCommand", DISPATCH_METHOD, std::move(arguments));
  EXPECT_EQ(done.code, S_OK);
  EXPECT_EQ(done.value.get().vt, VT_EMPTY);
  SafeArrayDestroy(array);
}

}  // namespace
}  // namespace stockbook::com
