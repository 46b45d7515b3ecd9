// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "com/window/canvas.h"
#include "com/window/gdi_font.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/platform/text_metrics.h"
#include "stockbook/sheet/geometry/rect.h"

namespace stockbook::com {

// Where the parts of the control are, in device pixels of its window.
struct FrameLayout {
  double scale = 1;
  sheet::Rect whole;
  sheet::Rect header;   // the band with the caption
  sheet::Rect icon;     // of the journal type, within the band; empty if there is none
  sheet::Rect caption;  // within the band
  sheet::Rect mark;     // within the band; empty if there is none
  sheet::Rect body;     // the frame around the sheet
  sheet::Rect sheet;
};

// What the container of the control lends it.
struct FrameLooks {
  platform::Font font;               // of the container; the caption's is made of it
  platform::Colour desk_colour = 0;  // behind the frames
  // In the place of the header band's own, where the user has asked for high contrast.
  std::optional<platform::Colour> band_colour;
};

FrameLooks DefaultFrameLooks();

// The frames around the grid: the outer one (C1EDesk), the header band (C1EHeader) with the picture of the journal
// type, the caption and the mark, and the frame of the body (C1EBody). A caption that is too long ends in an ellipsis.
class Frames {
 public:
  Frames(const control::Stockbook& control, FrameLooks looks) : control_(control), looks_(std::move(looks)) {}

  FrameLayout LayOut(sheet::Size size, double scale, GdiFonts& fonts) const;
  // The caption if it does not fit; the tooltip shows all of it.
  std::string CutCaption(const FrameLayout& layout, GdiFonts& fonts) const;
  // The band alone, and everything around the sheet.
  void PaintHeader(GdiCanvas& canvas, const FrameLayout& layout) const;
  void PaintAround(GdiCanvas& canvas, const FrameLayout& layout) const;
  platform::Colour BandColour() const { return looks_.band_colour.value_or(control_.C1EHeader().back_color); }

 private:
  platform::Font CaptionFont() const;
  std::string CaptionText() const;

  const control::Stockbook& control_;
  FrameLooks looks_;
};

}  // namespace stockbook::com
