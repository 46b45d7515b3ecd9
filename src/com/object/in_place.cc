// SPDX-License-Identifier: MIT
#include "com/object/in_place.h"

#include "com/automation/guarded.h"

namespace stockbook::com {
namespace {

HRESULT GiveWindow(const Activation* activation, HWND* window) {
  if (window == nullptr) return E_POINTER;
  const ControlWindow* active = activation == nullptr ? nullptr : activation->window();
  *window = active == nullptr ? nullptr : active->handle();
  return *window == nullptr ? E_FAIL : S_OK;
}

}  // namespace

HRESULT InPlaceObject::GetWindow(HWND* window) { return GiveWindow(&activation_, window); }

HRESULT InPlaceObject::ContextSensitiveHelp(BOOL /*enter*/) { return E_NOTIMPL; }

HRESULT InPlaceObject::InPlaceDeactivate() {
  const auto pin = activation_.parts().Pin();
  return activation_.DeactivateInPlace();
}

HRESULT InPlaceObject::UIDeactivate() {
  const auto pin = activation_.parts().Pin();
  return activation_.DeactivateUi();
}

HRESULT InPlaceObject::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_INVALIDARG;
  const auto pin = activation_.parts().Pin();
  activation_.Place(*place, clip == nullptr ? *place : *clip);
  return S_OK;
}

HRESULT InPlaceObject::ReactivateAndUndo() { return INPLACE_E_NOTUNDOABLE; }

HRESULT InPlaceActiveObject::GetWindow(HWND* window) { return GiveWindow(activation_, window); }

HRESULT InPlaceActiveObject::ContextSensitiveHelp(BOOL /*enter*/) { return E_NOTIMPL; }

HRESULT InPlaceActiveObject::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  if (activation_ == nullptr) return S_FALSE;
  const auto pin = activation_->parts().Pin();
  HRESULT result = S_FALSE;
  const HRESULT guarded = Guarded(IID_IOleInPlaceActiveObject, [&] { result = activation_->TranslateKey(*message); });
  return FAILED(guarded) ? guarded : result;
}

HRESULT InPlaceActiveObject::OnFrameWindowActivate(BOOL /*activate*/) { return S_OK; }

HRESULT InPlaceActiveObject::OnDocWindowActivate(BOOL /*activate*/) { return S_OK; }

HRESULT InPlaceActiveObject::ResizeBorder(LPCRECT /*border*/, IOleInPlaceUIWindow* /*window*/, BOOL /*frame*/) {
  return S_OK;
}

HRESULT InPlaceActiveObject::EnableModeless(BOOL /*enable*/) { return S_OK; }

}  // namespace stockbook::com
