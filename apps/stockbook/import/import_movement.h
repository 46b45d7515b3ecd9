// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "stockbook/base/date.h"
#include "stockbook/base/money.h"
#include "stockbook/import/import_mapping.h"
#include "stockbook/import/import_number.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/import/table_reader.h"
#include "stockbook/inventory/inventory_records.h"

namespace stockbook::app {

// Why a line of the table is not imported.
enum class SkipReason {
  EmptyLine,
  BadQuotes,
  TooLong,
  FieldCount,
  NoProduct,
  NoDate,
  NoQuantity,
  NoPrice,
  AmountOutOfRange
};
inline constexpr size_t kSkipReasonCount = 9;

// The reason in a few words for a summary: "no date" and 日期有误.
ImportSentence SkipReasonText(SkipReason reason);

// One parsed and validated line of the table. Texts are well-formed UTF-8.
struct Movement {
  Direction direction = Direction::Issue;
  bool returned = false;  // the quantity was negative, so the direction is reversed
  std::string product;
  std::string name;
  std::string bill;
  std::string partner;
  std::string project;
  base::Date date;
  Quantity quantity;  // never negative
  double price = 0;
  base::Money amount;
};

// Reads records as movements of one direction. A quantity of 0 is imported as a movement of nothing with the amount 0;
// an empty partner or project means none; without a price column the price is 0. The mapping must outlive the reader.
class MovementReader {
 public:
  MovementReader(const ImportMapping& mapping, Direction direction, DecimalMark mark = DecimalMark::kPoint)
      : mapping_(mapping), direction_(direction), mark_(mark) {}

  // Fills `movement` and returns nothing, or returns the reason why not; `explanation` then gives it for this line.
  std::optional<SkipReason> Read(const CsvRecord& record, Movement& movement, ImportSentence& explanation) const;

 private:
  std::optional<SkipReason> CheckShape(const CsvRecord& record, ImportSentence& explanation) const;
  std::optional<SkipReason> ReadNumbers(const CsvRecord& record, Movement& movement, ImportSentence& explanation) const;
  std::optional<ScaledDecimal> ReadDecimal(std::string_view text, bool& is_ambiguous) const;

  const ImportMapping& mapping_;
  Direction direction_;
  DecimalMark mark_;
};

}  // namespace stockbook::app
