// SPDX-License-Identifier: MIT
#include "support/memory_bag.h"

#include <gtest/gtest.h>

#include "stockbook/platform/error.h"
#include "support/fake_ports.h"

namespace stockbook::testing {
namespace {

TEST(MemoryBag, KeepsTheOrderOfTheFirstWriting) {
  MemoryBag bag;
  bag.Write("b", int32_t{1});
  bag.Write("a", int32_t{2});
  bag.Write("b", int32_t{3});
  EXPECT_EQ(bag.entries(), (std::vector<MemoryBag::Entry>{{"b", int32_t{3}}, {"a", int32_t{2}}}));
  bag.Remove("b");
  bag.Remove("none");
  EXPECT_EQ(bag.entries(), (std::vector<MemoryBag::Entry>{{"a", int32_t{2}}}));
}

TEST(MemoryBag, GivesTheFallbackForAKeyThatIsNotThereToTheLetter) {
  MemoryBag bag;
  bag.Write("OutlineBar", int32_t{4});
  EXPECT_EQ(bag.Read("Outlinebar", int32_t{9}), BagValue(int32_t{9}));
  EXPECT_EQ(bag.Read("OutlineBar", int32_t{9}), BagValue(int32_t{4}));
}

TEST(MemoryBag, ReadsAsTheFallbacksTypeOrFails) {
  MemoryBag bag;
  bag.Write("small", int16_t{-7});
  bag.Write("large", int32_t{32768});
  bag.Write("low", int32_t{-32768});
  bag.Write("none", PictureRef());
  bag.Write("picture", MakePicture("any"));
  EXPECT_EQ(bag.Read("small", int32_t{0}), BagValue(int32_t{-7}));
  EXPECT_EQ(bag.Read("low", int16_t{0}), BagValue(int16_t{-32768}));
  EXPECT_THROW(bag.Read("large", int16_t{0}), platform::Error);
  EXPECT_THROW(bag.Read("picture", int32_t{0}), platform::Error);
  EXPECT_THROW(bag.Read("small", PictureRef()), platform::Error);
  const auto fallback = MakePicture("any");
  EXPECT_EQ(bag.Read("none", PictureRef(fallback)), BagValue(PictureRef())) << "a picture that is none";
}

}  // namespace
}  // namespace stockbook::testing
