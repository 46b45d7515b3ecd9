// SPDX-License-Identifier: MIT
#include "sheet/format/date_format.h"

#include <gtest/gtest.h>

#include <random>

#include "sheet/format/cell_format.h"

namespace stockbook::sheet {
namespace {

using base::Date;
using base::Value;
using platform::DataType;

std::string DateShown(std::string_view format, std::string_view date) {
  return DateFormat::Parse(format).Format(*Date::Parse(date));
}

std::string CellShown(std::string_view format, DataType type, const Value& value) {
  std::string out;
  return CellFormat(format).Append(type, value, out) ? out : "(stored)";
}

TEST(DateFormat, ShowsDatesByTheNumberOfLetters) {
  EXPECT_EQ(DateShown("yyyy-MM-dd", "2004-03-01"), "2004-03-01");
  EXPECT_EQ(DateShown("yyyy-MM-dd", "2004-03-01 08:05:09"), "2004-03-01");
  EXPECT_EQ(DateShown("yy/M/d", "2004-03-01"), "04/3/1");
  EXPECT_EQ(DateShown("yyyy年MM月dd日", "2004-03-01"), "2004年03月01日");
  EXPECT_EQ(DateShown("dd MMM yyyy", "2004-12-31"), "31 Dec 2004");
  EXPECT_EQ(DateShown("ddd", "1899-12-30"), "Sat");
}

TEST(DateFormat, TellsMinutesFromMonthsByTheirNeighbours) {
  EXPECT_EQ(DateShown("yyyy-MM-dd HH:mm:ss", "2004-03-01 08:05:09"), "2004-03-01 08:05:09");
  EXPECT_EQ(DateShown("yyyy-mm-dd hh:MM", "2004-03-01 18:05:09"), "2004-03-01 18:05");
  EXPECT_EQ(DateShown("mm:ss", "2004-03-01 18:05:09"), "05:09");
  EXPECT_EQ(DateShown("h:mm AM/PM", "2004-03-01 18:05:09"), "6:05 PM");
  EXPECT_EQ(DateShown("h:mm am/pm", "2004-03-01 00:05:09"), "12:05 am");
}

TEST(DateFormat, KeepsLiteralTexts) {
  EXPECT_EQ(DateShown("\"day \"d", "2004-03-05"), "day 5");
  EXPECT_EQ(DateShown("\\d d", "2004-03-05"), "d 5");
}

TEST(DateFormat, SurvivesAnyFormatText) {
  std::mt19937 random(8);
  const std::string_view signs = "ymdhsYMDHS AMPM/\"\\-:年";
  for (int round = 0; round < 20000; ++round) {
    std::string format;
    for (auto length = random() % 14; length > 0; --length) format += signs[random() % signs.size()];
    EXPECT_LT(DateShown(format, "2004-12-31 23:59:58").size(), 100U) << format;
  }
}

TEST(CellFormat, KnowsDateFormatsFromNumberFormats) {
  EXPECT_TRUE(DateFormat::IsDateFormat("yyyy-MM-dd"));
  EXPECT_TRUE(DateFormat::IsDateFormat("HH:mm"));
  EXPECT_FALSE(DateFormat::IsDateFormat("#,##0.00"));
  EXPECT_FALSE(DateFormat::IsDateFormat("\"days\""));
  EXPECT_FALSE(DateFormat::IsDateFormat("0 \"d\""));
  EXPECT_FALSE(DateFormat::IsDateFormat(""));
}

TEST(CellFormat, AppliesDateFormatsToDatesAndToTextsThatSpellOne) {
  EXPECT_EQ(CellShown("yyyy/MM/dd", DataType::kDate, Value(*Date::Parse("2004-03-01 10:00:00"))), "2004/03/01");
  EXPECT_EQ(CellShown("yyyy/MM/dd", DataType::kString, Value(std::string("2004-3-1"))), "2004/03/01");
  EXPECT_EQ(CellShown("yyyy/MM/dd", DataType::kDate, Value(std::string("soon"))), "(stored)");
  EXPECT_EQ(CellShown("yyyy/MM/dd", DataType::kDate, Value(38047.0)), "(stored)");
  EXPECT_EQ(CellShown("yyyy/MM/dd", DataType::kDate, Value()), "(stored)");
}

TEST(CellFormat, AppliesNumberFormatsToNumbersInColumnsOfNumbersOnly) {
  EXPECT_EQ(CellShown("#,##0.00", DataType::kDouble, Value(1234.5)), "1,234.50");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kCurrency, Value(base::Money::FromUnits(INT64_MAX))),
            "922,337,203,685,477.58");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kCurrency, Value(std::string("12.345"))), "12.35");
  EXPECT_EQ(CellShown("000", DataType::kLong, Value(int64_t{7})), "007");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kDouble, Value(std::string("-"))), "(stored)");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kDouble, Value(std::string("1.5\n2.5"))), "(stored)");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kDouble, Value(std::string(""))), "(stored)");
  EXPECT_EQ(CellShown("#,##0.00", DataType::kString, Value(std::string("12"))), "(stored)");
  EXPECT_EQ(CellShown("Standard", DataType::kDouble, Value(1234.5)), "1,234.50");
}

}  // namespace
}  // namespace stockbook::sheet
