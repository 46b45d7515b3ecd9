// SPDX-License-Identifier: MIT
#include "interaction/events.h"

#include <algorithm>

namespace stockbook::interaction {

void Events::AddListener(EventListener* listener) {
  std::vector<EventListener*>& listeners = state_->listeners;
  if (std::find(listeners.begin(), listeners.end(), listener) == listeners.end()) listeners.push_back(listener);
}

void Events::RemoveListener(EventListener* listener) {
  std::replace(state_->listeners.begin(), state_->listeners.end(), listener, static_cast<EventListener*>(nullptr));
  state_->removed = true;
  if (!IsRaising()) state_->Compact();
}

void Events::State::Compact() {
  std::erase(listeners, nullptr);
  removed = false;
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
