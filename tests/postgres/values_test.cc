// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "base/text.h"
#include "postgres/session_fixture.h"

namespace stockbook::databases {
namespace {

using Class = ValueClass;
using PostgresValues = PostgresTest;

TEST_F(PostgresValues, ReadsWholeNumbersOfEveryWidth) {
  EXPECT_EQ(Rows("SELECT 1::int2, (-2)::int4, 9223372036854775807::int8, 4294967295::oid",
                 {Class::kInteger, Class::kInteger, Class::kInteger, Class::kAny}),
            std::vector<std::string>{"int:1|int:-2|int:9223372036854775807|int:4294967295"});
  EXPECT_EQ(Rows("SELECT true, false, null::bool", {Class::kBoolean, Class::kInteger, Class::kAny}),
            std::vector<std::string>{"int:1|int:0|null"});
}

TEST_F(PostgresValues, MakesWholeNumbersWhatTheirColumnIs) {
  EXPECT_EQ(One("SELECT 5::int4", Class::kReal), "real:5.000000");
  EXPECT_EQ(One("SELECT 5::int8", Class::kMoney), "money:5");
  EXPECT_EQ(One("SELECT 9007199254740993::int8", Class::kReal), "int:9007199254740993");
  EXPECT_EQ(One("SELECT 9223372036854775807::int8", Class::kMoney), "text:9223372036854775807");
}

TEST_F(PostgresValues, ReadsRealNumbersAndInfiniteOnes) {
  EXPECT_EQ(One("SELECT 0.1::float8", Class::kReal), "real:0.100000");
  EXPECT_EQ(One("SELECT 0.5::float4", Class::kReal), "real:0.500000");
  EXPECT_EQ(One("SELECT 'Infinity'::float8", Class::kReal), "real:inf");
  EXPECT_EQ(One("SELECT '-Infinity'::numeric", Class::kMoney), "real:-inf");
  EXPECT_EQ(One("SELECT 12.345::float8", Class::kMoney), "money:12.345");
  EXPECT_EQ(One("SELECT 1e300::float8", Class::kMoney), "text:1E+300");
}

TEST_F(PostgresValues, ReadsWhatIsNotANumberAsNull) {
  EXPECT_EQ(One("SELECT 'NaN'::float8", Class::kReal), "null");
  EXPECT_EQ(One("SELECT 'NaN'::numeric", Class::kMoney), "null");
}

TEST_F(PostgresValues, ReadsMoneyExactlyAndRoundsHalfToEven) {
  const std::vector<std::pair<std::string, std::string>> amounts = {
      {"0", "0"},
      {"0.0001", "0.0001"},
      {"-12345678.9012", "-12345678.9012"},
      {"0.00005", "0"},
      {"0.00015", "0.0002"},
      {"0.00025", "0.0002"},
      {"0.000250000001", "0.0003"},
      {"-0.00015", "-0.0002"},
      {"-0.00025", "-0.0002"},
      {"0.00000001", "0"},
      {"1e-30", "0"},
      {"99999999.99995", "100000000"},
      {"922337203685477.5807", "922337203685477.5807"},
      {"-922337203685477.5808", "-922337203685477.5808"},
      {"10000", "10000"},
      {"100000000", "100000000"},
  };
  for (const auto& [stored, shown] : amounts) {
    EXPECT_EQ(One("SELECT " + stored + "::numeric", Class::kMoney), "money:" + shown) << stored;
  }
}

TEST_F(PostgresValues, LeavesAmountsOutOfRangeAsTexts) {
  EXPECT_EQ(One("SELECT 922337203685477.5808::numeric", Class::kMoney), "text:922337203685477.5808");
  EXPECT_EQ(One("SELECT -1e20::numeric", Class::kMoney), "text:-100000000000000000000");
  EXPECT_EQ(One("SELECT 922337203685477.58075::numeric", Class::kMoney), "text:922337203685477.58075");
}

TEST_F(PostgresValues, ReadsDecimalsAsTheNearestDouble) {
  for (const char* number : {"0", "0.1", "-2.5", "1234567.891", "9007199254740993", "0.30000000000000004", "1e-7",
                             "123456789012345678901234567890", "5e-324", "1.7976931348623157e308", "1e-300"}) {
    const auto read = Columns(std::string("SELECT ") + number + "::numeric", {Class::kReal});
    EXPECT_EQ(read[0].Number(0), std::strtod(number, nullptr)) << number;
  }
  EXPECT_EQ(One("SELECT 1e400::numeric", Class::kReal), "real:inf");
}

TEST_F(PostgresValues, ReadsDecimalsOfUnknownClassByTheirDigits) {
  EXPECT_EQ(One("SELECT 2.5::numeric", Class::kAny), "money:2.5");
  EXPECT_EQ(One("SELECT 2.123456::numeric", Class::kAny), "real:2.123456");
  EXPECT_EQ(One("SELECT 40000::numeric", Class::kInteger), "int:40000");
  EXPECT_EQ(One("SELECT 2.5::numeric", Class::kInteger), "real:2.500000");
}

TEST_F(PostgresValues, ReadsTheTypeMoneyByTheDecimalsOfItsCountry) {
  EXPECT_EQ(One("SELECT 12.34::numeric::money", Class::kMoney), "money:12.34");
  EXPECT_EQ(One("SELECT '-12.34'::numeric::money", Class::kReal), "real:-12.340000");
}

TEST_F(PostgresValues, ReadsTextsOfEveryType) {
  EXPECT_EQ(Rows("SELECT '螺栓'::text, 'a'::varchar(5), 'ab'::char(5), 'n'::name, 'x', ''::text",
                 std::vector<Class>(6, Class::kText)),
            std::vector<std::string>{"text:螺栓|text:a|text:ab|text:n|text:x|text:"});
  EXPECT_EQ(One("SELECT 'a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11'::uuid", Class::kText),
            "text:a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11");
  EXPECT_EQ(One("SELECT '\\xDEADbeef'::bytea", Class::kAny), "text:\\xdeadbeef");
  EXPECT_EQ(One("SELECT '1,234.5'::text", Class::kMoney), "money:1234.5");
  EXPECT_EQ(One("SELECT 'many'::text", Class::kMoney), "text:many");
}

TEST_F(PostgresValues, KeepsRepeatedAndLongTextsApart) {
  EXPECT_EQ(Rows("SELECT x FROM (VALUES (1, 'a'), (2, 'a'), (3, repeat('长', 100)), (4, 'a'), (5, NULL), (6, 'a')) "
                 "AS t(i, x) ORDER BY i",
                 {Class::kText}),
            (std::vector<std::string>{"text:a", "text:a", "text:" + base::ReplaceAll(std::string(100, 'x'), "x", "长"),
                                      "text:a", "null", "text:a"}));
}

TEST_F(PostgresValues, ReadsDatesAndTimes) {
  EXPECT_EQ(One("SELECT DATE '2024-02-29'", Class::kDate), "date:2024-02-29");
  EXPECT_EQ(One("SELECT DATE '1899-12-30'", Class::kDate), "date:1899-12-30");
  EXPECT_EQ(One("SELECT TIMESTAMP '1999-12-31 23:59:59.999'", Class::kDate), "date:1999-12-31 23:59:59");
  EXPECT_EQ(One("SELECT TIMESTAMP '2024-05-06 07:08:09.5'", Class::kAny), "date:2024-05-06 07:08:09");
  EXPECT_EQ(One("SELECT TIMESTAMP '2024-05-06'", Class::kText), "text:2024-05-06");
  EXPECT_EQ(One("SELECT TIME '07:08:09'", Class::kDate), "date:1899-12-30 07:08:09");
  EXPECT_EQ(One("SELECT '2024-5-6'::text", Class::kDate), "date:2024-05-06");
}

TEST_F(PostgresValues, ReadsTimesWithAZoneInThatOfTheSession) {
  EXPECT_EQ(One("SELECT TIMESTAMPTZ '2024-05-06 00:30:00+00'", Class::kDate), "date:2024-05-06 08:30:00");
  EXPECT_EQ(
      Rows("SELECT TIMESTAMPTZ '2024-05-06 00:30:00+00', 1.25::numeric, 2.5::numeric, 0.5::float8, 7::int4, true, "
           "TIME '07:08', DATE '2024-01-02', 2::numeric, '\\x01'::bytea",
           {Class::kAny, Class::kMoney, Class::kAny, Class::kReal, Class::kInteger, Class::kInteger, Class::kDate,
            Class::kDate, Class::kInteger, Class::kText}),
      std::vector<std::string>{"date:2024-05-06 08:30:00|money:1.25|money:2.5|real:0.500000|int:7|int:1|"
                               "date:1899-12-30 07:08:00|date:2024-01-02|int:2|text:\\x01"});
}

TEST_F(PostgresValues, ReadsTypesItDoesNotKnowAsTheirTexts) {
  EXPECT_EQ(One("SELECT INTERVAL '1 day'", Class::kAny), "text:1 day");
  EXPECT_EQ(One("SELECT ARRAY[1,2]", Class::kAny), "text:{1,2}");
  EXPECT_EQ(Rows("SELECT INTERVAL '1 day', 'NaN'::float8, 'Infinity'::numeric, 'NaN'::numeric",
                 {Class::kAny, Class::kReal, Class::kMoney, Class::kMoney}),
            std::vector<std::string>{"text:1 day|null|real:inf|null"});
}

TEST_F(PostgresValues, ReadsNoDateAsNull) {
  for (const char* date : {"DATE 'infinity'", "TIMESTAMP '-infinity'", "DATE '0044-03-15 BC'", "DATE '20240-01-01'",
                           "TIMESTAMPTZ 'infinity'", "5::int4", "5.5::float8", "5.5::numeric", "'no date'::text"}) {
    EXPECT_EQ(One(std::string("SELECT ") + date, Class::kDate), "null") << date;
  }
}

TEST_F(PostgresValues, RepairsTextsThatAreNoUtf8) {
  server().Run("DROP DATABASE IF EXISTS bytes");
  server().Run("CREATE DATABASE bytes ENCODING 'SQL_ASCII' LC_COLLATE 'C' LC_CTYPE 'C' TEMPLATE template0");
  Connect("Database=bytes");
  EXPECT_EQ(One("SELECT 'a' || chr(193) || 'b'", Class::kText),
            "text:a\xEF\xBF\xBD"
            "b");
}

TEST_F(PostgresValues, ReadsNoRowsAndOne) {
  EXPECT_TRUE(Rows("SELECT 1 WHERE false", {Class::kInteger}).empty());
  EXPECT_EQ(Rows("SELECT 1", {Class::kInteger}).size(), 1u);
}

TEST_F(PostgresValues, ReadsAMillionRows) {
  const auto columns = Columns(
      "SELECT i, i / 4.0::float8, (i * 0.25)::numeric, DATE '2024-01-01' + i % 30, 'code ' || i % 7, NULLIF(i % 3, 0)"
      " FROM generate_series(1, 1000000) AS i",
      {Class::kInteger, Class::kReal, Class::kMoney, Class::kDate, Class::kText, Class::kInteger});
  ASSERT_EQ(columns[0].size(), 1000000u);
  for (const size_t row : {size_t{0}, size_t{999}, size_t{1000}, size_t{65535}, size_t{65536}, size_t{999999}}) {
    const auto number = static_cast<int64_t>(row) + 1;
    EXPECT_EQ(columns[0].At(row), base::Value(number));
    EXPECT_EQ(columns[1].Number(row), static_cast<double>(number) / 4);
    EXPECT_EQ(columns[2].At(row), base::Value(base::Money::FromUnits(number * 2500)));
    EXPECT_EQ(columns[4].Text(row), "code " + std::to_string(number % 7));
    EXPECT_EQ(columns[5].IsNull(row), number % 3 == 0);
  }
}

TEST_F(PostgresValues, ReadsExactlyAsManyRowsAsPortionsHold) {
  for (const int rows : {999, 1000, 1001, 2000}) {
    EXPECT_EQ(Columns("SELECT generate_series(1, " + std::to_string(rows) + ")", {Class::kInteger})[0].size(),
              static_cast<size_t>(rows));
  }
}

}  // namespace
}  // namespace stockbook::databases
