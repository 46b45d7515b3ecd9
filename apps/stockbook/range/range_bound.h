// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stockbook::app {

// An accounting period, named after its month: 2025 and 3 are "202503". It need not begin with its month.
struct PeriodKey {
  int year = 0;
  int month = 1;

  // The key of a period as the journal has it: its first four and its last two characters, as its caption. Nothing if
  // these are no month.
  static std::optional<PeriodKey> Of(std::string_view period);
  // The period `months` later, or earlier where they are negative.
  PeriodKey Plus(int months) const;
  // "2025年03月".
  std::string Caption() const;
  // "2025-03".
  std::string Text() const;

  auto operator<=>(const PeriodKey&) const = default;
};

// One end of a range of a journal: a whole accounting period, or a day, counted from the zero date of base::Date.
struct RangeBound {
  enum class Unit { kPeriod, kDay };

  Unit unit = Unit::kPeriod;
  PeriodKey period;
  int64_t day = 0;

  static RangeBound OfPeriod(PeriodKey period) { return {Unit::kPeriod, period, 0}; }
  static RangeBound OfDay(int64_t day) { return {Unit::kDay, {}, day}; }

  // "2025年03月" or "2025-03-15".
  std::string Caption() const;
  // What ReadBounds reads: "2025-03" or "2025-03-15".
  std::string Text() const;

  bool operator==(const RangeBound&) const = default;
};

// What one word says: a day is one bound twice, a quarter is its first and its last period.
struct BoundPair {
  RangeBound first;
  RangeBound last;

  bool operator==(const BoundPair&) const = default;
};

// Reads a day (2025-03-15, 2025/3/15, 20250315, 2025年3月15日), a period (2025-03, 202503, 2025年3月), a quarter
// (2025Q1, 2025-Q1) or a year (2025, 2025年), with blanks around it. Nothing when it is none of them.
std::optional<BoundPair> ReadBounds(std::string_view text);

}  // namespace stockbook::app
