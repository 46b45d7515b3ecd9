// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "interaction/events.h"
#include "journal/error_text.h"

namespace stockbook::interaction {

// Performs a step of a user action, which has no caller to throw at: errors, including those of listeners, are reported
// through Notify, and the next step follows.
template <typename Step>
void TellErrors(Events& events, Step step) {
  // If a listener fails again, that is not reported.
  const auto tell = [&](const std::string& message) {
    try {
      events.Notify(message);
    } catch (...) {
    }
  };
  try {
    step();
  } catch (...) {
    std::string room;
    tell(journal::TextOfError("处理表格操作的事件时发生未知错误。", room));
  }
}

}  // namespace stockbook::interaction
