// SPDX-License-Identifier: MIT
// Values of every type as they come out of a desktop file, and rows that were moved, deleted or written by an older
// table.
#include <cstring>

#include "databases/desktop/page_values.h"
#include "desktop/desktop_fixture.h"

namespace stockbook::testing {
namespace {

using DesktopValues = DesktopFixture;

std::string SingleBytes(float number) {
  uint32_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return LittleEndian(bits, 4);
}

// 17 bytes: the sign, then the highest word first.
std::string DecimalBytes(bool negative, uint64_t high, uint64_t low) {
  return std::string(1, negative ? '\x80' : '\0') + LittleEndian(high >> 32, 4) + LittleEndian(high, 4) +
         LittleEndian(low >> 32, 4) + LittleEndian(low, 4);
}

TEST_F(DesktopValues, KeepTheirTypesAndAreNullWhereTheFileHasNone) {
  Maker maker;
  const size_t table = maker.AddTable(WideBytes(u"t"), {{WideBytes(u"a"), Maker::kTruth},
                                                        {WideBytes(u"b"), Maker::kByte},
                                                        {WideBytes(u"c"), Maker::kShort},
                                                        {WideBytes(u"d"), Maker::kLong},
                                                        {WideBytes(u"e"), Maker::kMoney},
                                                        {WideBytes(u"f"), Maker::kSingle},
                                                        {WideBytes(u"g"), Maker::kDouble},
                                                        {WideBytes(u"h"), Maker::kDate},
                                                        {WideBytes(u"i"), Maker::kUnique},
                                                        {WideBytes(u"j"), Maker::kDecimal, 3}});
  maker.AddRow(table, {"", "\xC8", LittleEndian(0xFFFE, 2), LittleEndian(0x80000000, 4),
                       LittleEndian(static_cast<uint64_t>(-123456789), 8), SingleBytes(0.1F), DoubleBytes(-2.5),
                       DoubleBytes(38000.75), "0123456789abcdef", DecimalBytes(true, 0, 1234567)});
  maker.AddRow(table, Maker::Fields(10));
  const auto connection = Open(Put(maker));
  EXPECT_EQ(Rows(*connection, "Select * From t"),
            "-1 200 -2 -2147483648 -12345.6789 0.1 -2.5 2004-01-14 18:00:00 {33323130-3534-3736-3839-616263646566} "
            "-1234.567\n0 ~ ~ ~ ~ ~ ~ ~ ~ ~\n");
  platform::Recordset rows = connection->Execute("Select * From t");
  EXPECT_NE(rows.FieldValue("d").As<int64_t>(), nullptr);
  EXPECT_NE(rows.FieldValue("e").As<base::Money>(), nullptr);
  EXPECT_NE(rows.FieldValue("g").As<double>(), nullptr);
  EXPECT_NE(rows.FieldValue("h").As<base::Date>(), nullptr);
  EXPECT_NE(rows.FieldValue("j").As<base::Money>(), nullptr);
}

TEST_F(DesktopValues, OfMoneyAreExactToTheEndsOfTheirRange) {
  Maker maker;
  const size_t table = maker.AddTable(WideBytes(u"t"), {{WideBytes(u"金额"), Maker::kMoney}});
  maker.AddRow(table, {LittleEndian(0x7FFFFFFFFFFFFFFF, 8)});
  maker.AddRow(table, {LittleEndian(0x8000000000000000, 8)});
  maker.AddRow(table, {LittleEndian(90071992547409931, 8)});
  EXPECT_EQ(Rows(*Open(Put(maker)), "Select 金额 From t"),
            "922337203685477.5807\n-922337203685477.5808\n9007199254740.9931\n");
}

TEST_F(DesktopValues, OfTextMayBeCompressedWideOrBeyondTheFirstPlane) {
  Maker maker;
  const size_t table = maker.AddTable(WideBytes(u"表"), {{WideBytes(u"名称"), Maker::kText}});
  maker.AddRow(table, {"\xFF\xFE"
                       "bolt M8"});
  maker.AddRow(table, {WideBytes(u"螺栓")});
  // Narrow, a zero, wide, a zero, narrow.
  maker.AddRow(table, {std::string("\xFF\xFE"
                                   "M8\0",
                                   5) +
                       WideBytes(u"螺栓") + std::string("\0x\xE9", 3)});
  maker.AddRow(table, {WideBytes(u"\U00020BB7野家")});
  maker.AddRow(table, {std::string("\x00\xD8", 2) + WideBytes(u"a") + "b"});
  EXPECT_EQ(Rows(*Open(Put(maker)), "Select 名称 From 表"), "bolt M8\n螺栓\nM8螺栓xé\n𠮷野家\n\uFFFDa\uFFFD\n");
}

TEST_F(DesktopValues, OfOldFilesAreInTheCodePageOfTheFile) {
  for (const bool told : {true, false}) {
    Maker maker(Maker::Format::kJet3);
    maker.SetCodePage(told ? 936 : 0);
    maker.SetLanguage(told ? 0x409 : 0x804);
    // 商品 with the column 名称, 螺栓 in it; then bytes that are no character.
    const size_t table = maker.AddTable("\xC9\xCC\xC6\xB7", {{"\xC3\xFB\xB3\xC6", Maker::kText}, {"n", Maker::kLong}});
    maker.AddRow(table, {"\xC2\xDD\xCB\xA8", LittleEndian(7, 4)});
    maker.AddRow(table, {"a\xFF"
                         "b\xC2",
                         LittleEndian(8, 4)});
    EXPECT_EQ(Rows(*Open(Put(maker)), "Select 名称, n From 商品"), "螺栓 7\na\uFFFDb\uFFFD 8\n") << told;
  }
}

TEST_F(DesktopValues, OfMemosAreReadFromTheRowFromOnePageOrFromManyPages) {
  std::u16string text;
  for (int index = 0; index < 3000; ++index) text += static_cast<char16_t>(0x4E00 + index % 500);
  Maker maker;
  const size_t table =
      maker.AddTable(WideBytes(u"t"), {{WideBytes(u"m"), Maker::kMemo}, {WideBytes(u"o"), Maker::kObject}});
  maker.AddRow(table, {Maker::InlineField(WideBytes(u"短")), Maker::InlineField("abc")});
  maker.AddRow(table, {maker.LongField(WideBytes(u"一页"), 4000), std::nullopt});
  maker.AddRow(table, {maker.LongField(WideBytes(text), 1000), std::nullopt});
  const auto connection = Open(Put(maker));
  platform::Recordset rows = connection->Execute("Select m From t");
  EXPECT_EQ(rows.FieldValue("m").Text(), "短");
  rows.MoveNext();
  EXPECT_EQ(rows.FieldValue("m").Text(), "一页");
  rows.MoveNext();
  EXPECT_EQ(rows.FieldValue("m").Text(), databases::WideText(WideBytes(text)));
}

TEST_F(DesktopValues, ComeInTheOrderOfTheTableWithoutDeletedRowsAndWithMovedOnes) {
  Maker maker;
  const size_t table =
      maker.AddTable(WideBytes(u"t"), {{WideBytes(u"id"), Maker::kLong}, {WideBytes(u"s"), Maker::kText}});
  const auto row = [](uint64_t id, std::u16string_view text) {
    return Maker::Fields{LittleEndian(id, 4), WideBytes(text)};
  };
  maker.AddRow(table, row(9, u"first"));
  maker.AddDeletedRow(table, row(8, u"deleted"));
  maker.AddMovedRow(table, row(7, u"moved"));
  maker.AddMovedDeletedRow(table, row(6, u"moved and deleted"));
  maker.AddRow(table, row(5, u"last"));
  EXPECT_EQ(Rows(*Open(Put(maker)), "Select id, s From t"), "9 first\n7 moved\n5 last\n");
}

TEST_F(DesktopValues, OfColumnsThatARowIsOlderThanAreNull) {
  Maker maker;
  std::vector<Maker::Column> columns;
  for (const char16_t letter : std::u16string(u"abcdefghij"))
    columns.push_back({WideBytes({&letter, 1}), Maker::kLong});
  columns.push_back({WideBytes(u"yes"), Maker::kTruth});
  const size_t table = maker.AddTable(WideBytes(u"t"), columns);
  maker.AddRow(table, {LittleEndian(1, 4), LittleEndian(2, 4)});
  EXPECT_EQ(Rows(*Open(Put(maker)), "Select * From t"), "1 2 ~ ~ ~ ~ ~ ~ ~ ~ 0\n");
}

TEST(DesktopDates, AreOfTheSecondAndRunForwardsBeforeTheZeroDate) {
  EXPECT_EQ(databases::DayText(0), "1899-12-30");
  EXPECT_EQ(databases::DayText(45658.999999), "2025-01-02");
  EXPECT_EQ(databases::DayText(45658.5 + 1.0 / 86400), "2025-01-01 12:00:01");
  EXPECT_EQ(databases::DayText(-1.25), "1899-12-29 06:00:00");
  EXPECT_EQ(databases::DayText(1e300), "");
  EXPECT_EQ(databases::DayText(-1e7), "");
}

TEST(DesktopDecimals, AreExactWithAllTheirDigits) {
  EXPECT_EQ(databases::DecimalText(DecimalBytes(false, 0, 5), 3), "0.005");
  EXPECT_EQ(databases::DecimalText(DecimalBytes(false, 0, 0), 0), "0");
  EXPECT_EQ(databases::DecimalText(DecimalBytes(true, 0x00000000204FCE5E, 0x3E25026110000000), 28),
            "-1.0000000000000000000000000000");
}

}  // namespace
}  // namespace stockbook::testing
