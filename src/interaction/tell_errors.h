// SPDX-License-Identifier: MIT
#pragma once

#include <exception>

#include "interaction/events.h"

namespace stockbook::interaction {

// Does a step of what the user asked for, which has no caller to throw at: an error, be it a listener's, is told
// through Notify, and the next step follows.
template <typename Step>
void TellErrors(Events& events, Step step) {
  // A listener that fails again is not told of it.
  const auto tell = [&](const char* message) {
    try {
      events.Notify(message);
    } catch (...) {
    }
  };
  try {
    step();
  } catch (const std::exception& error) {
    tell(error.what());
  } catch (...) {
    tell("处理表格操作的事件时发生未知错误。");
  }
}

}  // namespace stockbook::interaction
