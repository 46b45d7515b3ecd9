// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interaction/events.h"

namespace stockbook::testing {

// Writes every event of a control down as one line, its name and its arguments, and then does what it is told.
class EventRecorder : public interaction::EventListener {
 public:
  void Process(int16_t indicator) override { Hear("Process " + std::to_string(indicator)); }
  void AfterLoaded() override { Hear("AfterLoaded"); }
  void AfterFormatted() override { Hear("AfterFormatted"); }
  void CommandExecute(const std::string& name, bool& cancel) override {
    if (cancels) cancel = true;
    Hear("CommandExecute " + name);
  }
  void Notify(const std::string& message) override { Hear("Notify " + message); }
  void AfterRowChanged() override { Hear("AfterRowChanged"); }
  void AfterRangeSelected() override { Hear("AfterRangeSelected"); }
  void MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override {
    Hear("MouseUp " + std::to_string(button) + " " + std::to_string(shift) + " " + std::to_string(static_cast<int>(x)) +
         " " + std::to_string(static_cast<int>(y)));
  }
  void FindMsg(const std::string& message) override { Hear("FindMsg " + message); }

  // What was heard since the last call.
  std::vector<std::string> Take() { return std::exchange(lines, {}); }
  // The arguments of the events of one name.
  std::vector<std::string> Of(std::string_view event) const {
    std::vector<std::string> arguments;
    for (const std::string& line : lines) {
      if (line.starts_with(event)) arguments.push_back(line.substr(std::min(line.size(), event.size() + 1)));
    }
    return arguments;
  }
  // Those of the last one; "" where there was none.
  std::string LastOf(std::string_view event) const {
    const std::vector<std::string> arguments = Of(event);
    return arguments.empty() ? std::string() : arguments.back();
  }

  std::vector<std::string> lines;
  bool cancels = false;  // the commands that ask
  std::function<void(const std::string& line)> on_hearing;

 protected:
  void Hear(const std::string& line) {
    lines.push_back(line);
    if (on_hearing) on_hearing(line);
  }
};

}  // namespace stockbook::testing
