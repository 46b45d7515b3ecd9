// SPDX-License-Identifier: MIT
#include "databases/postgres/result_decoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "databases/postgres/wire_numbers.h"

namespace stockbook::databases {

// Numbers of types that a server never changes (pg_type.dat).
struct ResultDecoder::TypeRow {
  Oid type;
  Wire wire;
};

namespace {

constexpr int64_t kMicroseconds = 1'000'000;
// From 1899-12-30, day 0 of base::Date, to 2000-01-01, that of the server.
constexpr int64_t kDaysBefore2000 = 36526;

int64_t FloorSeconds(int64_t microseconds) {
  return microseconds / kMicroseconds - (microseconds % kMicroseconds < 0 ? 1 : 0);
}

std::string HexText(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto bits = static_cast<unsigned char>(byte);
    text += kDigits[bits >> 4];
    text += kDigits[bits & 0xF];
  }
  return text;
}

std::string UuidText(std::string_view bytes) {
  std::string text = HexText(bytes);
  for (const size_t at : {size_t{20}, size_t{16}, size_t{12}, size_t{8}}) text.insert(at, 1, '-');
  return text;
}

std::string_view WithoutPadding(std::string_view text) {
  const size_t last = text.find_last_not_of(' ');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void TakeMicroseconds(ColumnFeed& feed, int64_t microseconds) {
  if (microseconds == INT64_MAX || microseconds == INT64_MIN) return feed.TakeNull();  // infinity
  feed.TakeDate(base::Date::FromSeconds(FloorSeconds(microseconds) + kDaysBefore2000 * base::Date::kSecondsPerDay));
}

void TakeDays(ColumnFeed& feed, int32_t days) {
  if (days == INT32_MAX || days == INT32_MIN) return feed.TakeNull();  // infinity
  feed.TakeDate(base::Date::FromSeconds((days + kDaysBefore2000) * base::Date::kSecondsPerDay));
}

platform::Error NotOfItsType() {
  return {"Execute", "数据库服务器送来的数据无法识别，请检查服务器的版本", 0, platform::ErrorKind::kDamaged};
}

// "2024-05-06 07:08:09.5+08" without its zone, which is that of the session.
std::string_view WithoutZone(std::string_view text) {
  constexpr size_t kDay = 10;
  const size_t zone = text.find_first_of("+-", kDay);
  return zone == std::string_view::npos ? text : text.substr(0, zone);
}

void TakeRealText(ColumnFeed& feed, std::string_view text) {
  if (text == "NaN") return feed.TakeNull();
  if (text == "Infinity") return feed.TakeReal(HUGE_VAL);
  if (text == "-Infinity") return feed.TakeReal(-HUGE_VAL);
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc()) throw NotOfItsType();
  feed.TakeReal(number);
}

void TakeDecimalText(ColumnFeed& feed, std::string_view text) {
  const bool finite = text.find_first_of("Ny") == std::string_view::npos;
  const size_t point = text.find('.');
  const size_t decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
  if (finite && feed.cls() == ValueClass::kMoney) return feed.TakeText(text);
  if (finite && (feed.cls() == ValueClass::kInteger || feed.cls() == ValueClass::kBoolean)) {
    if (const auto whole = base::ParseInteger(text)) return feed.TakeWhole(*whole);
  } else if (finite && feed.cls() != ValueClass::kReal && decimals <= base::Money::kDecimals) {
    if (const auto amount = base::Money::Parse(text)) return feed.TakeScaled(amount->units(), base::Money::kDecimals);
  }
  TakeRealText(feed, text);
}

void TakeDateText(ColumnFeed& feed, std::string_view text) {
  const auto date = base::Date::Parse(WithoutZone(text));
  date ? feed.TakeDate(*date) : feed.TakeNull();
}

}  // namespace

ResultDecoder::Wire ResultDecoder::WireOf(Oid type) {
  static constexpr std::array<TypeRow, 23> kTypes = {
      {{16, Wire::kBoolean},      {17, Wire::kBytes},       {18, Wire::kText},
       {19, Wire::kText},         {20, Wire::kInt64},       {21, Wire::kInt16},
       {23, Wire::kInt32},        {25, Wire::kText},        {26, Wire::kObjectId},
       {114, Wire::kText},        {142, Wire::kText},       {700, Wire::kFloat},
       {701, Wire::kDouble},      {705, Wire::kText},       {790, Wire::kCoins},
       {1042, Wire::kPaddedText}, {1043, Wire::kText},      {1082, Wire::kDate},
       {1083, Wire::kTime},       {1114, Wire::kTimestamp}, {1184, Wire::kZonedTimestamp},
       {1700, Wire::kNumeric},    {2950, Wire::kUuid}}};
  const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const TypeRow& row) { return row.type == type; });
  return found == kTypes.end() ? Wire::kOther : found->wire;
}

ResultDecoder::ResultDecoder(const PGresult* first, std::span<const ValueClass> classes, std::span<ColumnSink> sinks)
    : format_(WireFormat::kText) {
  if (static_cast<size_t>(PQnfields(first)) != classes.size()) throw NotOfItsType();
  if (!classes.empty() && PQfformat(first, 0) == static_cast<int>(WireFormat::kBinary)) format_ = WireFormat::kBinary;
  for (size_t column = 0; column < classes.size(); ++column) {
    wires_.push_back(WireOf(PQftype(first, static_cast<int>(column))));
    feeds_.emplace_back(sinks[column], classes[column]);
  }
}

