// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "sheet/paint/canvas.h"

namespace stockbook::sheet {

// Collects rectangles by colour and texts by font and colour, so that the canvas switches each only once a pass. There
// are few of each, so a list is searched. Things that overlap must not be collected together: batches are drawn in no
// particular order. Buffers are reused from pane to pane.
class Batches {
 public:
  void Fill(platform::Colour colour, const Rect& rect) {
    if (!rect.IsEmpty()) FillsOf(colour).push_back(rect);
  }
  std::vector<TextItem>& TextsOf(uint16_t font, platform::Colour colour) {
    for (TextBatch& batch : texts_) {
      if (batch.font == font && batch.colour == colour) return batch.items;
    }
    texts_.push_back({font, colour, {}});
    return texts_.back().items;
  }
  std::vector<PictureItem>& pictures() { return pictures_; }

  // Draws and drops what was collected: fills, then pictures, then texts.
  void Draw(Canvas& canvas, const std::vector<platform::Font>& fonts) {
    DrawFills(canvas);
    if (!pictures_.empty()) canvas.DrawPictures(pictures_);
    pictures_.clear();
    for (TextBatch& batch : texts_) {
      if (!batch.items.empty()) canvas.DrawTexts(fonts[batch.font], batch.colour, batch.items);
      batch.items.clear();
    }
  }
  void DrawFills(Canvas& canvas) {
    for (FillBatch& batch : fills_) {
      if (!batch.rects.empty()) canvas.FillRects(batch.colour, batch.rects);
      batch.rects.clear();
    }
  }

 private:
  struct FillBatch {
    platform::Colour colour = 0;
    std::vector<Rect> rects;
  };
  struct TextBatch {
    uint16_t font = 0;
    platform::Colour colour = 0;
    std::vector<TextItem> items;
  };

  std::vector<Rect>& FillsOf(platform::Colour colour) {
    for (FillBatch& batch : fills_) {
      if (batch.colour == colour) return batch.rects;
    }
    fills_.push_back({colour, {}});
    return fills_.back().rects;
  }

  std::vector<FillBatch> fills_;
  std::vector<TextBatch> texts_;
  std::vector<PictureItem> pictures_;
};

}  // namespace stockbook::sheet
