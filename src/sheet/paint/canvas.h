// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/grid_types.h"
#include "platform/picture.h"
#include "platform/text_metrics.h"
#include "sheet/geometry/rect.h"
#include "sheet/geometry/text_measure.h"

namespace stockbook::sheet {

enum class HorizontalAlign : uint8_t { kLeft, kCenter, kRight };

// What happens to a line that is wider than its rectangle: it ends in an ellipsis, or is cut at the edge.
enum class TextOverflow : uint8_t { kEllipsis, kClip };

// One line of text (never a line feed in it). It stands centred between top and bottom of the rectangle, whose height
// is the line's height; `clip` tells that it may reach over the rectangle's height and must be cut there.
struct TextItem {
  std::string_view text;
  Rect rect;
  HorizontalAlign align = HorizontalAlign::kLeft;
  TextOverflow overflow = TextOverflow::kEllipsis;
  bool clip = false;
};

// A picture scaled into the rectangle, or repeated at its own size (in device pixels) from the left top of it on.
struct PictureItem {
  const platform::Picture* picture = nullptr;
  Rect rect;
  bool tile = false;
};

// What the sheet paints onto: integer device pixels, origin at the sheet's left top corner, opaque colours. Calls come
// in batches of one colour or one font, a dozen or two a frame, so that an implementation switches brushes, pens and
// fonts once a call; texts and pictures are valid during the call only. A toolkit implements this and nothing else of
// painting. The painter asks for the width of few texts a frame, mostly of the same font in a row.
class Canvas : public TextMeasure {
 public:
  // Everything until the matching PopClip is cut at the rectangle, and at those pushed before.
  virtual void PushClip(const Rect& rect) = 0;
  virtual void PopClip() = 0;

  // Lines, node signs and frames come as thin rectangles too.
  virtual void FillRects(platform::Colour colour, std::span<const Rect> rects) = 0;
  virtual void DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const TextItem> items) = 0;
  virtual void DrawPictures(std::span<const PictureItem> items) = 0;
};

}  // namespace stockbook::sheet
