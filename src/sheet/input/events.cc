// SPDX-License-Identifier: MIT
#include "sheet/input/events.h"

#include "sheet/geometry/scale.h"

namespace stockbook::sheet {

platform::GridMouseEvent ToGridEvent(const MouseEvent& event, double scale) {
  const auto twips = [&](int pixels) { return static_cast<float>(pixels * kTwipsPerPixel / scale); };
  return {event.button, event.modifiers, twips(event.at.x), twips(event.at.y)};
}

}  // namespace stockbook::sheet
