// SPDX-License-Identifier: MIT
#include "stockbook/import/import_movement.h"

#include <algorithm>
#include <array>

#include "base/digits.h"
#include "base/text.h"
#include "stockbook/command/spreadsheet_text.h"
#include "stockbook/import/import_date.h"
#include "stockbook/import/import_decimal.h"

namespace stockbook::app {
namespace {

struct ReasonText {
  std::string_view english;
  std::string_view chinese;
};

// In the order of SkipReason.
constexpr std::array<ReasonText, kSkipReasonCount> kReasonTexts{{
    {"empty line", "空行"},
    {"wrong quotes", "引号不配对"},
    {"too long", "过长"},
    {"wrong number of fields", "列数不符"},
    {"no product", "没有商品"},
    {"no date", "日期有误"},
    {"no quantity", "数量有误"},
    {"no price", "单价有误"},
    {"amount out of range", "金额过大"},
}};

std::string Shortened(std::string_view text) {
  constexpr size_t kMost = 40;
  const std::string_view front = base::LeftCharacters(text, kMost);
  return std::string(front) + (front.size() < text.size() ? "..." : "");
}

// Why the text of a number field is none.
ImportSentence NoNumber(const ImportSentence& field, std::string_view given, bool is_ambiguous) {
  const std::string text = Shortened(given);
  const std::string english = "the " + field.english + " '" + text + "'";
  const std::string chinese = field.chinese + "“" + text + "”";
  if (is_ambiguous)
    return {english + " may have thousands or decimals behind its comma; say which by --decimal point or comma",
            chinese + "中的逗号可能是千分位也可能是小数点，请选定小数点"};
  return {english + " is no number of up to 15 digits", chinese + "不是 15 位以内的数字"};
}

// A number column with gaps is often exported as "17850.0"; the key is 17850.
std::string_view WithoutZeroFraction(std::string_view text) {
  const size_t point = text.find('.');
  if (point == std::string_view::npos || point == 0 || point + 1 == text.size()) return text;
  const bool whole = std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(point), base::IsDigit);
  const bool zeros = text.find_first_not_of('0', point + 1) == std::string_view::npos;
  return whole && zeros ? text.substr(0, point) : text;
}

}  // namespace

ImportSentence SkipReasonText(SkipReason reason) {
  const ReasonText& text = kReasonTexts[static_cast<size_t>(reason)];
  return {std::string(text.english), std::string(text.chinese)};
}

std::optional<SkipReason> MovementReader::CheckShape(const CsvRecord& record, ImportSentence& explanation) const {
  switch (record.fault) {
    case CsvFault::TextAfterQuote:
      explanation = {"text stands behind a closing quote; double the quotes within quoted text",
                     "后引号之后还有文字，引号之内的引号应写两遍"};
      return SkipReason::BadQuotes;
    case CsvFault::UnclosedQuote:
      explanation = {"a quote is never closed; close it, or double it if it is text",
                     "引号没有配对，请补上后引号，引号本身是文字时应写两遍"};
      return SkipReason::BadQuotes;
    case CsvFault::TooLong:
      explanation = {"it is longer than 1 MiB, which is mostly a quote that is never closed",
                     "超过 1 MiB，多半是引号没有配对"};
      return SkipReason::TooLong;
    case CsvFault::None:
      break;
  }
  if (record.IsBlank() && mapping_.column_count() > 1) {
    explanation = {"it is empty", "空行"};
    return SkipReason::EmptyLine;
  }
  if (record.fields.size() == mapping_.column_count()) return std::nullopt;
  if (record.line_count > 1) {
    const std::string last = std::to_string(record.line + record.line_count - 1);
    explanation = {"a quote in it is closed only in line " + last +
                       ", and the number of its fields is wrong; close the quote, or double it if it is text",
                   "其中的引号到第 " + last + " 行才配对，且列数不符，请补上后引号，引号本身是文字时应写两遍"};
    return SkipReason::BadQuotes;
  }
  const std::string count = std::to_string(record.fields.size());
  const std::string wanted = std::to_string(mapping_.column_count());
  explanation = {"it has " + count + " fields where the header line has " + wanted,
                 "有 " + count + " 列，而标题行有 " + wanted + " 列"};
  return SkipReason::FieldCount;
}

std::optional<ScaledDecimal> MovementReader::ReadDecimal(std::string_view text, bool& is_ambiguous) const {
  // Nearly every number is as a program writes it.
  if (mark_ != DecimalMark::kComma) {
    if (const auto plain = ParseDecimal(text)) return plain;
  }
  const ImportNumber number = PlainNumber(text, mark_);
  is_ambiguous = number.is_ambiguous;
  return is_ambiguous ? std::nullopt : ParseDecimal(number.plain);
}

std::optional<SkipReason> MovementReader::ReadNumbers(const CsvRecord& record, Movement& movement,
                                                      ImportSentence& explanation) const {
  const std::string_view quantity_text = mapping_.Text(ImportField::Quantity, record.fields);
  bool is_ambiguous = false;
  const auto decimal = ReadDecimal(quantity_text, is_ambiguous);
  const auto quantity = decimal ? QuantityOf(*decimal) : std::nullopt;
  if (!decimal) {
    explanation = NoNumber({"quantity", "数量"}, quantity_text, is_ambiguous);
    return SkipReason::NoQuantity;
  }
  if (!quantity) {
    const std::string text = Shortened(quantity_text);
    explanation = {"the quantity '" + text + "' is out of range: up to 999999999 with up to 6 decimals",
                   "数量“" + text + "”超出范围：最大 999999999，最多 6 位小数"};
    return SkipReason::NoQuantity;
  }
  const std::string_view price_text = mapping_.Text(ImportField::Price, record.fields);
  const auto price = mapping_.Has(ImportField::Price) ? ReadDecimal(price_text, is_ambiguous) : ScaledDecimal{};
  if (!price) {
    explanation = NoNumber({"price", "单价"}, price_text, is_ambiguous);
    return SkipReason::NoPrice;
  }
  movement.returned = *quantity < Quantity();
  movement.quantity = movement.returned ? -*quantity : *quantity;
  movement.price = price->ToDouble();
  try {
    movement.amount = AmountOf(movement.quantity, *price);
  } catch (const base::ArithmeticError&) {
    explanation = {"quantity times price is beyond 922337203685477.5807", "数量乘单价超过 922337203685477.5807"};
    return SkipReason::AmountOutOfRange;
  }
  return std::nullopt;
}

std::optional<SkipReason> MovementReader::Read(const CsvRecord& record, Movement& movement,
                                               ImportSentence& explanation) const {
  if (const auto reason = CheckShape(record, explanation)) return reason;
  const auto text = [&](ImportField field) { return CellText(base::CleanUtf8(mapping_.Text(field, record.fields))); };
  movement.product = text(ImportField::Product);
  if (movement.product.empty()) {
    explanation = {"the product is empty", "没有商品编号"};
    return SkipReason::NoProduct;
  }
  const auto date = ReadImportDate(mapping_.Text(ImportField::Date, record.fields), explanation);
  if (!date) return SkipReason::NoDate;
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
