// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"
#include "stockbook/platform/text_metrics.h"
#include "stockbook/sheet/geometry/rect.h"
#include "stockbook/sheet/geometry/text_measure.h"

namespace stockbook::sheet {

enum class HorizontalAlign : uint8_t { kLeft, kCenter, kRight };

// A line that is wider than its rectangle ends in an ellipsis or is cut at the edge.
enum class TextOverflow : uint8_t { kEllipsis, kClip };

// One line of text, without line feeds. It is centred vertically in the rectangle, which is as high as the line unless
// `clip` is set: then the line may be higher and must be cut at the rectangle.
struct TextItem {
  std::string_view text;
  Rect rect;
  HorizontalAlign align = HorizontalAlign::kLeft;
  TextOverflow overflow = TextOverflow::kEllipsis;
  bool clip = false;
};

// A picture, scaled to the rectangle or repeated at its own size in device pixels from the top left corner.
struct PictureItem {
  const platform::Picture* picture = nullptr;
  Rect rect;
  bool tile = false;
};

// What the sheet is painted on: integer device pixels, origin at the view's top left corner, opaque colours. Calls come
// in batches of one colour or one font, a dozen or two a frame, so that an implementation switches brushes, pens and
// fonts once a call. Texts and pictures are valid only during the call. This is all of painting that a toolkit
// implements. The painter measures few texts a frame, mostly in the same font.
class Canvas : public TextMeasure {
 public:
  // Everything until the matching PopClip is clipped to the rectangle and to those pushed before.
  virtual void PushClip(const Rect& rect) = 0;
  virtual void PopClip() = 0;

  // Lines, node signs and frames are thin rectangles.
  virtual void FillRects(platform::Colour colour, std::span<const Rect> rects) = 0;
  virtual void DrawTexts(const platform::Font& font, platform::Colour colour, std::span<const TextItem> items) = 0;
  virtual void DrawPictures(std::span<const PictureItem> items) = 0;
};

}  // namespace stockbook::sheet
