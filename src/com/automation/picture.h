// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include "com/automation/com_ptr.h"
#include "platform/picture.h"

namespace stockbook::com {

// A picture that a host can be handed as an object, always the same one. The control's own icons derive from it, too.
class HostPicture : public platform::Picture {
 public:
  virtual ComPtr<IPictureDisp> Object() const = 0;
};

// A picture that a host gave; it is drawn by IPicture::Render.
class GivenPicture final : public HostPicture {
 public:
  explicit GivenPicture(ComPtr<IPicture> picture);

  int WidthPx() const override { return width_px_; }
  int HeightPx() const override { return height_px_; }
  ComPtr<IPictureDisp> Object() const override { return picture_.As<IPictureDisp>(); }
  const ComPtr<IPicture>& picture() const { return picture_; }

 private:
  ComPtr<IPicture> picture_;
  int width_px_ = 0;
  int height_px_ = 0;
};

// The host's picture; no picture for null. Throws AutomationError for an object that is
// no picture.
platform::PictureRef MakePicture(IUnknown* object);
// The picture as an object for the host; nothing for no picture.
ComPtr<IPictureDisp> ObjectOf(const platform::PictureRef& picture);

}  // namespace stockbook::com
