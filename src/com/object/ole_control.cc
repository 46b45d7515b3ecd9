// SPDX-License-Identifier: MIT
#include "com/object/ole_control.h"

#include "com/automation/guarded.h"

namespace stockbook::com {

// It has no access keys; Return stands for a double click, so a form's default button does not get it.
HRESULT OleControl::GetControlInfo(CONTROLINFO* information) {
  if (information == nullptr) return E_POINTER;
  information->hAccel = nullptr;
  information->cAccel = 0;
  information->dwFlags = CTRLINFO_EATS_RETURN;
  return S_OK;
}

HRESULT OleControl::OnMnemonic(MSG* /*message*/) { return S_OK; }

HRESULT OleControl::OnAmbientPropertyChange(DISPID /*property*/) {
  const auto pin = activation_.parts().Pin();
  return Guarded(IID_IOleControl, [&] { activation_.ReadAmbient(); });
}

HRESULT OleControl::FreezeEvents(BOOL freeze) {
  freeze != FALSE ? raiser_.Freeze() : raiser_.Thaw();
  return S_OK;
}

}  // namespace stockbook::com
