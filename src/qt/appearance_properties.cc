// SPDX-License-Identifier: MIT
#include "stockbook/qt/appearance_properties.h"

#include <limits>
#include <string>

#include "stockbook/platform/error.h"

namespace stockbook::qt {

int16_t AppearanceProperties::ToInteger(int number, const char* property) {
  if (number < std::numeric_limits<int16_t>::min() || number > std::numeric_limits<int16_t>::max()) {
    const std::string name = property;
    throw platform::Error("set " + name,
                          "溢出：" + name + " 必须在 -32768 与 32767 之间，收到的是 " + std::to_string(number) + "。");
  }
  return static_cast<int16_t>(number);
}

// A picture that was read and is written back keeps its identity, so that it stays sharp at every scale.
platform::PictureRef AppearanceProperties::PictureOf(const QPixmap& pixmap, const platform::PictureRef& now) {
  if (now != nullptr && PixmapOf(now).cacheKey() == pixmap.cacheKey()) return now;
  return MakePicture(pixmap);
}

}  // namespace stockbook::qt
