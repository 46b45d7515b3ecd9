// SPDX-License-Identifier: MIT
#include "stockbook/import/csv_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>

#include "stockbook/platform/error.h"
#include "stockbook/sample/sample_random.h"

namespace stockbook::app {
namespace {

// A text delivered in pieces of `step` bytes.
class TextSource : public ByteSource {
 public:
  TextSource(std::string text, size_t step) : text_(std::move(text)), step_(step) {}
  size_t Read(char* buffer, size_t size) override {
    const size_t count = std::min({size, step_, text_.size() - at_});
    std::memcpy(buffer, text_.data() + at_, count);
    at_ += count;
    return count;
  }

 private:
  std::string text_;
  size_t step_;
  size_t at_ = 0;
};

struct ParsedCsv {
  std::vector<std::vector<std::string>> records;
  std::vector<int64_t> lines;
  std::vector<CsvFault> faults;
};

ParsedCsv ParseIn(const std::string& text, size_t step, char delimiter = ',') {
  TextSource source(text, step);
  CsvReader reader(source, delimiter);
  ParsedCsv parsed;
  CsvRecord record;
  while (reader.Next(record)) {
    parsed.records.emplace_back(record.fields.begin(), record.fields.end());
    parsed.lines.push_back(record.line);
    parsed.faults.push_back(record.fault);
  }
  return parsed;
}

ParsedCsv Parse(const std::string& text, char delimiter = ',') {
  const ParsedCsv whole = ParseIn(text, 1 << 20, delimiter);
  // The pieces in which the bytes arrive make no difference.
  const ParsedCsv bytes = ParseIn(text, 1, delimiter);
  EXPECT_EQ(whole.records, bytes.records);
  EXPECT_EQ(whole.lines, bytes.lines);
  EXPECT_EQ(whole.faults, bytes.faults);
  return whole;
}

using Records = std::vector<std::vector<std::string>>;

TEST(CsvReader, ReadsFieldsAndEmptyFields) {
  EXPECT_EQ(Parse("a,b\n,\nc,\n").records, (Records{{"a", "b"}, {"", ""}, {"c", ""}}));
  EXPECT_TRUE(Parse("").records.empty());
}

TEST(CsvReader, EndsLinesWithEveryKindOfBreakAndNeedsNoneAtTheEnd) {
  EXPECT_EQ(Parse("a\nb\r\nc\rd").records, (Records{{"a"}, {"b"}, {"c"}, {"d"}}));
  EXPECT_EQ(Parse("a,\"b\"").records, (Records{{"a", "b"}}));
}

TEST(CsvReader, KeepsSeparatorsBreaksAndDoubledQuotesWithinQuotes) {
  EXPECT_EQ(Parse("\"a,b\",\"c\r\nd\",\"\"\"e\"\"\"\n\"\",x").records,
            (Records{{"a,b", "c\r\nd", "\"e\""}, {"", "x"}}));
}

TEST(CsvReader, TakesAQuoteWithinAPlainFieldAsText) {
  EXPECT_EQ(Parse("a\"b,6\"\n").records, (Records{{"a\"b", "6\""}}));
}

TEST(CsvReader, CountsLinesWithinQuotesToo) {
  const ParsedCsv parsed = Parse("a\n\"b\nc\r\nd\re\"\nf\n");
  EXPECT_EQ(parsed.lines, (std::vector<int64_t>{1, 2, 6}));
}

TEST(CsvReader, PassesOverAByteOrderMark) {
  EXPECT_EQ(Parse("\xEF\xBB\xBF\"a\",b").records, (Records{{"a", "b"}}));
  EXPECT_EQ(Parse("a\n\xEF\xBB\xBF").records, (Records{{"a"}, {"\xEF\xBB\xBF"}}));
  EXPECT_EQ(Parse("\xEF\xBB").records, (Records{{"\xEF\xBB"}}));
}

TEST(CsvReader, RefusesUtf16) {
  EXPECT_THROW(ParseIn(std::string("\xFF\xFE"
                                   "a\0",
                                   4),
                       1),
               platform::Error);
  EXPECT_THROW(ParseIn(std::string("\xFE\xFF\0a", 4), 100), platform::Error);
}

TEST(CsvReader, GivesUpALineWithTextAfterAQuoteAndReadsOn) {
  const ParsedCsv parsed = Parse("\"a\"b,c\nd,e\n");
  EXPECT_EQ(parsed.faults, (std::vector<CsvFault>{CsvFault::TextAfterQuote, CsvFault::None}));
  EXPECT_EQ(parsed.records[1], (std::vector<std::string>{"d", "e"}));
  EXPECT_EQ(parsed.lines, (std::vector<int64_t>{1, 2}));
}

TEST(CsvReader, ReportsAQuoteThatIsNeverClosed) {
  EXPECT_EQ(Parse("a\n\"b\nc").faults,
            (std::vector<CsvFault>{CsvFault::None, CsvFault::UnclosedQuote, CsvFault::None}));
}

TEST(CsvReader, ReadsOnAtTheNextLineWhenAQuoteIsNeverClosed) {
  std::string text = "a,\"b\r\n";
  for (int line = 0; line < 20000; ++line) text += std::to_string(line) + ",x\r\n";
  const ParsedCsv parsed = ParseIn(text, 1000);
  ASSERT_EQ(parsed.records.size(), 20001u);
  EXPECT_EQ(parsed.faults.front(), CsvFault::UnclosedQuote);
  EXPECT_EQ(parsed.records[1], (std::vector<std::string>{"0", "x"}));
  EXPECT_EQ(parsed.lines[1], 2);
  EXPECT_EQ(parsed.lines.back(), 20001);
}

TEST(CsvReader, ReadsOnAtTheNextLineWhenAnotherQuoteClosesTheField) {
  const ParsedCsv parsed = Parse("a,\"b\nc,d\ne,\"f\"\ng\n");
  EXPECT_EQ(parsed.records.size(), 4u);
  EXPECT_EQ(parsed.faults.front(), CsvFault::TextAfterQuote);
  EXPECT_EQ(parsed.records[1], (std::vector<std::string>{"c", "d"}));
  EXPECT_EQ(parsed.records[2], (std::vector<std::string>{"e", "f"}));
  EXPECT_EQ(parsed.lines, (std::vector<int64_t>{1, 2, 3, 4}));
}

TEST(CsvReader, GivesARecordUpForTheLineAfterItsFirst) {
  TextSource source("a,\"b\nc,d\ne\",f\ng\n", 3);
  CsvReader reader(source);
  CsvRecord record;
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.line_count, 3);
  reader.GiveUpRecord();
  ASSERT_TRUE(reader.Next(record));
  EXPECT_EQ(record.line, 2);
  EXPECT_EQ(record.line_count, 1);
  EXPECT_EQ(record.fields, (std::vector<std::string_view>{"c", "d"}));
}

TEST(CsvReader, GivesUpARecordThatIsTooLongAndReadsOn) {
  const std::string filler(CsvReader::kLongestRecord + 10, 'x');
  for (const std::string& text : {"\"" + filler + "\nb\n", filler + "\nb\n", std::string(filler.size(), ',') + "\nb\n",
                                  "\"" + std::string(filler.size(), '\n') + "\nb"}) {
    const ParsedCsv parsed = ParseIn(text, 1 << 16);
    ASSERT_FALSE(parsed.faults.empty());
    EXPECT_EQ(parsed.faults.front(), CsvFault::TooLong);
    EXPECT_EQ(parsed.records.back(), std::vector<std::string>{"b"});
  }
}

TEST(CsvReader, SeparatesByTheCharacterItIsGiven) {
  EXPECT_EQ(Parse("a;b,c\n", ';').records, (Records{{"a", "b,c"}}));
  EXPECT_EQ(Parse("a\tb\n", '\t').records, (Records{{"a", "b"}}));
}

TEST(CsvReader, ReadsBackWhateverWasWrittenWithQuotes) {
  SampleRandom random(7);
  const std::string alphabet = "ab,\"\r\n; \xE5\xBA\x93";
  for (int round = 0; round < 2000; ++round) {
    Records written;
    std::string text;
    const int64_t rows = random.Between(1, 4);
    for (int64_t row = 0; row < rows; ++row) {
      written.emplace_back();
      const int64_t fields = random.Between(1, 4);
      for (int64_t field = 0; field < fields; ++field) {
        std::string value;
        for (int64_t length = random.Below(6); length > 0; --length) value += random.Pick(alphabet);
        text += field == 0 ? "\"" : ",\"";
        for (const char c : value) text += c == '"' ? std::string("\"\"") : std::string(1, c);
        text += '"';
        written.back().push_back(value);
      }
      text += random.Chance(50) ? "\r\n" : "\n";
    }
    ASSERT_EQ(Parse(text).records, written) << text;
  }
}

TEST(CsvReader, SurvivesAnyBytesAndLosesNoLine) {
  SampleRandom random(11);
  const std::string alphabet("a,\"\n\r\0\xEF\xBB\xBF\xFFx", 11);
  for (int round = 0; round < 5000; ++round) {
    std::string text = "h\n";
    for (int64_t length = random.Below(40); length > 0; --length) text += random.Pick(alphabet);
    const ParsedCsv parsed = Parse(text);
    ASSERT_FALSE(parsed.records.empty());
    // Line numbers rise from record to record.
    ASSERT_EQ(std::adjacent_find(parsed.lines.begin(), parsed.lines.end(), std::greater_equal<int64_t>()),
              parsed.lines.end());
    // Without quotes every line break ends a record.
    if (text.find('"') == std::string::npos) {
      size_t breaks = 0;
      for (size_t at = 0; at < text.size(); ++at)
        breaks += text[at] == '\n' ? !(at > 0 && text[at - 1] == '\r') : text[at] == '\r';
      const bool open_end = text.back() != '\n' && text.back() != '\r';
      ASSERT_EQ(parsed.records.size(), breaks + (open_end ? 1 : 0));
    }
  }
}

}  // namespace
}  // namespace stockbook::app
