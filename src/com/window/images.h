// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "stockbook/platform/images.h"

namespace stockbook::com {

// The control's own icons (com/window/icons.h) by key, 16 device-independent pixels square; the mark has 6.
class WindowImages : public platform::Images {
 public:
  WindowImages();
  platform::PictureRef Find(std::string_view key) const override;

 private:
  std::map<std::string, platform::PictureRef, std::less<>> pictures_;
};

}  // namespace stockbook::com
