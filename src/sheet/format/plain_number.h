// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace stockbook::sheet {

// The shape of nearly all number formats: digits with or without grouping, a minimum and maximum number of decimals,
// and a suffix ("%"). It formats a number directly from its integer in a few dozen machine instructions, and refuses
// numbers that it cannot format exactly as NumberFormat does. A plain value.
struct PlainNumber {
  int least_whole = 1;
  int least_decimals = 0;
  int most_decimals = 6;
  int power = 0;  // of ten, that the number is multiplied with before it is shown; not below 0
  bool grouped = false;
  char suffix = 0;  // 0 is nothing

  // The maximum size of a formatted number, in bytes.
  static constexpr size_t kMostBytes = 64;

  // Writes units / 10^decimals, rounded half away from zero, into the kMostBytes before `end`; returns the first
  // character, or nullptr if the number is too large.
  char* Write(int64_t units, int decimals, char* end) const;
  // The same for the double's shortest decimal of at most 15 digits; nullptr also for a double so close to the middle
  // between two shown numbers that its digits have to decide.
  char* Write(double number, char* end) const;
  // How numbers are shown without a format: with all their decimals.
  static char* WriteDefault(double number, char* end);

  // The same, appended; returns false and appends nothing for nullptr.
  bool Append(int64_t units, int decimals, std::string& out) const;
  bool Append(double number, std::string& out) const;
};

}  // namespace stockbook::sheet
