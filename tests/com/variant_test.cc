// SPDX-License-Identifier: MIT
// Values and texts between the host and the control.
#include "com/automation/variant.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <limits>

#include "com/automation/automation_error.h"
#include "com/automation/text.h"
#include "com/late.h"

namespace stockbook::com {
namespace {

constexpr HRESULT kOtherType = static_cast<HRESULT>(0x800A000D);

template <typename Convert>
HRESULT FailureOf(Convert convert) {
  try {
    convert();
  } catch (const AutomationError& error) {
    EXPECT_NE(std::string(error.what()), "");
    return error.code();
  }
  return S_OK;
}

Variant DateVariant(DATE date) {
  Variant value;
  value.get().vt = VT_DATE;
  value.get().date = date;
  return value;
}

TEST(Variants, GiveValuesBackAsTheyWere) {
  const base::Value values[] = {
      {},
      base::Value(std::string("甲\xF0\xA0\xAE\xB7")),
      base::Value(std::string()),
      base::Value(0.1),
      base::Value(base::Money::FromUnits(std::numeric_limits<int64_t>::max())),
      base::Value(base::Money::FromUnits(-1)),
      base::Value(*base::Date::Parse("2005-03-08")),
      base::Value(*base::Date::Parse("1850-01-01")),
      base::Value(int64_t{-2147483648}),
  };
  for (const base::Value& value : values) EXPECT_TRUE(ToValue(Variant(value).get()) == value);
  // Scripts know no whole numbers of 64 bits.
  EXPECT_EQ(Variant(base::Value(int64_t{2147483648})).get().vt, VT_R8);
}

TEST(Variants, CountTheTimeOfADayForwardFromEveryDay) {
  for (const int64_t seconds : {0LL, 43200LL, -1LL, -43200LL, -86400LL, -86401LL, -1000000007LL, 3000000001LL}) {
    SCOPED_TRACE(seconds);
    const base::Date date = base::Date::FromSeconds(seconds);
    EXPECT_EQ(DateOfAutomation(ToAutomationDate(date)).seconds(), seconds);
  }
  // Six in the evening of the day before the first one.
  EXPECT_EQ(ToAutomationDate(base::Date::FromSeconds(-21600)), -1.75);
  EXPECT_EQ(DateOfAutomation(-0.5).seconds(), 43200);
  EXPECT_EQ(FailureOf([] { DateOfAutomation(std::numeric_limits<double>::quiet_NaN()); }), CTL_E_OVERFLOW);
  EXPECT_EQ(FailureOf([] { ToValue(DateVariant(1e300).get()); }), CTL_E_OVERFLOW);
}

TEST(Variants, ConvertByTheRulesOfAutomation) {
  EXPECT_EQ(ToLong(Variant(2.5).get()), 2);
  EXPECT_EQ(ToLong(Variant(3.5).get()), 4);
  EXPECT_EQ(ToLong(Variant(std::string_view(" 12 ")).get()), 12);
  EXPECT_EQ(ToLong(Variant(true).get()), -1);
  EXPECT_EQ(ToLong(Variant().get()), 0);
  EXPECT_TRUE(ToBoolean(Variant(int32_t{7}).get()));
  EXPECT_EQ(ToText(Variant(true).get()), "True");
  EXPECT_EQ(ToBits(Variant(int32_t{-1}).get()), 0xFFFFFFFFu);
  EXPECT_EQ(ToBits(Variant(4294967295.0).get()), 0xFFFFFFFFu);
  EXPECT_EQ(FailureOf([] { ToBits(Variant(4294967296.0).get()); }), CTL_E_OVERFLOW);
  EXPECT_EQ(FailureOf([] { ToBits(Variant(-2147483649.0).get()); }), CTL_E_OVERFLOW);
  EXPECT_EQ(FailureOf([] { ToShort(Variant(int32_t{32768}).get()); }), CTL_E_OVERFLOW);
  EXPECT_EQ(FailureOf([] { ToLong(Variant(std::string_view("zwölf")).get()); }), kOtherType);
  EXPECT_EQ(FailureOf([] { ToSingle(Variant(1e300).get()); }), CTL_E_OVERFLOW);
  EXPECT_EQ(FailureOf([] { ToDispatch(Variant(int32_t{1}).get()); }), kOtherType);
  EXPECT_FALSE(ToDispatch(Variant(static_cast<IDispatch*>(nullptr)).get()));
  EXPECT_TRUE(IsMissing(testing::Missing().get()));
  EXPECT_FALSE(IsMissing(Variant().get()));
}

TEST(Variants, HoldTheObjectsThatTheyAreGivenAndNoLonger) {
  const auto picture = testing::NewPicture(4);
  const ULONG before = testing::ReferencesOf(picture.get());
  {
    Variant held(static_cast<IDispatch*>(picture.get()));
    Variant copy = Variant::CopyOf(held.get());
    Variant moved = std::move(held);
    EXPECT_EQ(testing::ReferencesOf(picture.get()), before + 2);
    EXPECT_EQ(ToDispatch(moved.get()).get(), static_cast<IDispatch*>(picture.get()));
    VARIANT detached = moved.Detach();
    EXPECT_EQ(moved.get().vt, VT_EMPTY);
    VariantClear(&detached);
    copy.Put();
    EXPECT_EQ(testing::ReferencesOf(picture.get()), before);
  }
  EXPECT_EQ(testing::ReferencesOf(picture.get()), before);
}

TEST(Texts, ReplaceWhatIsMalformedOnEitherSide) {
  EXPECT_EQ(ToWide("a\xFF"
                   "b"),
            L"a\xFFFD"
            L"b");
  EXPECT_EQ(ToWide("\xED\xA0\x80").find(L'\xD800'), std::wstring::npos) << "half a pair, written in bytes";
  EXPECT_EQ(FromWide(L"a\xD83D"
                     L"b"),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(FromWide(L"\xDE00"), "\xEF\xBF\xBD");
  EXPECT_EQ(FromWide(L"\xD842\xDFB7"), "\xF0\xA0\xAE\xB7");
  EXPECT_EQ(ToWide(""), L"");
  EXPECT_EQ(FromBstr(nullptr), "");
  // Nothing ends before its end.
  EXPECT_EQ(SysStringLen(Bstr(std::string_view("a\0b", 3)).get()), 3u);
  EXPECT_EQ(FromWide({L"a\0b", 3}),
            "a\xEF\xBF\xBD"
            "b");
}

}  // namespace
}  // namespace stockbook::com
