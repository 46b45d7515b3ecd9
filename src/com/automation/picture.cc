// SPDX-License-Identifier: MIT
#include "com/automation/picture.h"

#include <algorithm>
#include <memory>

#include "com/automation/automation_error.h"

namespace stockbook::com {
namespace {

constexpr int kHimetricPerInch = 2540;
constexpr int kPixelsPerInch = 96;  // device-independent ones

int PixelsOf(OLE_XSIZE_HIMETRIC himetric) {
  return std::max(1, MulDiv(static_cast<int>(std::abs(himetric)), kPixelsPerInch, kHimetricPerInch));
}

}  // namespace

GivenPicture::GivenPicture(ComPtr<IPicture> picture) : picture_(std::move(picture)) {
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  picture_->get_Width(&width);
  picture_->get_Height(&height);
  width_px_ = PixelsOf(width);
  height_px_ = PixelsOf(height);
}

platform::PictureRef MakePicture(IUnknown* object) {
  if (object == nullptr) return nullptr;
  auto picture = ComPtr<IUnknown>(object).As<IPicture>();
  if (!picture) throw AutomationError(CTL_E_INVALIDPICTURE, "图片无效：这个对象不是图片。");
  return std::make_shared<GivenPicture>(std::move(picture));
}

ComPtr<IPictureDisp> ObjectOf(const platform::PictureRef& picture) {
  const auto* own = dynamic_cast<const HostPicture*>(picture.get());
  return own == nullptr ? ComPtr<IPictureDisp>() : own->Object();
}

}  // namespace stockbook::com
