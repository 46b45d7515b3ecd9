// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/pixel_picture.h"
#include "platform/picture.h"

namespace stockbook::com {

// A picture that a host gave as an object.
class GivenPicture final : public PixelPicture {
 public:
  explicit GivenPicture(ComPtr<IPicture> picture);

  int WidthPx() const override { return width_px_; }
  int HeightPx() const override { return height_px_; }
  // The last few sizes are kept.
  const Pixels& At(int width, int height) const override;
  const ComPtr<IPicture>& picture() const { return picture_; }

 private:
  ComPtr<IPicture> picture_;
  int width_px_ = 0;
  int height_px_ = 0;
  mutable std::vector<Pixels> drawn_;
};

// The host's picture objects and the control's pictures, each as the other. An object that was handed over or taken is
// the same when it is asked for again; pictures that nobody holds any more are forgotten.
class PictureObjects {
 public:
  // No picture for null. Throws AutomationError for an object that is no picture.
  platform::PictureRef PictureOf(IUnknown* object);
  // Nothing for no picture. Throws AutomationError where the system cannot make an object.
  ComPtr<IPictureDisp> ObjectOf(const platform::PictureRef& picture);

 private:
  struct Pair {
    std::weak_ptr<const platform::Picture> picture;
    ComPtr<IPictureDisp> object;
  };
  void Forget();

  std::vector<Pair> pairs_;
};

}  // namespace stockbook::com
