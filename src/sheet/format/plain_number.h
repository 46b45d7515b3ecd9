// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace stockbook::sheet {

// The shape that nearly all number formats have: digits with or without grouping, a least and a most number of
// decimals, and a sign after them ("%"). It shows a number straight from its integer in some tens of machine
// instructions and refuses those that it cannot show exactly as NumberFormat does digit by digit. A plain value.
struct PlainNumber {
  int least_whole = 1;
  int least_decimals = 0;
  int most_decimals = 6;
  int power = 0;  // of ten, that the number is multiplied with before it is shown; not below 0
  bool grouped = false;
  char suffix = 0;  // 0 is nothing

  // The most bytes that a shown number takes.
  static constexpr size_t kMostBytes = 64;

  // Writes units / 10^decimals, rounded half away from zero, to the kMostBytes before `end`, up to it; returns its
  // first character, or nullptr when it is too large.
  char* Write(int64_t units, int decimals, char* end) const;
  // The same of the shortest decimal of at most 15 digits that stands for the double; nullptr also for a double
  // so near the middle between two shown numbers that its digits have to decide.
  char* Write(double number, char* end) const;
  // As numbers are shown without a format: all their decimals.
  static char* WriteDefault(double number, char* end);

  // The same appended; false, with nothing appended, for nullptr.
  bool Append(int64_t units, int decimals, std::string& out) const;
  bool Append(double number, std::string& out) const;
};

}  // namespace stockbook::sheet
