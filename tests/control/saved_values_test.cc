// SPDX-License-Identifier: MIT
// How single values of saved properties go through a bag.
#include <gtest/gtest.h>

#include "stockbook/platform/error.h"
#include "support/fake_surroundings.h"
#include "support/memory_bag.h"

namespace stockbook::control {
namespace {

using platform::BagValue;
using platform::PictureRef;
using testing::ControlOverFakes;

TEST(SavedProperties, DropTheFractionOfRowHeightsWhenSaved) {
  ControlOverFakes fakes;
  fakes.control->SetRowHeightMin(150.75F);
  fakes.control->SetRowHeightMax(900.25F);
  testing::MemoryBag bag;
  fakes.control->WriteProperties(bag);
  EXPECT_EQ(bag.Read("RowHeightMin", int32_t{0}), BagValue(int32_t{150}));
  EXPECT_EQ(bag.Read("RowHeightMax", int32_t{0}), BagValue(int32_t{900}));
  testing::MemoryBag empty;
  fakes.control->ReadProperties(empty);
  EXPECT_EQ(fakes.control->RowHeightMin(), 150.75F) << "an absent key leaves it";
  fakes.control->ReadProperties(bag);
  EXPECT_EQ(fakes.control->RowHeightMin(), 150);
  EXPECT_EQ(fakes.control->RowHeightMax(), 900);
}

TEST(SavedProperties, KeepAllBitsOfAColour) {
  ControlOverFakes fakes;
  fakes.control->SetBackColor(0x80000005);
  testing::MemoryBag bag;
  fakes.control->WriteProperties(bag);
  EXPECT_EQ(bag.Read("BackColor", int32_t{0}), BagValue(static_cast<int32_t>(0x80000005)));
  ControlOverFakes other;
  other.control->ReadProperties(bag);
  EXPECT_EQ(other.control->BackColor(), 0x80000005);
}

TEST(SavedProperties, RefuseAValueOfAnotherType) {
  ControlOverFakes fakes;
  class Wrong : public platform::PropertyBag {
   public:
    BagValue Read(std::string_view key, const BagValue& fallback) override {
      return key == "GridColor" ? BagValue(PictureRef()) : fallback;
    }
    void Write(std::string_view, const BagValue&) override {}
  } bag;
  EXPECT_THROW(fakes.control->ReadProperties(bag), platform::Error);
}

}  // namespace
}  // namespace stockbook::control
