// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "stockbook/base/api.h"
#include "stockbook/platform/images.h"

namespace stockbook::qt {

// The control's own icons (qt/icons.h) by key, 16 logical pixels square; the mark has 6.
class STOCKBOOK_API QtImages : public platform::Images {
 public:
  // Makes all of them; they are drawn when they are shown.
  QtImages();
  platform::PictureRef Find(std::string_view key) const override;

 private:
  std::map<std::string, platform::PictureRef, std::less<>> pictures_;
};

}  // namespace stockbook::qt
