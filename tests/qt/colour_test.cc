// SPDX-License-Identifier: MIT
#include "stockbook/qt/colour.h"

#include <gtest/gtest.h>

namespace stockbook::qt {
namespace {

TEST(Colour, HasRedInItsLowestByteAndBlueInItsThird) {
  EXPECT_EQ(ToQColor(0x00112233), QColor(0x33, 0x22, 0x11));
  EXPECT_EQ(FromQColor(QColor(0x33, 0x22, 0x11)), 0x00112233U);
  EXPECT_EQ(FromQColor(ToQColor(0x00E2D2C7)), 0x00E2D2C7U);
}

}  // namespace
}  // namespace stockbook::qt
