// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "base/number.h"
#include "com/ado/ado_connection.h"
#include "com/ado_double/ado_double.h"

namespace stockbook::com {
namespace {

using base::Money;
using base::Value;
using testing::AdoLog;
using testing::AdoManner;
using testing::MadeRows;

template <typename Member, typename Number>
Variant Made(VARTYPE type, Member VARIANT::*member, Number number) {
  Variant variant;
  variant.get().vt = type;
  variant.get().*member = static_cast<Member>(number);
  return variant;
}

// A row of one value, as it is: CopyOf would follow references.
class OneValue : public testing::AdoRows {
 public:
  explicit OneValue(const VARIANT& value) : AdoRows({"it"}), value_(value) {}
  size_t Count() const override { return 1; }
  Variant At(size_t, size_t) const override {
    VARIANT source = value_;
    Variant copy;
    VariantCopy(copy.Put(), &source);
    return copy;
  }

 private:
  const VARIANT& value_;
};

// The core's value for one of automation's.
Value Read(const VARIANT& value, AdoManner::Fetch fetch) {
  AdoLog log;
  AdoManner manner;
  manner.fetch = fetch;
  const auto rows = std::make_shared<OneValue>(value);
  const auto object = testing::MakeAdoDouble(
      log, "", [&](const std::string&) { return rows; }, manner);
  return OpenAdoConnection(object.get())->Execute("Select 1").FieldValue("it");
}

Value Read(const VARIANT& value) {
  const Value in_portions = Read(value, AdoManner::Fetch::kPortions);
  EXPECT_EQ(in_portions, Read(value, AdoManner::Fetch::kRowByRow));
  return in_portions;
}

Value ReadCurrency(int64_t units) {
  Variant variant;
  variant.get().vt = VT_CY;
  variant.get().cyVal.int64 = units;
  return Read(variant.get());
}

Value ReadText(std::wstring_view wide) {
  Variant variant;
  variant.get().vt = VT_BSTR;
  variant.get().bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  return Read(variant.get());
}

Value ReadDate(DATE date) { return Read(Made(VT_DATE, &VARIANT::date, date).get()); }

struct DecimalParts {
  uint32_t high = 0;
  uint64_t low = 0;
  int scale = 0;
  bool negative = false;
};

Value ReadDecimal(const DecimalParts& parts) {
  Variant variant;
  DECIMAL& decimal = variant.get().decVal;
  decimal.Hi32 = parts.high;
  decimal.Lo64 = parts.low;
  decimal.scale = static_cast<BYTE>(parts.scale);
  decimal.sign = parts.negative ? DECIMAL_NEG : 0;
  variant.get().vt = VT_DECIMAL;
  return Read(variant.get());
}

Value At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Value(*base::Date::FromParts({year, month, day, hour, minute, second}));
}

TEST(AdoValues, KeepWholeNumbersOfEverySize) {
  EXPECT_EQ(Read(Made(VT_I1, &VARIANT::cVal, -128).get()), Value(int64_t{-128}));
  EXPECT_EQ(Read(Made(VT_UI1, &VARIANT::bVal, 255).get()), Value(int64_t{255}));
  EXPECT_EQ(Read(Made(VT_I2, &VARIANT::iVal, -32768).get()), Value(int64_t{-32768}));
  EXPECT_EQ(Read(Made(VT_UI2, &VARIANT::uiVal, 65535).get()), Value(int64_t{65535}));
  EXPECT_EQ(Read(Made(VT_I4, &VARIANT::lVal, INT32_MIN).get()), Value(int64_t{INT32_MIN}));
  EXPECT_EQ(Read(Made(VT_INT, &VARIANT::intVal, -7).get()), Value(int64_t{-7}));
  EXPECT_EQ(Read(Made(VT_UI4, &VARIANT::ulVal, UINT32_MAX).get()), Value(int64_t{UINT32_MAX}));
  EXPECT_EQ(Read(Made(VT_UINT, &VARIANT::uintVal, 7).get()), Value(int64_t{7}));
  EXPECT_EQ(Read(Made(VT_I8, &VARIANT::llVal, INT64_MIN).get()), Value(int64_t{INT64_MIN}));
  EXPECT_EQ(Read(Made(VT_UI8, &VARIANT::ullVal, INT64_MAX).get()), Value(int64_t{INT64_MAX}));
  EXPECT_EQ(Read(Made(VT_UI8, &VARIANT::ullVal, UINT64_MAX).get()), Value(18446744073709551616.0));
}

TEST(AdoValues, ReadBooleansAsAutomationCountsThem) {
  EXPECT_EQ(Read(Made(VT_BOOL, &VARIANT::boolVal, VARIANT_TRUE).get()), Value(int64_t{-1}));
  EXPECT_EQ(Read(Made(VT_BOOL, &VARIANT::boolVal, VARIANT_FALSE).get()), Value(int64_t{0}));
}

TEST(AdoValues, KeepDoublesToTheLastBit) {
  EXPECT_EQ(Read(Made(VT_R8, &VARIANT::dblVal, 0.1).get()), Value(0.1));
  EXPECT_EQ(Read(Made(VT_R8, &VARIANT::dblVal, 1e308).get()), Value(1e308));
  EXPECT_EQ(Read(Made(VT_R8, &VARIANT::dblVal, -1.0 / 3).get()), Value(-1.0 / 3));
}

TEST(AdoValues, ReadASingleAsTheDecimalThatItIsShownAs) {
  EXPECT_EQ(Read(Made(VT_R4, &VARIANT::fltVal, 0.1F).get()), Value(0.1));
  EXPECT_EQ(Read(Made(VT_R4, &VARIANT::fltVal, 12.34F).get()), Value(12.34));
  EXPECT_EQ(Read(Made(VT_R4, &VARIANT::fltVal, std::numeric_limits<float>::infinity()).get()),
            Value(std::numeric_limits<double>::infinity()));
}

TEST(AdoValues, KeepCurrencyToTheLastTenThousandth) {
  EXPECT_EQ(ReadCurrency(1), Value(Money::FromUnits(1)));
  EXPECT_EQ(ReadCurrency(-123456789), Value(Money::FromUnits(-123456789)));
  EXPECT_EQ(ReadCurrency(INT64_MAX), Value(Money::FromUnits(INT64_MAX)));
  EXPECT_EQ(ReadCurrency(INT64_MIN), Value(Money::FromUnits(INT64_MIN)));
}

TEST(AdoValues, ReadDatesToTheSecond) {
  EXPECT_EQ(ReadDate(0), Value(base::Date()));
  EXPECT_EQ(ReadDate(38353), At(2005, 1, 1));
  for (int second = 0; second < 86400; second += 97) {
    ASSERT_EQ(ReadDate(45000 + second / 86400.0), At(2023, 3, 15, second / 3600, second / 60 % 60, second % 60));
  }
}

TEST(AdoValues, CountTheTimeOfADayBeforeTheZeroDateForward) {
  EXPECT_EQ(ReadDate(-1.25), At(1899, 12, 29, 6));
  EXPECT_EQ(ReadDate(-0.25), At(1899, 12, 30, 6));
  EXPECT_EQ(ReadDate(-657434), At(100, 1, 1));
}

TEST(AdoValues, AreNothingWhereADateIsOutsideOfTheCalendar) {
  EXPECT_EQ(ReadDate(2958465), At(9999, 12, 31));
  EXPECT_TRUE(ReadDate(2958466).IsNull());
  EXPECT_TRUE(ReadDate(-657435).IsNull());
  EXPECT_TRUE(ReadDate(1e300).IsNull());
  EXPECT_TRUE(ReadDate(std::numeric_limits<double>::quiet_NaN()).IsNull());
}

// Automation counts days in binary, and its own functions round to the second.
TEST(AdoValues, RoundTheFractionsOfASecond) {
  constexpr double kMillisecond = 1.0 / 86400000;
  const double noon = 38353.5;
  EXPECT_EQ(ReadDate(noon + 3 * kMillisecond), At(2005, 1, 1, 12));
  EXPECT_EQ(ReadDate(noon + 497 * kMillisecond), At(2005, 1, 1, 12));
  EXPECT_EQ(ReadDate(noon + 997 * kMillisecond), At(2005, 1, 1, 12, 0, 1));
  EXPECT_EQ(ReadDate(-1.25 - 3 * kMillisecond), At(1899, 12, 29, 6));
  EXPECT_EQ(ReadDate(2958465.99998), At(9999, 12, 31, 23, 59, 58));
  EXPECT_FALSE(ReadDate(2958465.9999999).Text().starts_with("10000"));
}

TEST(AdoValues, KeepDecimalsOfFewPlacesExact) {
  EXPECT_EQ(ReadDecimal({.low = 12}), Value(int64_t{12}));
  EXPECT_EQ(ReadDecimal({.low = 9223372036854775807U, .negative = true}), Value(int64_t{-INT64_MAX}));
  EXPECT_EQ(ReadDecimal({.low = 1250, .scale = 2}), Value(Money::FromUnits(125000)));
  EXPECT_EQ(ReadDecimal({.low = 1, .scale = 4, .negative = true}), Value(Money::FromUnits(-1)));
  EXPECT_EQ(ReadDecimal({.low = 0, .scale = 3}), Value(Money()));
}

TEST(AdoValues, ReadOtherDecimalsAsTheNearestDouble) {
  EXPECT_EQ(ReadDecimal({.low = 1234567, .scale = 6}), Value(1.234567));
  EXPECT_EQ(ReadDecimal({.low = 1, .scale = 28, .negative = true}), Value(-1e-28));
  EXPECT_EQ(ReadDecimal({.low = 9223372036854775808U}), Value(9223372036854775808.0));
  EXPECT_EQ(ReadDecimal({.low = 922337203685477581, .scale = 2}), Value(9223372036854775.81));
  EXPECT_EQ(ReadDecimal({.low = 4000000000000000000, .scale = 3}), Value(4e15));
  EXPECT_EQ(ReadDecimal({.high = UINT32_MAX, .low = UINT64_MAX}), Value(79228162514264337593543950335.0));
}

TEST(AdoValues, TakeATextByItsLength) {
  EXPECT_EQ(ReadText(L"入库单 A-1"), Value(std::string("入库单 A-1")));
  EXPECT_EQ(ReadText(std::wstring_view(L"a\0b", 3)), Value(std::string("a\xEF\xBF\xBD"
                                                                       "b")));
  EXPECT_EQ(ReadText(L"𠮷"), Value(std::string("𠮷")));
  EXPECT_EQ(ReadText(L"ÿ߿\x0800\xFFFF"), Value(std::string("ÿ߿\xE0\xA0\x80\xEF\xBF\xBF")));
  EXPECT_EQ(ReadText(L""), Value(std::string()));
  EXPECT_EQ(Read(Made(VT_BSTR, &VARIANT::bstrVal, nullptr).get()), Value(std::string()));
}

TEST(AdoValues, ReplaceHalvesOfCharacters) {
  const std::string replaced = "\xEF\xBF\xBD";
  EXPECT_EQ(ReadText(L"a\xD842"), Value("a" + replaced));
  EXPECT_EQ(ReadText(L"\xDFB7z"), Value(replaced + "z"));
  EXPECT_EQ(ReadText(L"\xDFB7\xD842"), Value(replaced + replaced));
  EXPECT_EQ(ReadText(L"\xD842\xD842\xDFB7"), Value(replaced + "𠮷"));
}

TEST(AdoValues, AreNothingWhereThereIsNone) {
  for (const VARTYPE type : {VT_NULL, VT_EMPTY, VT_ERROR, VT_DISPATCH, VT_UNKNOWN}) {
    EXPECT_TRUE(Read(Made(type, &VARIANT::llVal, 0).get()).IsNull()) << type;
  }
}

TEST(AdoValues, FollowReferences) {
  const LONG number = 42;
  EXPECT_EQ(Read(Made(VT_BYREF | VT_I4, &VARIANT::plVal, const_cast<LONG*>(&number)).get()), Value(int64_t{42}));
  const Variant text(std::string_view("单号"));
  EXPECT_EQ(Read(Made(VT_BYREF | VT_VARIANT, &VARIANT::pvarVal, const_cast<VARIANT*>(&text.get())).get()),
            Value(std::string("单号")));
}

TEST(AdoValues, ReadBytesAsTheTextThatTheyAre) {
  Variant bytes;
  bytes.get().parray = SafeArrayCreateVector(VT_UI1, 0, 4);
  bytes.get().vt = VT_ARRAY | VT_UI1;
  std::copy_n(
      "ab\xFF"
      "c",
      4, static_cast<char*>(bytes.get().parray->pvData));
  EXPECT_EQ(Read(bytes.get()), Value(std::string("ab\xEF\xBF\xBD"
                                                 "c")));
}

TEST(AdoValues, MayBeOfDifferentTypesInOneColumn) {
  AdoLog log;
  const auto rows = std::make_shared<MadeRows>(std::vector<std::string>{"it"});
  rows->Add(Variant(int32_t{1}), Variant(std::string_view("二")), Variant(2.5), Variant(Value(Money::FromUnits(5))),
            Variant());
  const auto object = testing::MakeAdoDouble(log, "", [&](const std::string&) { return rows; });
  std::string texts;
  for (auto result = OpenAdoConnection(object.get())->Execute(""); !result.AtEnd(); result.MoveNext()) {
    texts += result.FieldValue(0).Text() + "|";
  }
  EXPECT_EQ(texts, "1|二|2.5|0.0005||");
}

}  // namespace
}  // namespace stockbook::com
