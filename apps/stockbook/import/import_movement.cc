// SPDX-License-Identifier: MIT
#include "stockbook/import/import_movement.h"

#include <algorithm>

#include "base/digits.h"
#include "base/text.h"
#include "stockbook/command/spreadsheet_text.h"
#include "stockbook/import/import_decimal.h"

namespace stockbook::app {
namespace {

// Years outside this range are typing errors, and each would create periods of its own.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2199;

constexpr std::array<std::string_view, kSkipReasonCount> kReasonTexts{
    "empty line", "wrong quotes", "too long", "wrong number of fields", "no product",
    "no date",    "no quantity",  "no price", "amount out of range"};

std::string Shown(std::string_view text) {
  constexpr size_t kMost = 40;
  const std::string_view front = base::LeftCharacters(text, kMost);
  return "'" + std::string(front) + (front.size() < text.size() ? "...'" : "'");
}

// A number column with gaps is often exported as "17850.0"; the key is 17850.
std::string_view WithoutZeroFraction(std::string_view text) {
  const size_t point = text.find('.');
  if (point == std::string_view::npos || point == 0 || point + 1 == text.size()) return text;
  const bool whole = std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(point), base::IsDigit);
  const bool zeros = text.find_first_not_of('0', point + 1) == std::string_view::npos;
  return whole && zeros ? text.substr(0, point) : text;
}

std::optional<base::Date> ReadDate(std::string_view text) {
  const auto date = base::Date::Parse(text);
  if (!date) return std::nullopt;
  const int year = date->parts().year;
  return year < kFirstYear || year > kLastYear ? std::nullopt : date;
}

}  // namespace

std::string_view SkipReasonText(SkipReason reason) { return kReasonTexts[static_cast<size_t>(reason)]; }

std::optional<SkipReason> MovementReader::CheckShape(const CsvRecord& record, std::string& explanation) const {
  switch (record.fault) {
    case CsvFault::TextAfterQuote:
      explanation = "text stands behind a closing quote; double the quotes within quoted text";
      return SkipReason::BadQuotes;
    case CsvFault::UnclosedQuote:
      explanation = "a quote is never closed; close it, or double it if it is text";
      return SkipReason::BadQuotes;
    case CsvFault::TooLong:
      explanation = "it is longer than 1 MiB, which is mostly a quote that is never closed";
      return SkipReason::TooLong;
    case CsvFault::None:
      break;
  }
  if (record.IsBlank() && mapping_.column_count() > 1) {
    explanation = "it is empty";
    return SkipReason::EmptyLine;
  }
  if (record.fields.size() != mapping_.column_count() && record.line_count > 1) {
    explanation = "a quote in it is closed only in line " + std::to_string(record.line + record.line_count - 1) +
                  ", and the number of its fields is wrong; close the quote, or double it if it is text";
    return SkipReason::BadQuotes;
  }
  if (record.fields.size() != mapping_.column_count()) {
    explanation = "it has " + std::to_string(record.fields.size()) + " fields where the header line has " +
                  std::to_string(mapping_.column_count());
    return SkipReason::FieldCount;
  }
  return std::nullopt;
}

std::optional<SkipReason> MovementReader::ReadNumbers(const CsvRecord& record, Movement& movement,
                                                      std::string& explanation) const {
  const std::string_view quantity_text = mapping_.Text(ImportField::Quantity, record.fields);
  const auto decimal = ParseDecimal(quantity_text);
  const auto quantity = decimal ? QuantityOf(*decimal) : std::nullopt;
  if (!quantity) {
    explanation =
        "the quantity " + Shown(quantity_text) +
        (decimal ? " is out of range: up to 999999999 with up to 6 decimals" : " is no number of up to 15 digits");
    return SkipReason::NoQuantity;
  }
  const std::string_view price_text = mapping_.Text(ImportField::Price, record.fields);
  const auto price = mapping_.Has(ImportField::Price) ? ParseDecimal(price_text) : ScaledDecimal{};
  if (!price) {
    explanation = "the price " + Shown(price_text) + " is no number of up to 15 digits";
    return SkipReason::NoPrice;
  }
  movement.returned = *quantity < Quantity();
  movement.quantity = movement.returned ? -*quantity : *quantity;
  movement.price = price->ToDouble();
  try {
    movement.amount = AmountOf(movement.quantity, *price);
  } catch (const base::ArithmeticError&) {
    explanation = "quantity times price is beyond 922337203685477.5807";
    return SkipReason::AmountOutOfRange;
  }
  return std::nullopt;
}

std::optional<SkipReason> MovementReader::Read(const CsvRecord& record, Movement& movement,
                                               std::string& explanation) const {
  if (const auto reason = CheckShape(record, explanation)) return reason;
  const auto text = [&](ImportField field) { return CellText(base::CleanUtf8(mapping_.Text(field, record.fields))); };
  movement.product = text(ImportField::Product);
  if (movement.product.empty()) {
    explanation = "the product is empty";
    return SkipReason::NoProduct;
  }
  const std::string_view date_text = mapping_.Text(ImportField::Date, record.fields);
  const auto date = ReadDate(date_text);
  if (!date) {
    explanation = "the date " + Shown(date_text) +
                  " is none of the years 1900 to 2199, written yyyy-MM-dd or yyyy-MM-dd HH:mm:ss";
    return SkipReason::NoDate;
  }
  movement.date = *date;
  if (const auto reason = ReadNumbers(record, movement, explanation)) return reason;
  const bool received = (direction_ == Direction::Receipt) != movement.returned;
  movement.direction = received ? Direction::Receipt : Direction::Issue;
  movement.name = text(ImportField::Name);
  movement.bill = text(ImportField::Bill);
  movement.partner = CellText(base::CleanUtf8(WithoutZeroFraction(mapping_.Text(ImportField::Partner, record.fields))));
  movement.project = text(ImportField::Project);
  return std::nullopt;
}

}  // namespace stockbook::app
