// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"
#include "base/money.h"
#include "stockbook/import/csv_reader.h"
#include "stockbook/import/import_mapping.h"
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

// The reason in a few words for the summary line: "no date".
std::string_view SkipReasonText(SkipReason reason);

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
// an empty partner or project means none; without a price column the price is 0.
class MovementReader {
 public:
  MovementReader(const ImportMapping& mapping, Direction direction) : mapping_(mapping), direction_(direction) {}

  // Fills `movement` and returns nothing, or returns the reason why not; `explanation` then gives it for this line.
  std::optional<SkipReason> Read(const CsvRecord& record, Movement& movement, std::string& explanation) const;

 private:
  std::optional<SkipReason> CheckShape(const CsvRecord& record, std::string& explanation) const;
  std::optional<SkipReason> ReadNumbers(const CsvRecord& record, Movement& movement, std::string& explanation) const;

  const ImportMapping& mapping_;
  Direction direction_;
};

}  // namespace stockbook::app
