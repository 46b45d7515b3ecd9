// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace stockbook::sheet {

// The shape that nearly all number formats have: digits with or without grouping, so many decimals at the least and at
// the most, a sign behind ("%"). It shows a number straight from its integer in some tens of machine instructions and
// says no to what it cannot show exactly as the digit-by-digit way does. A plain value.
struct PlainNumber {
  int least_whole = 1;
  int least_decimals = 0;
  int most_decimals = 6;
  int power = 0;  // of ten, that the number is multiplied with before it is shown; not below 0
  bool grouped = false;
  char behind = 0;  // 0 is nothing

  // What a shown number takes at the most.
  static constexpr size_t kMostBytes = 64;

  // Writes units / 10^decimals, rounded half away from zero, to the kMostBytes before `end`, up to it; returns its
  // first character, or nullptr when it is too large.
  char* Write(int64_t units, int decimals, char* end) const;
  // The same of the shortest decimal of at most 15 digits that stands for the double; nullptr also where the double
  // lies so near to the middle of two shown numbers that its digits have to decide.
  char* Write(double number, char* end) const;
  // As numbers are shown without a format: all their decimals.
  static char* WriteDefault(double number, char* end);

  // The same appended; false, with nothing appended, for nullptr.
  bool Append(int64_t units, int decimals, std::string& out) const;
  bool Append(double number, std::string& out) const;
};

}  // namespace stockbook::sheet
