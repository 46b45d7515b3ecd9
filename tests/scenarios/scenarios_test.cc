// SPDX-License-Identifier: MIT
// Every text file of the folder is a test, named by its title.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "base/text.h"
#include "scenarios/desk.h"

namespace stockbook::scenarios {
namespace {

bool WritesFiles() { return std::getenv("STOCKBOOK_WRITE_SCENARIOS") != nullptr; }

class Scenario : public ::testing::Test {
 public:
  explicit Scenario(ScenarioFile file) : file_(std::move(file)) {}

  void TestBody() override {
    Desk desk(file_.Dialect());
    bool changed = false;
    for (Step& step : file_.steps()) {
      SCOPED_TRACE(file_.path() + ": " + step.head);
      try {
        changed = Take(desk, step) || changed;
      } catch (const std::exception& error) {
        FAIL() << error.what();
      }
    }
    if (changed) file_.Write();
  }

 private:
  // True if the step was rewritten.
  static bool Take(Desk& desk, Step& step) {
    if (step.kind == Step::Kind::kGiven) desk.Fill(step.head, ParseTable(step.body));
    if (step.kind == Step::Kind::kWhen) desk.Do(step.head);
    if (step.kind != Step::Kind::kThen) return false;
    std::vector<std::string> actual = desk.Look(step.head, step.body);
    if (WritesFiles()) {
      step.body = std::move(actual);
      return true;
    }
    EXPECT_TRUE(SameLines(step.body, actual)) << SideBySide(step.body, actual);
    return false;
  }

  ScenarioFile file_;
};

bool RegisterAll() {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(STOCKBOOK_SOURCE_DIR "/tests/scenarios"))
    if (entry.path().extension() == ".txt") paths.push_back(entry.path().string());
  std::sort(paths.begin(), paths.end());
  for (const std::string& path : paths) {
    const ScenarioFile file(path);
    const std::string name = base::ReplaceAll(file.Title(), " ", "_");
    ::testing::RegisterTest("Scenario", name.c_str(), nullptr, nullptr, path.c_str(), 1,
                            [file]() -> Scenario* { return new Scenario(file); });
  }
  return !paths.empty();
}

const bool kRegistered = RegisterAll();

TEST(Scenarios, AreThere) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace stockbook::scenarios
