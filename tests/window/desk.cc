// SPDX-License-Identifier: MIT
#include "window/desk.h"

#include <sstream>
#include <stdexcept>
#include <thread>

namespace stockbook::window {
namespace {

std::unique_ptr<Desk>& SharedDesk() {
  static std::unique_ptr<Desk> desk;
  return desk;
}

// Removes the desk before the program ends, whatever the tests did.
class ClearsTheDesk : public ::testing::Environment {
 public:
  void TearDown() override { SharedDesk().reset(); }
};

const ::testing::Environment* const kClearsTheDesk = ::testing::AddGlobalTestEnvironment(new ClearsTheDesk);

std::vector<std::string> At(Place at) { return {"mousemove", std::to_string(at.x), std::to_string(at.y)}; }

}  // namespace

std::string Desk::WhatIsMissing() {
  for (const char* program : {"Xvfb", "xdotool"})
    if (!IsInstalled(program)) return std::string("no window to test with: ") + program + " is not installed";
  return {};
}

Desk::Desk() {
  const std::string display = StartServer(server_);
  display_ = {{"DISPLAY", ":" + display},
              {"QT_QPA_PLATFORM", "xcb"},
              {"QT_SCALE_FACTOR", "1"},
              {"QT_STYLE_OVERRIDE", "fusion"},
              {"XAUTHORITY", ""}};
  host_ = std::make_unique<Process>(std::vector<std::string>{STOCKBOOK_WINDOW_HOST}, display_);
}

// The server itself finds a free display and prints its number.
std::string Desk::StartServer(std::unique_ptr<Process>& server) {
  server = std::make_unique<Process>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", "1000x800x24",
                                                              "-nolisten", "tcp", "-noreset"},
                                     Process::Variables{});
  const auto display = server->ReadLine(Clock::now() + kPatience);
  if (!display) throw std::runtime_error("Xvfb did not start");
  return *display;
}

std::map<std::string, std::string> Desk::Ask(const std::string& command) {
  if (!host_->WriteLine(command)) throw std::runtime_error("the host has gone");
  std::map<std::string, std::string> answer;
  const Clock::time_point until = Clock::now() + kPatience;
  for (;;) {
    const auto line = host_->ReadLine(until);
    if (!line) throw std::runtime_error("the host does not answer to " + command);
    if (*line == ".") return answer;
    const size_t equals = line->find('=');
    if (equals != std::string::npos) answer[line->substr(0, equals)] = line->substr(equals + 1);
  }
}

void Desk::Do(const std::vector<std::string>& words) {
  std::vector<std::string> command{"xdotool"};
  command.insert(command.end(), words.begin(), words.end());
  Process xdotool(command, display_);
  if (xdotool.Wait(Clock::now() + kPatience) != 0) {
    std::string all;
    for (const std::string& word : command) all += word + " ";
    throw std::runtime_error("failed: " + all);
  }
}

void Desk::StartAnew(const std::string& command) {
  // Releases whatever the last test left pressed. The host is reset once it has seen the last of these events, the
  // mouse at a new place over the upper field.
  Do({"windowfocus", Ask("state")["window"], "mouseup", "1", "keyup", "shift", "keyup", "ctrl"});
  rest_ = {rest_.x == 20 ? 30 : 20, 12};
  Do(At(rest_));
  const std::string place = std::to_string(rest_.x) + " " + std::to_string(rest_.y);
  for (const Clock::time_point until = Clock::now() + kPatience; Ask("state")["mouse"] != place;) {
    if (Clock::now() > until) throw std::runtime_error("the host does not see the mouse");
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  Ask(command);
}

void WindowTest::SetUpTestSuite() {
  if (SharedDesk() == nullptr && Desk::WhatIsMissing().empty()) SharedDesk() = std::make_unique<Desk>();
}

void WindowTest::SetUp() {
  if (const std::string missing = Desk::WhatIsMissing(); !missing.empty()) GTEST_SKIP() << missing;
  ASSERT_NE(SharedDesk(), nullptr);
  SharedDesk()->StartAnew(Scene());
  ASSERT_TRUE(Becomes("active", "1"));
  ASSERT_TRUE(Becomes("focus", "grid"));
}

void WindowTest::TearDown() {
  if (SharedDesk() == nullptr || IsSkipped()) return;
  if (HasFailure()) {
    for (const auto& [name, value] : Ask("state")) std::printf("  %s=%s\n", name.c_str(), value.c_str());
  }
  EXPECT_EQ(Now("sound"), "1");
}

std::map<std::string, std::string> WindowTest::Ask(const std::string& command) { return SharedDesk()->Ask(command); }

void WindowTest::Do(const std::vector<std::string>& words) { SharedDesk()->Do(words); }

void WindowTest::Rest() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

void WindowTest::MoveTo(Place at) { Do(At(at)); }

void WindowTest::Click(Place at, const std::string& button) {
  std::vector<std::string> words = At(at);
  words.insert(words.end(), {"click", button});
  Do(words);
}

void WindowTest::ClickWith(const std::string& modifier, Place at) {
  std::vector<std::string> words = At(at);
  words.insert(words.end(), {"keydown", modifier, "click", "1", "keyup", modifier});
  Do(words);
}

// By default two clicks never count as a double click in the host, because tests click repeatedly at the same place.
void WindowTest::DoubleClick(Place at) {
  Ask("double_clicks 10000");
  std::vector<std::string> words = At(at);
  words.insert(words.end(), {"click", "--repeat", "2", "--delay", "20", "1"});
  Do(words);
}

void WindowTest::Press(Place at) {
  std::vector<std::string> words = At(at);
  words.insert(words.end(), {"mousedown", "1"});
  Do(words);
}

void WindowTest::Pull(Place from, Place to) {
  Press(from);
  MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
  MoveTo(to);
}

void WindowTest::Drag(Place from, Place to) {
  Pull(from, to);
  Release();
}

Area WindowTest::Cell(int row, int column) {
  std::istringstream words(Ask("cell " + std::to_string(row) + " " + std::to_string(column))["rect"]);
  Area area;
  words >> area.x >> area.y >> area.width >> area.height;
  return area;
}

std::string WindowTest::ColourAt(Place at) {
  return Ask("pixel " + std::to_string(at.x) + " " + std::to_string(at.y))["colour"];
}

::testing::AssertionResult WindowTest::Becomes(const std::string& what, const std::string& value) {
  const auto result = BecomesSo(what, [&](const std::string& now) { return now == value; });
  return result ? result : ::testing::AssertionFailure() << result.message() << " and does not become " << value;
}

}  // namespace stockbook::window
