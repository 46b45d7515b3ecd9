// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "window/process.h"

namespace stockbook::window {

// How long an answer may take before a test fails: far longer than the slowest machine needs.
constexpr auto kPatience = std::chrono::minutes(5);

struct Place {
  int x = 0;
  int y = 0;
};

// A rectangle on the screen.
struct Area {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  Place Middle() const { return {x + width / 2, y + height / 2}; }
  Place RightEdge() const { return {x + width - 1, y + height / 2}; }
  Place BottomEdge() const { return {x + width / 2, y + height - 1}; }
};

// An X server without a physical screen on a free display, and the window of the test host on it.
class Desk {
 public:
  // The reason why this machine cannot have a desk; empty if it can.
  static std::string WhatIsMissing();

  Desk();

  // Sends the host a command and returns its answer as names and values.
  std::map<std::string, std::string> Ask(const std::string& command);
  // Sends real events; the words are arguments of xdotool.
  void Do(const std::vector<std::string>& words);
  // Gives the window the keyboard focus, releases all keys and buttons, and resets the host with the command.
  void StartAnew(const std::string& command);

 private:
  static std::string StartServer(std::unique_ptr<Process>& server);

  std::unique_ptr<Process> server_;
  Process::Variables display_;
  std::unique_ptr<Process> host_;
  Place rest_;
};

// A test with a desk; the tests of the executable share one.
class WindowTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  // The host's command for what the window shows.
  virtual std::string Scene() const { return "reset"; }
  void SetUp() override;
  void TearDown() override;

  void Key(const std::string& key) { Do({"key", key}); }
  void MoveTo(Place at);
  void Click(Place at, const std::string& button = "1");
  void ClickWith(const std::string& modifier, Place at);
  void DoubleClick(Place at);
  void Press(Place at);
  void Release() { Do({"mouseup", "1"}); }
  // Presses at `from`, drags to `to` through the middle between them, and keeps holding.
  void Pull(Place from, Place to);
  void Drag(Place from, Place to);

  Area Cell(int row, int column);
  std::string Now(const std::string& what) { return Ask("state")[what]; }
  std::string ColourAt(Place at);
  // Waits until the state has the value.
  ::testing::AssertionResult Becomes(const std::string& what, const std::string& value);
  template <typename Holds>
  ::testing::AssertionResult BecomesSo(const std::string& what, Holds holds) {
    std::string now;
    for (const Clock::time_point until = Clock::now() + kPatience; Clock::now() < until; Rest()) {
      now = Now(what);
      if (holds(now)) return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << what << " stays " << now;
  }

  std::map<std::string, std::string> Ask(const std::string& command);
  void Do(const std::vector<std::string>& words);

 private:
  static void Rest();
};

}  // namespace stockbook::window
