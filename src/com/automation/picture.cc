// SPDX-License-Identifier: MIT
#include "com/automation/picture.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "com/automation/automation_error.h"

namespace stockbook::com {
namespace {

constexpr int kHimetricPerInch = 2540;
constexpr int kPixelsPerInch = 96;  // device-independent ones
constexpr size_t kMostKept = 6;
constexpr int kMostPicturePixels = 8192;

int PixelsOf(LONG himetric) {
  return std::clamp(MulDiv(std::abs(himetric), kPixelsPerInch, kHimetricPerInch), 1, kMostPicturePixels);
}

// A bitmap of 32 bits a pixel whose values can be read and written, selected into a device context of its own.
class DibSection {
 public:
  DibSection(int width, int height) : context_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    bitmap_ = context_ == nullptr ? nullptr : CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap_ != nullptr) before_ = SelectObject(context_, bitmap_);
    values_ = static_cast<uint32_t*>(bits);
  }
  ~DibSection() {
    if (before_ != nullptr) SelectObject(context_, before_);
    if (bitmap_ != nullptr) DeleteObject(bitmap_);
    if (context_ != nullptr) DeleteDC(context_);
  }
  DibSection(const DibSection&) = delete;
  DibSection& operator=(const DibSection&) = delete;

  bool IsValid() const { return bitmap_ != nullptr; }
  HDC context() const { return context_; }
  uint32_t* values() const { return values_; }
  HBITMAP Detach() {
    SelectObject(context_, std::exchange(before_, nullptr));
    return std::exchange(bitmap_, nullptr);
  }

 private:
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  uint32_t* values_ = nullptr;
};

// The values that the picture has when it is drawn over a background of one value everywhere.
std::vector<uint32_t> DrawnOver(IPicture& picture, int width, int height, uint32_t background) {
  const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
  DibSection section(width, height);
  if (!section.IsValid()) return {};
  std::fill_n(section.values(), count, background);
  OLE_XSIZE_HIMETRIC from_width = 0;
  OLE_YSIZE_HIMETRIC from_height = 0;
  picture.get_Width(&from_width);
  picture.get_Height(&from_height);
  // Pictures count from the bottom.
  picture.Render(section.context(), 0, 0, width, height, 0, from_height, from_width, -from_height, nullptr);
  GdiFlush();
  return {section.values(), section.values() + count};
}

// Drawn over black and over white, a pixel tells how opaque it is: whatever the object is made of, what of it lets the
// background through differs by as much.
Pixels WithAlpha(IPicture& picture, int width, int height) {
  Pixels pixels{width, height, DrawnOver(picture, width, height, 0)};
  const std::vector<uint32_t> over_white = DrawnOver(picture, width, height, 0x00FFFFFF);
  if (pixels.values.empty() || over_white.size() != pixels.values.size()) return {};
  for (size_t at = 0; at < pixels.values.size(); ++at) {
    const uint32_t black = pixels.values[at] & 0x00FFFFFF;
    const auto through = static_cast<int>(over_white[at] >> 8 & 0xFF) - static_cast<int>(black >> 8 & 0xFF);
    pixels.values[at] = static_cast<uint32_t>(255 - std::clamp(through, 0, 255)) << 24 | black;
  }
  return pixels;
}

ComPtr<IPictureDisp> NewObject(PICTDESC& description) {
  ComPtr<IPictureDisp> object;
  Expect(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE, object.Put()));
  return object;
}

// An icon, because a bitmap would lose what is transparent.
ComPtr<IPictureDisp> IconOf(const Pixels& pixels) {
  DibSection colours(pixels.width, pixels.height);
  if (!colours.IsValid()) throw std::bad_alloc();
  for (size_t at = 0; at < pixels.values.size(); ++at) {
    const uint32_t value = pixels.values[at];
    const uint32_t alpha = value >> 24;
    // Icons have their colours as they are, not multiplied by alpha.
    const auto plain = [&](unsigned shift) {
      return alpha == 0 ? 0u : std::min(255u, (value >> shift & 0xFF) * 255 / alpha) << shift;
    };
    colours.values()[at] = alpha << 24 | plain(16) | plain(8) | plain(0);
  }
  const size_t stride = static_cast<size_t>((pixels.width + 15) / 16 * 2);
  const std::vector<uint8_t> mask(stride * static_cast<size_t>(pixels.height));
  ICONINFO info{TRUE, 0, 0, CreateBitmap(pixels.width, pixels.height, 1, 1, mask.data()), colours.Detach()};
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = CreateIconIndirect(&info);
  DeleteObject(info.hbmMask);
  DeleteObject(info.hbmColor);
  if (description.icon.hicon == nullptr) throw std::bad_alloc();
  return NewObject(description);
}

}  // namespace

GivenPicture::GivenPicture(ComPtr<IPictureDisp> object, ComPtr<IPicture> picture)
    : object_(std::move(object)), picture_(std::move(picture)) {
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  picture_->get_Width(&width);
  picture_->get_Height(&height);
  width_px_ = PixelsOf(width);
  height_px_ = PixelsOf(height);
}

const Pixels& GivenPicture::At(int width, int height) const {
  const int w = std::clamp(width, 1, kMostPicturePixels);
  const int h = std::clamp(height, 1, kMostPicturePixels);
  const auto found = std::find_if(drawn_.begin(), drawn_.end(),
                                  [&](const Pixels& pixels) { return pixels.width == w && pixels.height == h; });
  if (found != drawn_.end()) return *found;
  if (drawn_.size() == kMostKept) drawn_.erase(drawn_.begin());
  return drawn_.emplace_back(WithAlpha(*picture_, w, h));
}

void PictureObjects::Forget() {
  std::erase_if(given_, [](const auto& picture) { return picture.expired(); });
  std::erase_if(made_, [](const Made& made) { return made.picture.expired(); });
}

platform::PictureRef PictureObjects::PictureOf(IUnknown* object) {
  if (object == nullptr) return nullptr;
  Forget();
  const ComPtr<IUnknown> given(object);
  auto disp = given.As<IPictureDisp>();
  auto picture = given.As<IPicture>();
  if (!picture || !disp) throw AutomationError(CTL_E_INVALIDPICTURE, "图片无效：这个对象不是图片。");
  for (const Made& made : made_) {
    if (made.object.get() == disp.get()) return made.picture.lock();
  }
  for (const auto& known : given_) {
    const auto other = known.lock();
    if (other != nullptr && other->object().get() == disp.get()) return other;
  }
  auto taken = std::make_shared<GivenPicture>(std::move(disp), std::move(picture));
  given_.push_back(taken);
  return taken;
}

ComPtr<IPictureDisp> PictureObjects::ObjectOf(const platform::PictureRef& picture) {
  if (picture == nullptr) return {};
  Forget();
  if (const auto* given = dynamic_cast<const GivenPicture*>(picture.get())) return given->object();
  for (const Made& made : made_) {
    if (made.picture.lock() == picture) return made.object;
  }
  const auto* drawable = dynamic_cast<const PixelPicture*>(picture.get());
  if (drawable == nullptr) return {};
  const Pixels& pixels = drawable->At(picture->WidthPx(), picture->HeightPx());
  if (pixels.IsEmpty()) return {};
  made_.push_back({picture, IconOf(pixels)});
  return made_.back().object;
}

}  // namespace stockbook::com
