// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <ocidl.h>

#include "com/automation/delegating.h"
#include "com/object/activation.h"
#include "com/object/event_raiser.h"

namespace stockbook::com {

// The object as a control of a form: what the form lends it, and when it must be silent.
class OleControl final : public Delegating<IOleControl> {
 public:
  OleControl(IUnknown& object, Activation& activation, EventRaiser& raiser)
      : Delegating(object), activation_(activation), raiser_(raiser) {}

  HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* information) override;
  HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) override;
  HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) override;
  HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override;

 private:
  Activation& activation_;
  EventRaiser& raiser_;
};

}  // namespace stockbook::com
