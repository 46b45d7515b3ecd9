// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "base/number.h"

namespace stockbook::base {
namespace {

// units / 10^decimals, written without zeros at the end.
std::string Written(QuickNumber number) {
  std::string digits = std::to_string(std::abs(number.units));
  const auto decimals = static_cast<size_t>(number.decimals);
  digits.insert(0, decimals >= digits.size() ? decimals + 1 - digits.size() : 0, '0');
  std::string fraction = digits.substr(digits.size() - decimals);
  fraction.erase(fraction.find_last_not_of('0') + 1);
  const std::string whole = digits.substr(0, digits.size() - decimals);
  return (number.units < 0 ? "-" : "") + whole + (fraction.empty() ? "" : "." + fraction);
}

TEST(QuickDigits, SayWhatTheDefaultTextSays) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> power(-3, 17);
  int known = 0;
  for (int round = 0; round < 200000; ++round) {
    double value = std::pow(10.0, power(random));
    if (round % 3 == 0) value = std::round(value * 100) / 100;
    if (round % 2 == 0) value = -value;
    const auto digits = QuickDigits(value);
    if (!digits) continue;
    ++known;
    ASSERT_EQ(Written(*digits), NumberText(value)) << value;
  }
  EXPECT_GT(known, 80000);
}

TEST(QuickDigits, KnowNothingOfSmallLargeAndStrangeNumbers) {
  for (const double value :
       {0.0, 0.5, 1e15, -1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(QuickDigits(value)) << value;
  }
}

}  // namespace
}  // namespace stockbook::base
