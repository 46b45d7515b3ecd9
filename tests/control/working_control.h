// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "support/event_recorder.h"
#include "support/fake_surroundings.h"
#include "support/small_journal.h"

namespace stockbook::control {

// A control with the small journal, used by mouse and keys.
class WorkingControl : public ::testing::Test {
 protected:
  WorkingControl() : connection_(testing::SmallJournal()) {
    fakes_.control->SetConn(connection_);
    fakes_.fg.view().SetSize({900, 700}, 1.0);
    fakes_.control->Load(7, 0);
    fakes_.control->AddListener(&heard_);
  }

  int ColumnOf(const char* key) const { return fakes_.fg.ColIndex(key); }
  sheet::Point CellPoint(int row, int column) const {
    // Of an emptied grid no cell is left, but there is a place to click at.
    if (column < 0 || column >= fakes_.fg.Cols() || row >= fakes_.fg.Rows()) return {200, 200};
    const sheet::Rect rect = fakes_.fg.view().geometry().CellRect(row, column);
    return {rect.x + rect.width / 2, rect.y + rect.height / 2};
  }
  sheet::MouseEvent At(int row, const char* key, sheet::MouseButton button, int16_t modifiers = 0) const {
    return {button, {modifiers}, CellPoint(row, ColumnOf(key))};
  }
  void Press(const sheet::MouseEvent& event) { mouse_.Press(event); }
  void Click(int row, const char* key, int16_t modifiers = 0) {
    const sheet::MouseEvent event = At(row, key, sheet::MouseButton::kLeft, modifiers);
    mouse_.Press(event);
    mouse_.Release(event);
  }
  void RightClick(int row, const char* key) { mouse_.Press(At(row, key, sheet::MouseButton::kRight)); }
  void DoubleClick(int row, const char* key) {
    Click(row, key);
    mouse_.DoubleClick(At(row, key, sheet::MouseButton::kLeft));
    mouse_.Release(At(row, key, sheet::MouseButton::kLeft));
  }
  // Drags the lower edge of the row in the fixed column by so many pixels.
  void DragRowEdge(int row, int pixels) {
    const sheet::Rect rect = fakes_.fg.view().geometry().CellRect(row, 0);
    sheet::MouseEvent event{sheet::MouseButton::kLeft, {}, {rect.x + rect.width / 2, rect.bottom()}};
    mouse_.Press(event);
    event.at.y += pixels;
    mouse_.Move(event);
    mouse_.Release(event);
  }
  bool Key(sheet::Key key, int16_t modifiers = 0) { return keyboard_.Press({key, {modifiers}}); }

  Stockbook& control() { return *fakes_.control; }
  sheet::GridSheet& grid() { return fakes_.fg; }
  testing::FakeMenu& menu() { return fakes_.menu; }

  testing::ControlOverFakes fakes_;
  std::shared_ptr<testing::FakeConnection> connection_;
  testing::EventRecorder heard_;
  sheet::Mouse mouse_{fakes_.fg.view()};
  sheet::Keyboard keyboard_{fakes_.fg.view()};
};

using Lines = std::vector<std::string>;

}  // namespace stockbook::control
