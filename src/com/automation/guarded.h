// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "com/automation/automation_error.h"

namespace stockbook::com {

// The exception being handled as a result, with its number and description as the thread's error information for the
// interface. To be called from a catch clause; it does not throw.
HRESULT ReportCurrentException(REFIID interface_id) noexcept;
// E_POINTER, with a description, for a call that leaves out where its result goes or what it works on.
HRESULT RefuseNull(REFIID interface_id) noexcept;

// Runs the body of an interface's function. No C++ exception leaves it: it becomes the result, see above. What an
// earlier failure left behind does not describe one of this call.
template <typename Body>
HRESULT Guarded(REFIID interface_id, Body&& body) noexcept {
  SetErrorInfo(0, nullptr);
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (...) {
    return ReportCurrentException(interface_id);
  }
}

}  // namespace stockbook::com
