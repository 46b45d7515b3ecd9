// SPDX-License-Identifier: MIT
#include "com/object/view_object.h"

#include <algorithm>
#include <utility>

#include "com/automation/guarded.h"
#include "com/window/frames.h"
#include "com/window/sheet_surface.h"
#include "stockbook/sheet/view/view.h"

namespace stockbook::com {
namespace {

constexpr double kHundredthsPerPixel = 2540.0 / 96.0;

// A rectangle of a device context, and the device context's state, which is restored. A metafile has no pixels: its own
// units stay. Everywhere else one unit becomes one pixel, so that lines are sharp.
class DrawingPlace {
 public:
  DrawingPlace(HDC dc, const RECTL& bounds) : dc_(dc) {
    SaveDC(dc_);
    const DWORD kind = GetObjectType(dc);
    metafile_ = kind == OBJ_METADC || kind == OBJ_ENHMETADC;
    POINT corners[] = {{bounds.left, bounds.top}, {bounds.right, bounds.bottom}};
    if (!metafile_) {
      LPtoDP(dc_, corners, 2);
      ModifyWorldTransform(dc_, nullptr, MWT_IDENTITY);
      SetMapMode(dc_, MM_TEXT);
      SetWindowOrgEx(dc_, 0, 0, nullptr);
      SetViewportOrgEx(dc_, 0, 0, nullptr);
    }
    size_ = {static_cast<int>(std::abs(corners[1].x - corners[0].x)),
             static_cast<int>(std::abs(corners[1].y - corners[0].y))};
    MoveBy({static_cast<int>(std::min(corners[0].x, corners[1].x)),
            static_cast<int>(std::min(corners[0].y, corners[1].y))});
  }
  ~DrawingPlace() { RestoreDC(dc_, -1); }
  DrawingPlace(const DrawingPlace&) = delete;
  DrawingPlace& operator=(const DrawingPlace&) = delete;

  sheet::Size size() const { return size_; }
  // Moves the device context's origin, which begins at the corner of the rectangle.
  void MoveBy(sheet::Point distance) {
    if (metafile_) {
      OffsetWindowOrgEx(dc_, -distance.x, -distance.y, nullptr);
    } else {
      OffsetViewportOrgEx(dc_, distance.x, distance.y, nullptr);
    }
  }

 private:
  HDC dc_;
  bool metafile_ = false;
  sheet::Size size_;
};

Medium MediumOf(HDC dc) { return GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY ? Medium::kScreen : Medium::kPaper; }

void DrawControl(Activation& activation, HDC dc, const RECTL& bounds) {
  DrawingPlace place(dc, bounds);
  const sheet::Size size = place.size();
  if (size.width <= 0 || size.height <= 0) return;
  const double natural = std::max(1.0, static_cast<double>(activation.extent().cx) / kHundredthsPerPixel);
  const double scale = size.width / natural;
  GdiFonts fonts;
  const Medium medium = MediumOf(dc);
  FrameLooks looks = activation.Looks();
  if (medium == Medium::kPaper) looks.band_colour.reset();
  const Frames frames(activation.parts().control(), std::move(looks));
  const FrameLayout layout = frames.LayOut(size, scale, fonts);
  {
    GdiCanvas canvas(dc, fonts, scale);
    frames.PaintAround(canvas, layout);
    frames.PaintHeader(canvas, layout);
  }
  if (layout.sheet.IsEmpty()) return;
  place.MoveBy({layout.sheet.x, layout.sheet.y});
  const sheet::View view(activation.parts().fg().view(), {layout.sheet.width, layout.sheet.height}, scale);
  GdiCanvas canvas(dc, fonts, scale);
  PaintSheet(view, {0, 0, layout.sheet.width, layout.sheet.height}, medium, canvas);
}

}  // namespace

HRESULT ViewObject::Draw(DWORD aspect, LONG /*index*/, void* /*how*/, DVTARGETDEVICE* /*device*/, HDC /*target*/,
                         HDC dc, LPCRECTL bounds, LPCRECTL /*metafile_bounds*/,
                         BOOL(STDMETHODCALLTYPE* /*go_on*/)(ULONG_PTR), ULONG_PTR /*argument*/) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (dc == nullptr || bounds == nullptr) return E_INVALIDARG;
  const auto pin = activation_.parts().Pin();
  return Guarded(IID_IViewObject, [&] { DrawControl(activation_, dc, *bounds); });
}

HRESULT ViewObject::GetColorSet(DWORD /*aspect*/, LONG /*index*/, void* /*how*/, DVTARGETDEVICE* /*device*/,
                                HDC /*target*/, LOGPALETTE** palette) {
  if (palette != nullptr) *palette = nullptr;
  return E_NOTIMPL;
}

HRESULT ViewObject::Freeze(DWORD /*aspect*/, LONG /*index*/, void* /*how*/, DWORD* freeze) {
  if (freeze != nullptr) *freeze = 0;
  return E_NOTIMPL;
}

HRESULT ViewObject::Unfreeze(DWORD /*freeze*/) { return E_NOTIMPL; }

HRESULT ViewObject::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  activation_.view_listener() = {ComPtr<IAdviseSink>(sink), aspects, flags};
  if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) sink->OnViewChange(DVASPECT_CONTENT, -1);
  return S_OK;
}

HRESULT ViewObject::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  const Activation::ViewListener& listener = activation_.view_listener();
  if (aspects != nullptr) *aspects = listener.aspects;
  if (flags != nullptr) *flags = listener.flags;
  if (sink != nullptr) *sink = ComPtr<IAdviseSink>(listener.sink).Detach();
  return S_OK;
}

HRESULT ViewObject::GetExtent(DWORD aspect, LONG /*index*/, DVTARGETDEVICE* /*device*/, LPSIZEL extent) {
  if (extent == nullptr) return E_POINTER;
  *extent = {};
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *extent = activation_.extent();
  return S_OK;
}

}  // namespace stockbook::com
