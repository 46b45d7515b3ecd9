// SPDX-License-Identifier: MIT
// Encodings, numbers and dates as people write them into tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "stockbook/import/import_date.h"
#include "stockbook/import/import_number.h"
#include "stockbook/import/table_guess.h"
#include "stockbook/import/text_encoding.h"

namespace stockbook::app {
namespace {

const std::string kGbkBolt = "\xC2\xDD\xCB\xA8";  // 螺栓

std::string Plain(const std::string& text, DecimalMark mark) {
  const ImportNumber number = PlainNumber(text, mark);
  return number.is_ambiguous ? "ambiguous" : number.plain;
}

std::string DateText(const std::string& text) {
  ImportSentence why;
  const auto date = ReadImportDate(text, why);
  return date ? date->Text() : why.english;
}

// Delivers a text in pieces of some bytes.
class Pieces : public ByteSource {
 public:
  Pieces(std::string text, size_t size) : text_(std::move(text)), size_(size) {}
  size_t Read(char* buffer, size_t size) override {
    const size_t count = std::min({size, size_, text_.size() - at_});
    text_.copy(buffer, count, at_);
    at_ += count;
    return count;
  }

 private:
  std::string text_;
  size_t size_;
  size_t at_ = 0;
};

struct Decoded {
  std::string text;
  std::string encoding;
  bool operator==(const Decoded&) const = default;
};

void PrintTo(const Decoded& decoded, std::ostream* out) { *out << decoded.encoding << ": " << decoded.text; }

Decoded Decode(const std::string& bytes, TextEncoding encoding = TextEncoding::kDetected, size_t piece = 3) {
  DecodedSource source(std::make_unique<Pieces>(bytes, piece), encoding);
  std::string text;
  char buffer[7];
  for (size_t count = source.Read(buffer, sizeof buffer); count > 0; count = source.Read(buffer, sizeof buffer))
    text.append(buffer, count);
  return {text, std::string(source.EncodingName())};
}

TEST(ImportNumber, LeavesOutThousandsSeparatorsWhereThePointBeginsTheDecimals) {
  EXPECT_EQ(Plain("1,234,567.89", DecimalMark::kPoint), "1234567.89");
  EXPECT_EQ(Plain("-1,234", DecimalMark::kPoint), "-1234");
  EXPECT_EQ(Plain("1 234 567.5", DecimalMark::kPoint), "1234567.5");
  EXPECT_EQ(Plain("1\u00A0234,5", DecimalMark::kComma), "1234.5");
  EXPECT_EQ(Plain("1'234.5", DecimalMark::kPoint), "1234.5");
}

TEST(ImportNumber, RefusesGroupsThatAreNone) {
  for (const char* text : {"1,5", "12,34", "1234,567", ",123", "1,,234", "1,234,5"})
    EXPECT_EQ(Plain(text, DecimalMark::kPoint), text);
}

TEST(ImportNumber, LeavesOutCurrencySigns) {
  for (const char* text :
       {"¥12.5", "￥12.5", "12.5元", "CNY 12.5", "12.5 RMB", "$12.5", "€12.5", "US$12.5", "￥ 12.5 "})
    EXPECT_EQ(Plain(text, DecimalMark::kPoint), "12.5") << text;
  EXPECT_EQ(Plain("-¥1,200.00", DecimalMark::kPoint), "-1200.00");
  EXPECT_EQ(Plain("¥-3", DecimalMark::kPoint), "-3");
  EXPECT_EQ(Plain("￥12元", DecimalMark::kPoint), "12");
  EXPECT_EQ(Plain("-￥12元", DecimalMark::kPoint), "-12");
  EXPECT_EQ(Plain("12-元", DecimalMark::kPoint), "-12");
}

TEST(ImportNumber, RefusesASignThatCurrenciesHide) {
  for (const char* text : {"2028-￥£", "2028-￥元£", "12)$$", "5+$€"})
    EXPECT_EQ(Plain(text, DecimalMark::kPoint), text);
}

TEST(ImportNumber, ReadsBracketsAndTrailingSignsAsMinus) {
  EXPECT_EQ(Plain("(1,234.50)", DecimalMark::kPoint), "-1234.50");
  EXPECT_EQ(Plain("（12）", DecimalMark::kPoint), "-12");
  EXPECT_EQ(Plain("12-", DecimalMark::kPoint), "-12");
}

TEST(ImportNumber, ReadsWideDigits) { EXPECT_EQ(Plain("１２，３４５．６", DecimalMark::kPoint), "12345.6"); }

TEST(ImportNumber, FindsTheDecimalsByTheSpellingWhereItMayBeEither) {
  EXPECT_EQ(Plain("3,5", DecimalMark::kEither), "3.5");
  EXPECT_EQ(Plain("1.234,56", DecimalMark::kEither), "1234.56");
  EXPECT_EQ(Plain("1,234.56", DecimalMark::kEither), "1234.56");
  EXPECT_EQ(Plain("1,234,567", DecimalMark::kEither), "1234567");
  EXPECT_EQ(Plain("1.234.567", DecimalMark::kEither), "1234567");
  EXPECT_EQ(Plain("0,125", DecimalMark::kEither), "0.125");
  EXPECT_EQ(Plain("1.234", DecimalMark::kEither), "1.234");
  EXPECT_EQ(Plain("1234,567", DecimalMark::kEither), "1234.567");
}

TEST(ImportNumber, DoesNotGuessWhereACommaMayBeBoth) {
  EXPECT_EQ(Plain("1,234", DecimalMark::kEither), "ambiguous");
  EXPECT_EQ(Plain("1,234", DecimalMark::kComma), "1.234");
  EXPECT_EQ(Plain("1,234", DecimalMark::kPoint), "1234");
  EXPECT_EQ(Plain("1.234", DecimalMark::kComma), "1234");
}

TEST(ImportNumber, LeavesWhatIsNoNumberAsItIs) {
  for (const char* text : {"", "six", "NaN", "-", "元", "()", "--5"}) EXPECT_EQ(Plain(text, DecimalMark::kPoint), text);
}

TEST(ImportDate, ReadsTheSpellingsOfDays) {
  for (const char* text : {"2025-02-09", "2025-2-9", "2025/2/9", "2025.2.9", "20250209", "2025年2月9日",
                           "2025年02月09日", " 2025年2月9号", "２０２５年２月９日", "2025 年 2 月 9 日"})
    EXPECT_EQ(DateText(text), "2025-02-09") << text;
}

TEST(ImportDate, ReadsTheTimeBehindADay) {
  for (const char* text : {"2025-02-09 08:26:00", "2025/2/9 8:26", "2025年2月9日 8:26", "2025年2月9日8时26分",
                           "20250209082600", "20250209 0826", "2025-02-09T08:26:00Z", "2025.2.9 上午8:26"})
    EXPECT_EQ(DateText(text), "2025-02-09 08:26:00") << text;
  EXPECT_EQ(DateText("2025年2月9日 下午1:05"), "2025-02-09 13:05:00");
}

TEST(ImportDate, SaysWhyADayDoesNotExist) {
  EXPECT_EQ(DateText("2025-02-30"), "the date '2025-02-30' does not exist: that month has only 28 days");
  EXPECT_EQ(DateText("2024年2月30日"), "the date '2024年2月30日' does not exist: that month has only 29 days");
  EXPECT_EQ(DateText("2025/13/1"), "the date '2025/13/1' does not exist: there is no such month or day");
  EXPECT_EQ(DateText("20250431"), "the date '20250431' does not exist: that month has only 30 days");
  EXPECT_EQ(DateText("2025-02-09 25:00"), "the date '2025-02-09 25:00' has a time that does not exist");
}

TEST(ImportDate, RefusesWhatMayBeTwoDays) {
  EXPECT_EQ(DateText("2/9/2025"),
            "the date '2/9/2025' may be read in two ways; write it with the year first: yyyy-MM-dd");
}

TEST(ImportDate, RefusesWhatIsNoDate) {
  for (const char* text :
       {"never", "2025-02-09 下午:05", "2025", "202502", "2025-02", "1899-01-01", "2200-01-01", "2025-02-09 noon"})
    EXPECT_TRUE(
        DateText(text).ends_with("is none of the years 1900 to 2199, written yyyy-MM-dd or yyyy-MM-dd HH:mm:ss"))
        << text << ": " << DateText(text);
  EXPECT_EQ(DateText(""), "the date is empty");
}

TEST(TextEncoding, KnowsTheNamesOfEncodingsInAnySpelling) {
  EXPECT_EQ(EncodingOf("GBK"), TextEncoding::kGb18030);
  EXPECT_EQ(EncodingOf("gb-2312"), TextEncoding::kGb18030);
  EXPECT_EQ(EncodingOf("UTF8"), TextEncoding::kUtf8);
  EXPECT_EQ(EncodingOf("Big5"), TextEncoding::kBig5);
  EXPECT_FALSE(EncodingOf("klingon"));
}

TEST(TextEncoding, DetectsGbkWhereverTheFirstChineseCharacterIs) {
  const std::string ascii(200'000, 'x');
  for (const size_t piece : {1U, 3U, 70'000U}) {
    EXPECT_EQ(Decode("a," + kGbkBolt + "\n", TextEncoding::kDetected, piece), (Decoded{"a,螺栓\n", "GBK"}));
    EXPECT_TRUE(Decode(ascii + kGbkBolt, TextEncoding::kDetected, piece) == (Decoded{ascii + "螺栓", "GBK"}));
  }
}

TEST(TextEncoding, NamesGb18030WhereItHasCharactersBeyondGbk) {
  // U+3400 has four bytes.
  EXPECT_EQ(Decode(kGbkBolt + "\x81\x39\xEE\x39"), (Decoded{"螺栓㐀", "GB18030"}));
}

TEST(TextEncoding, LeavesUtf8AsItIs) {
  EXPECT_EQ(Decode("螺栓,é"), (Decoded{"螺栓,é", "UTF-8"}));
  EXPECT_EQ(Decode("\xEF\xBB\xBF螺栓"), (Decoded{"螺栓", "UTF-8"}));
  EXPECT_EQ(Decode("plain"), (Decoded{"plain", "UTF-8"}));
  EXPECT_EQ(Decode(""), (Decoded{"", "UTF-8"}));
}

TEST(TextEncoding, DoesNotTakeWesternLettersForChinese) {
  // Each accented letter and the one behind it would be a character of GBK.
  EXPECT_EQ(Decode("cr\xE8me, caf\xE9s, na\xEFve").encoding, "UTF-8");
  EXPECT_EQ(Decode("cr\xE8me", TextEncoding::kWindows1252), (Decoded{"crème", "Windows-1252"}));
}

TEST(TextEncoding, DetectsUtf16ByItsMark) {
  EXPECT_EQ(Decode(std::string("\xFF\xFE\x61\x00\xBA\x87", 6)), (Decoded{"a螺", "UTF-16"}));
  EXPECT_EQ(Decode(std::string("\xFE\xFF\x00\x61\x87\xBA", 6)), (Decoded{"a螺", "UTF-16BE"}));
  EXPECT_EQ(Decode(std::string("a\0,\0", 4)), (Decoded{"a,", "UTF-16"}));
}

TEST(TextEncoding, ReplacesWhatCannotBeConverted) {
  // A surrogate without its other half costs no more than itself.
  EXPECT_EQ(Decode(std::string("a\0\x00\xD8z\0", 6), TextEncoding::kUtf16Le), (Decoded{"a\uFFFDz", "UTF-16"}));
  EXPECT_EQ(Decode(kGbkBolt + "\xFF,\xC2", TextEncoding::kGb18030), (Decoded{"螺栓\uFFFD,\uFFFD", "GB18030"}));
}

TEST(TableGuess, FindsTheDelimiterThatSplitsAllLinesAlike) {
  EXPECT_EQ(GuessDelimiter("a;b;c\n1,5;2;3\n2,5;3;4\n"), ';');
  EXPECT_EQ(GuessDelimiter("a\tb\n1\t2\n"), '\t');
  EXPECT_EQ(GuessDelimiter("a|b|c\n1|2|3\n"), '|');
  EXPECT_EQ(GuessDelimiter("a,b\n\"x;y\",2\n"), ',');
  EXPECT_EQ(GuessDelimiter("alone\n"), ',');
  EXPECT_EQ(GuessDelimiter("a;b;c\n1;2;3\n1;2"), ';') << "the last line is cut off";
}

TEST(TableGuess, MapsChineseAndEnglishNamesOfColumns) {
  using Columns = std::vector<std::string_view>;
  const auto chinese =
      GuessMapping(Columns{"出库日期", "单据号", "客户名称", "商品编号", "商品名称", "数 量", "单价（元）"});
  EXPECT_EQ(chinese, (ImportMapping::Positions{3, 4, 1, 0, 5, 6, 2, std::nullopt}));
  const auto english = GuessMapping(Columns{"InvoiceNo", "StockCode", "Description", "Quantity", "InvoiceDate",
                                            "UnitPrice", "CustomerID", "Country"});
  EXPECT_EQ(english, (ImportMapping::Positions{1, 2, 0, 4, 3, 5, 6, 7}));
  const auto nothing = GuessMapping(Columns{"x", "y"});
  EXPECT_EQ(nothing, ImportMapping::Positions());
}

TEST(TableGuess, TakesNamesForTheProductsWhereNothingNumbersThem) {
  using Columns = std::vector<std::string_view>;
  const auto is = [](size_t product, std::optional<size_t> name) {
    return ImportMapping::Positions{product, name, {}, 0, 2, {}, {}, {}};
  };
  EXPECT_EQ(GuessMapping(Columns{"日期", "商品", "数量"}), is(1, {}));
  EXPECT_EQ(GuessMapping(Columns{"日期", "品名", "数量"}), is(1, {}));
  EXPECT_EQ(GuessMapping(Columns{"日期", "商品", "数量", "商品名称"}), is(1, 3));
  EXPECT_EQ(GuessMapping(Columns{"日期", "商品", "数量", "货号"}), is(3, 1)) << "a number goes before";
}

}  // namespace
}  // namespace stockbook::app
