// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "journal/error_text.h"
#include "journal/inventory.h"
#include "stockbook/platform/error.h"

namespace stockbook::control {

// The result of `read`, or the empty value of its type after an error, for members that never fail. What only a
// statement or a cell refused is the neutral result that a host expects; any other error is told, once.
template <typename Read>
auto OrNeutral(const journal::Tell& tell, Read read) -> decltype(read()) {
  constexpr const char* kUnknown = "读取时发生未知错误，结果为空：请重试，或重新读入。";
  std::string room;
  const std::string* message = nullptr;
  try {
    return read();
  } catch (const platform::Error& error) {
    if (!error.IsOfEngine()) return decltype(read())();
    message = &journal::TextOfError(kUnknown, room);
  } catch (...) {
    message = &journal::TextOfError(kUnknown, room);
  }
  try {
    if (tell) tell(*message);
  } catch (...) {
    // A listener that fails is not told of its own error.
  }
  return decltype(read())();
}

}  // namespace stockbook::control
