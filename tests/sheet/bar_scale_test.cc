// SPDX-License-Identifier: MIT
#include "sheet/view/bar_scale.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace stockbook::sheet {
namespace {

TEST(BarScale, IsExactWhileTheContentsFit) {
  for (const int64_t most : {int64_t{0}, int64_t{1}, int64_t{440'000'000}, int64_t{(1 << 30) - 1}}) {
    const BarScale scale(most);
    EXPECT_EQ(scale.MostOnBar(), most);
    for (const int64_t position : {int64_t{0}, most / 3, most})
      EXPECT_EQ(scale.FromBar(scale.ToBar(position)), position);
  }
}

TEST(BarScale, MeetsBothEndsOfContentsThatAreLonger) {
  for (const int64_t most :
       {int64_t{1} << 30, int64_t{20'000'000} * 1320, int64_t{1} << 60, std::numeric_limits<int64_t>::max()}) {
    const BarScale scale(most);
    EXPECT_LE(scale.MostOnBar(), 1 << 30);
    EXPECT_EQ(scale.ToBar(0), 0);
    EXPECT_EQ(scale.FromBar(0), 0);
    EXPECT_EQ(scale.ToBar(most), scale.MostOnBar());
    EXPECT_EQ(scale.FromBar(scale.MostOnBar()), most);
  }
}

TEST(BarScale, KeepsWhatIsOutsideWithinItsEnds) {
  const BarScale scale(1000);
  EXPECT_EQ(scale.ToBar(-5), 0);
  EXPECT_EQ(scale.ToBar(2000), 1000);
  EXPECT_EQ(BarScale(-7).MostOnBar(), 0);
}

}  // namespace
}  // namespace stockbook::sheet
