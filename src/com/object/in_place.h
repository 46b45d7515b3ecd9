// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleidl.h>

#include "com/automation/delegating.h"
#include "com/object/activation.h"

namespace stockbook::com {

// The object's window for the form that it is active in.
class InPlaceObject final : public Delegating<IOleInPlaceObject> {
 public:
  InPlaceObject(IUnknown& object, Activation& activation) : Delegating(object), activation_(activation) {}

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
  HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE UIDeactivate() override;
  HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) override;
  HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override;

 private:
  Activation& activation_;
};

// The same for the frame, which hands it the keys before it uses them itself. It is made before the activation, which
// introduces it to the frame.
class InPlaceActiveObject final : public Delegating<IOleInPlaceActiveObject> {
 public:
  using Delegating::Delegating;
  void SetActivation(Activation& activation) { activation_ = &activation; }

  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override;
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL activate) override;
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL activate) override;
  HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;

 private:
  Activation* activation_ = nullptr;
};

}  // namespace stockbook::com
