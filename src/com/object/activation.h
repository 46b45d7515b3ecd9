// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include <memory>

#include "com/automation/com_ptr.h"
#include "com/object/ambient.h"
#include "com/object/object_parts.h"
#include "com/window/control_window.h"
#include "com/window/window_host.h"
#include "stockbook/platform/control_site.h"

namespace stockbook::com {

// How far the form has taken the object: it has no window, has one in the form's, or has the keyboard as well.
enum class ActivationState { kLoaded, kInPlace, kUiActive };

// The object's place on a form: the form's site, the size, and the window while it is active in place. The classes that
// answer the form (OleObject, InPlaceObject, ...) share it. Whatever it calls may release the object, so that they hold
// a reference to it meanwhile.
class Activation final : private WindowHost, private platform::ControlSite {
 public:
  // `active` is the interface that the form hands keys to; it outlives the activation.
  Activation(ObjectParts& parts, IOleInPlaceActiveObject& active);
  ~Activation() override;

  ObjectParts& parts() { return parts_; }
  const ComPtr<IOleClientSite>& site() const { return site_; }
  // The window goes with the old site.
  void SetSite(IOleClientSite* site);
  const Ambient& ambient() const { return ambient_; }
  void ReadAmbient();
  // In 1/100 millimetres.
  SIZEL extent() const { return extent_; }
  void SetExtent(const SIZEL& extent);
  FrameLooks Looks() const;

  ActivationState state() const { return state_; }
  ControlWindow* window() const { return window_.get(); }
  HRESULT ActivateInPlace();
  HRESULT ActivateUi();
  HRESULT DeactivateUi();
  HRESULT DeactivateInPlace();
  // The place in the form's window, and what of it is to be seen.
  void Place(const RECT& place, const RECT& clip);
  void Close(DWORD save);
  // Whether the key is the sheet's or the form's: S_OK if one of them has taken it.
  HRESULT TranslateKey(const MSG& message);

  IOleAdviseHolder* advise_holder() const { return advise_holder_.get(); }
  IOleAdviseHolder** PutAdviseHolder() { return advise_holder_.PutTyped(); }
  // The one listener for views, and what it asked for.
  struct ViewListener {
    ComPtr<IAdviseSink> sink;
    DWORD aspects = 0;
    DWORD flags = 0;
  };
  ViewListener& view_listener() { return view_listener_; }

 private:
  // WindowHost
  ComPtr<IUnknown> Pin() override { return parts_.Pin(); }
  void FocusChanged(Focus focus) override;
  void SystemChanged() override { ReadAmbient(); }
  // platform::ControlSite
  void PropertyChanged(std::string_view key) override;
  void FrameChanged() override;

  HRESULT OpenWindow(const ComPtr<IOleInPlaceSite>& place);
  void CloseWindow();
  void TellViewListener();
  bool IsDirty() const;

  ObjectParts& parts_;
  IOleInPlaceActiveObject& active_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleInPlaceUIWindow> document_;
  ComPtr<IOleAdviseHolder> advise_holder_;
  ViewListener view_listener_;
  Ambient ambient_;
  SIZEL extent_;
  ActivationState state_ = ActivationState::kLoaded;
  std::shared_ptr<ControlWindow> window_;
};

}  // namespace stockbook::com
