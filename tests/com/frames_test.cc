// SPDX-License-Identifier: MIT
#include "com/window/frames.h"

#include <gtest/gtest.h>

#include <set>

#include "com/late.h"
#include "com/object/object_parts.h"
#include "com/window/back_buffer.h"

namespace stockbook::com {
namespace {

constexpr uint32_t kBlack = 0;
constexpr uint32_t kWhite = 0x00FFFFFF;

// The values of the pixels of the band of a control with a caption, 300 by 200 pixels large.
std::set<uint32_t> BandOf(const FrameLooks& looks) {
  const auto owner = testing::NewPicture(1);
  ObjectParts parts(*owner.get());
  parts.control().SetCaption("库存明细账");
  BackBuffer buffer;
  buffer.Resize({300, 200});
  GdiFonts fonts;
  const Frames frames(parts.control(), looks);
  const FrameLayout layout = frames.LayOut({300, 200}, 1, fonts);
  {
    GdiCanvas canvas(buffer.dc(), fonts, 1);
    frames.PaintHeader(canvas, layout);
  }
  GdiFlush();
  std::set<uint32_t> values;
  const sheet::Rect& caption = layout.caption;
  for (int y = caption.y; y < caption.bottom(); ++y) {
    for (int x = caption.x; x < caption.right(); ++x) values.insert(buffer.pixels().values[y * 300 + x] & kWhite);
  }
  return values;
}

TEST(Frames, HaveADarkCaptionOnTheControlsOwnBand) {
  const std::set<uint32_t> values = BandOf({{"Noto Sans CJK SC", 12}, 0, {}});
  EXPECT_EQ(*values.rbegin(), kWhite);
  EXPECT_LT(*values.begin(), 0x00808080u);
}

TEST(Frames, HaveALightCaptionOnABandOfHighContrast) {
  const std::set<uint32_t> values = BandOf({{"Noto Sans CJK SC", 12}, 0, platform::Colour{0}});
  EXPECT_EQ(*values.begin(), kBlack);
  EXPECT_GT(*values.rbegin(), 0x00808080u);
  EXPECT_FALSE(values.contains(kWhite));
}

}  // namespace
}  // namespace stockbook::com
