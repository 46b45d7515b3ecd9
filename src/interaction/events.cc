// SPDX-License-Identifier: MIT
#include "interaction/events.h"

#include <algorithm>

namespace stockbook::interaction {

void Events::AddListener(EventListener* listener) {
  if (std::find(listeners_.begin(), listeners_.end(), listener) == listeners_.end()) listeners_.push_back(listener);
}

void Events::RemoveListener(EventListener* listener) {
  std::replace(listeners_.begin(), listeners_.end(), listener, static_cast<EventListener*>(nullptr));
  if (!IsRaising()) std::erase(listeners_, nullptr);
}

void Events::Process(int16_t indicator) {
  Deliver([&](EventListener& listener) { listener.Process(indicator); });
}

void Events::AfterLoaded() {
  Deliver([](EventListener& listener) { listener.AfterLoaded(); });
}

void Events::AfterFormatted() {
  Deliver([](EventListener& listener) { listener.AfterFormatted(); });
}

void Events::CommandExecute(const std::string& command_name, bool& cancel) {
  Deliver([&](EventListener& listener) { listener.CommandExecute(command_name, cancel); });
}

void Events::Notify(const std::string& message) {
  Deliver([&](EventListener& listener) { listener.Notify(message); });
}

void Events::AfterRowChanged() {
  Deliver([](EventListener& listener) { listener.AfterRowChanged(); });
}

void Events::AfterRangeSelected() {
  Deliver([](EventListener& listener) { listener.AfterRangeSelected(); });
}

void Events::MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  Deliver([&](EventListener& listener) { listener.MouseUp(button, shift, x, y); });
}

void Events::FindMsg(const std::string& message) {
  Deliver([&](EventListener& listener) { listener.FindMsg(message); });
}

}  // namespace stockbook::interaction
