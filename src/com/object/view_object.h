// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleidl.h>

#include "com/automation/delegating.h"
#include "com/object/activation.h"

namespace stockbook::com {

// The object for a form that draws it itself: on its own window, a printer or into a metafile.
class ViewObject final : public Delegating<IViewObject2> {
 public:
  ViewObject(IUnknown& object, Activation& activation) : Delegating(object), activation_(activation) {}

  HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* how, DVTARGETDEVICE* device, HDC target, HDC dc,
                                 LPCRECTL bounds, LPCRECTL metafile_bounds, BOOL(STDMETHODCALLTYPE* go_on)(ULONG_PTR),
                                 ULONG_PTR argument) override;
  HRESULT STDMETHODCALLTYPE GetColorSet(DWORD aspect, LONG index, void* how, DVTARGETDEVICE* device, HDC target,
                                        LOGPALETTE** palette) override;
  HRESULT STDMETHODCALLTYPE Freeze(DWORD aspect, LONG index, void* how, DWORD* freeze) override;
  HRESULT STDMETHODCALLTYPE Unfreeze(DWORD freeze) override;
  HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL extent) override;

 private:
  Activation& activation_;
};

}  // namespace stockbook::com
