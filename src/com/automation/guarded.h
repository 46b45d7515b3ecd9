// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <utility>

#include "com/automation/automation_error.h"

namespace stockbook::com {

// The exception being handled as a result, with its number and description as the thread's error information for the
// interface. To be called from a catch clause; it does not throw.
HRESULT ReportCurrentException(REFIID interface_id) noexcept;

// Runs the body of an interface's function. No C++ exception leaves it: it becomes the result, see above.
template <typename Body>
HRESULT Guarded(REFIID interface_id, Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (...) {
    return ReportCurrentException(interface_id);
  }
}

}  // namespace stockbook::com
