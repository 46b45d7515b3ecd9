// SPDX-License-Identifier: MIT
// Keys, mouse, wheel and a host that calls in at any time, by the hundred thousand.
#include <gtest/gtest.h>

#include "sheet/gesture_world.h"

namespace stockbook::sheet {
namespace {

using test::GestureWorld;

// `check_every`: the number of gestures between two full checks.
void Perform(GestureWorld& world, int gestures, int check_every, int paint_every) {
  for (int gesture = 1; gesture <= gestures; ++gesture) {
    ASSERT_NO_THROW(world.Act()) << "gesture " << gesture;
    world.TakeDamage();
    if (gesture % check_every == 0) {
      ASSERT_TRUE(world.Holds()) << "after gesture " << gesture;
    }
    if (gesture % paint_every == 0) {
      ASSERT_TRUE(world.PaintsWithinTheView()) << "after gesture " << gesture;
    }
  }
}

class Gestures : public ::testing::TestWithParam<unsigned> {};

TEST_P(Gestures, TwentyThousandLeaveEverythingWholeOnASheetOfSomeThousandRows) {
  GestureWorld world(GetParam(), 3000, 36);
  Perform(world, 20000, 4, 100);
}

TEST_P(Gestures, EachLeavesASmallSheetWhole) {
  GestureWorld world(GetParam() + 100, 12, 3);
  Perform(world, 4000, 1, 10);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Gestures, ::testing::Range(1U, 6U));

TEST(GesturesOnAMillionRows, LeaveEverythingWhole) {
  GestureWorld world(7, 1000000, 36);
  Perform(world, 5000, 10, 250);
}

}  // namespace
}  // namespace stockbook::sheet
