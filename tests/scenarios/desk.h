// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "scenarios/inventory.h"
#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "stockbook/control/row_fields.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#include "support/memory_bag.h"

namespace stockbook::scenarios {

// The exact mouse position depends on widths and fonts; the scenario has named the cell.
class EventLog : public testing::EventRecorder {
 public:
  void MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
};

// The control over the real sheet and a real database file, operated and examined by the steps of a scenario.
class Desk {
 public:
  explicit Desk(const std::string& dialect);

  void Fill(const std::string& name, const Table& table) { inventory_.Fill(name, table); }
  // Performs a "When" step; throws std::runtime_error for an unknown one.
  void Do(const std::string& step);
  // What a "Then" step sees now; `expected` names the values it asks for.
  std::vector<std::string> Look(const std::string& what, const std::vector<std::string>& expected);

 private:
  struct Cell {
    int row = 0;
    int column = 0;
  };
  using Action = void (Desk::*)(const std::string& rest);
  static const std::map<std::string, Action>& Actions();

  control::Stockbook& control() { return *fakes_->control; }
  sheet::GridSheet& grid() { return fakes_->fg; }
  void Compose();
  Cell CellOf(const std::string& text);
  sheet::MouseEvent At(const Cell& cell, sheet::MouseButton button, int16_t modifiers);
  void Click(const std::string& cell, sheet::MouseButton button, int16_t modifiers);

  void DoLoad(const std::string& rest);
  void DoClick(const std::string& rest) { Click(rest, sheet::MouseButton::kLeft, 0); }
  void DoShiftClick(const std::string& rest) { Click(rest, sheet::MouseButton::kLeft, sheet::Modifiers::kShift); }
  void DoControlClick(const std::string& rest) { Click(rest, sheet::MouseButton::kLeft, sheet::Modifiers::kControl); }
  void DoRightClick(const std::string& rest);
  void DoDoubleClick(const std::string& rest);
  void DoDrag(const std::string& rest);
  void DoDragEdge(const std::string& rest);
  void DoPress(const std::string& rest);
  void DoSet(const std::string& rest);
  void DoWrite(const std::string& rest);
  void DoFind(const std::string& rest);
  void DoCommand(const std::string& rest);
  void DoCancelLoads(const std::string& rest);
  void DoSave(const std::string& rest);
  void DoRestore(const std::string& rest);

  std::vector<std::string> LookAtGrid(const std::string& rest);
  std::vector<std::string> LookAtPictures();
  std::vector<std::string> LookAtEvents(const std::string& rest);
  std::vector<std::string> LookAtClipboard();
  std::vector<std::string> LookAtMenu();
  std::vector<std::string> LookAtBag(const std::string& rest);
  std::vector<std::string> LookAtValues(const std::vector<std::string>& expected);
  std::string RowKind(int row);
  std::string ValueOf(const std::string& name);

  std::string dialect_;
  Inventory inventory_;
  std::unique_ptr<testing::ControlOverFakes> fakes_;
  std::unique_ptr<sheet::Mouse> mouse_;
  std::unique_ptr<sheet::Keyboard> keyboard_;
  EventLog log_;
  testing::MemoryBag bag_;
};

// The public properties by name: texts, numbers and truth values as words.
void SetProperty(control::Stockbook& control, const std::string& name, const std::string& value);
// Throws std::runtime_error for an unknown name.
std::string PropertyText(const control::Stockbook& control, const std::string& name);
// A field of a row by name.
std::string FieldText(const control::RowFields& rows, const std::string& name, int row);
void WriteField(const control::RowFields& rows, const std::string& name, int row, const std::string& value);

}  // namespace stockbook::scenarios
