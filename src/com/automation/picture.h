// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <memory>
#include <vector>

#include "com/automation/com_ptr.h"
#include "com/automation/pixel_picture.h"
#include "stockbook/platform/picture.h"

namespace stockbook::com {

// A picture that a host gave as an object.
class GivenPicture final : public PixelPicture {
 public:
  GivenPicture(ComPtr<IPictureDisp> object, ComPtr<IPicture> picture);

  int WidthPx() const override { return width_px_; }
  int HeightPx() const override { return height_px_; }
  // The last few sizes are kept.
  const Pixels& At(int width, int height) const override;
  const ComPtr<IPictureDisp>& object() const { return object_; }

 private:
  ComPtr<IPictureDisp> object_;
  ComPtr<IPicture> picture_;  // the same one, which draws
  int width_px_ = 0;
  int height_px_ = 0;
  mutable std::vector<Pixels> drawn_;
};

// The host's picture objects and the control's pictures, each as the other. An object that was handed over or taken is
// the same when it is asked for again. The host's are held by their pictures alone, the control's own objects as long
// as these pictures live.
class PictureObjects {
 public:
  // No picture for null. Throws AutomationError for an object that is no picture.
  platform::PictureRef PictureOf(IUnknown* object);
  // Nothing for no picture. Throws AutomationError where the system cannot make an object.
  ComPtr<IPictureDisp> ObjectOf(const platform::PictureRef& picture);

 private:
  struct Made {
    std::weak_ptr<const platform::Picture> picture;
    ComPtr<IPictureDisp> object;
  };
  // Those whose pictures nobody holds any more.
  void Forget();

  std::vector<std::weak_ptr<const GivenPicture>> given_;
  std::vector<Made> made_;
};

}  // namespace stockbook::com