bool ResultDecoder::CanRead() const {
  return std::none_of(wires_.begin(), wires_.end(), [&](Wire wire) {
    if (format_ == WireFormat::kText) return wire == Wire::kCoins;
    return wire == Wire::kOther || wire == Wire::kZonedTimestamp;
  });
}

bool ResultDecoder::NeedsCoinDecimals() const {
  return std::find(wires_.begin(), wires_.end(), Wire::kCoins) != wires_.end();
}

void ResultDecoder::Take(const PGresult* portion) {
  for (size_t column = 0; column < feeds_.size(); ++column) TakeColumn(portion, column);
}

void ResultDecoder::Finish() {
  for (ColumnFeed& feed : feeds_) feed.Flush();
}

void ResultDecoder::TakeColumn(const PGresult* portion, size_t column) {
  ColumnFeed& feed = feeds_[column];
  const Wire wire = wires_[column];
  const int rows = PQntuples(portion);
  const int at = static_cast<int>(column);
  const bool plain_reals = format_ == WireFormat::kBinary && wire == Wire::kDouble && feed.cls() == ValueClass::kReal;
  for (int row = 0; row < rows; ++row) {
    const auto length = static_cast<size_t>(PQgetlength(portion, row, at));
    const char* bytes = PQgetvalue(portion, row, at);
    if (length == 0 && PQgetisnull(portion, row, at) != 0) {
      feed.TakeNull();
    } else if (plain_reals && length == sizeof(double)) {
      feed.TakeReal(WireDouble(bytes));
    } else if (format_ == WireFormat::kBinary) {
      TakeBinary(feed, wire, {bytes, length});
    } else {
      TakeTextual(feed, wire, {bytes, length});
    }
  }
}

namespace {

// The bytes, if there are as many as the type takes.
const char* Exactly(std::string_view bytes, size_t length) {
  if (bytes.size() != length) throw NotOfItsType();
  return bytes.data();
}

}  // namespace

void ResultDecoder::TakeBinary(ColumnFeed& feed, Wire wire, std::string_view bytes) const {
  switch (wire) {
    case Wire::kBoolean:
      return feed.TakeWhole(*Exactly(bytes, 1) != 0 ? 1 : 0);
    case Wire::kInt16:
      return feed.TakeWhole(WireSigned<int16_t>(Exactly(bytes, 2)));
    case Wire::kInt32:
      return feed.TakeWhole(WireSigned<int32_t>(Exactly(bytes, 4)));
    case Wire::kInt64:
      return feed.TakeWhole(WireSigned<int64_t>(Exactly(bytes, 8)));
    case Wire::kObjectId:
      return feed.TakeWhole(WireUnsigned<uint32_t>(Exactly(bytes, 4)));
    case Wire::kFloat:
      return feed.TakeReal(WireFloat(Exactly(bytes, 4)));
    case Wire::kDouble:
      return feed.TakeReal(WireDouble(Exactly(bytes, 8)));
    case Wire::kNumeric: {
      const auto value = NumericValue::FromWire(bytes);
      if (!value) throw NotOfItsType();
      return feed.TakeNumeric(*value);
    }
    case Wire::kCoins:
      return feed.TakeScaled(WireSigned<int64_t>(Exactly(bytes, 8)), coin_decimals_);
    case Wire::kDate:
      return TakeDays(feed, WireSigned<int32_t>(Exactly(bytes, 4)));
    case Wire::kTimestamp:
      return TakeMicroseconds(feed, WireSigned<int64_t>(Exactly(bytes, 8)));
    case Wire::kTime:  // of the zero date, as desktop databases have it
      return feed.TakeDate(base::Date::FromSeconds(FloorSeconds(WireSigned<int64_t>(Exactly(bytes, 8)))));
    case Wire::kUuid:
      return feed.TakeText(UuidText({Exactly(bytes, 16), 16}));
    case Wire::kBytes:
      return feed.TakeText("\\x" + HexText(bytes));
    case Wire::kPaddedText:
      return feed.TakeText(WithoutPadding(bytes));
    case Wire::kText:
    case Wire::kZonedTimestamp:
    case Wire::kOther:
      return feed.TakeText(bytes);
  }
}

void ResultDecoder::TakeTextual(ColumnFeed& feed, Wire wire, std::string_view text) {
  switch (wire) {
    case Wire::kBoolean:
      return feed.TakeWhole(text == "t" ? 1 : 0);
    case Wire::kInt16:
    case Wire::kInt32:
    case Wire::kInt64:
    case Wire::kObjectId: {
      const auto whole = base::ParseInteger(text);
      if (!whole) throw NotOfItsType();
      return feed.TakeWhole(*whole);
    }
    case Wire::kFloat:
    case Wire::kDouble:
      return TakeRealText(feed, text);
    case Wire::kNumeric:
      return TakeDecimalText(feed, text);
    case Wire::kTime:
      return TakeDateText(feed, "1899-12-30 " + std::string(text));
    case Wire::kDate:
    case Wire::kTimestamp:
    case Wire::kZonedTimestamp:
      return TakeDateText(feed, text);
    case Wire::kPaddedText:
      return feed.TakeText(WithoutPadding(text));
    case Wire::kText:
    case Wire::kOther:
    case Wire::kCoins:
    case Wire::kUuid:
    case Wire::kBytes:
      return feed.TakeText(text);
  }
}

}  // namespace stockbook::databases
