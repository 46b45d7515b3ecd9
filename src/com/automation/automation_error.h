// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace stockbook::com {

// A failure with the number that automation has for it, and a sentence for the user.
class AutomationError : public std::runtime_error {
 public:
  AutomationError(HRESULT code, const std::string& message) : std::runtime_error(message), code_(code) {}
  HRESULT code() const { return code_; }

 private:
  HRESULT code_;
};

// What a function that returned a failing result has left behind: its own description, or that of the system.
AutomationError ErrorOfCall(HRESULT result);
// Throws ErrorOfCall unless the call succeeded.
void Expect(HRESULT result);

}  // namespace stockbook::com
