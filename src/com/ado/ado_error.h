// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

#include "stockbook/platform/error.h"

namespace stockbook::com {

// What a call through IDispatch that failed has left behind.
struct CallFailure {
  HRESULT code = S_OK;      // of the exception, where there is one
  std::string description;  // of the object's own, may be empty
};

// Takes an exception's fields over and frees them; `result` is that of the call.
CallFailure TakeFailure(HRESULT result, EXCEPINFO& exception);

// Whether the number says that the statement was refused, or what the engine could not do. A number that is unspecified
// is the engine's: nobody knows the answer to what was asked.
platform::ErrorKind KindOfAdoError(HRESULT code);

// One sentence for the user, followed by the object's own words and the number.
platform::Error ErrorOfFailure(const char* operation, const CallFailure& failure);

}  // namespace stockbook::com
