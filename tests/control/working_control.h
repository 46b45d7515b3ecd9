// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sheet/input/keyboard.h"
#include "sheet/input/mouse.h"
#include "support/fake_surroundings.h"
#include "support/journal_rows.h"

namespace stockbook::control {

// Writes every event down as one line, and does what it is told on hearing one.
class Journalist : public interaction::EventListener {
 public:
  void Process(int16_t indicator) override { Hear("Process " + std::to_string(indicator)); }
  void AfterLoaded() override { Hear("AfterLoaded"); }
  void AfterFormatted() override { Hear("AfterFormatted"); }
  void CommandExecute(const std::string& name, bool& cancel) override {
    cancel = cancels;
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
  std::vector<std::string> Take() { return std::exchange(heard_, {}); }

  bool cancels = false;
  std::function<void(const std::string&)> on_hearing;

 private:
  void Hear(const std::string& line) {
    heard_.push_back(line);
    if (on_hearing) on_hearing(line);
  }

  std::vector<std::string> heard_;
};

// A control with a journal of ten receipts and issues in two periods, used by mouse and keys. Row 1 is the opening row,
// row 2 the node of 2004-03, rows 3 to 8 its lines, row 9 their total, row 10 the node of 2004-04, rows 11 to 14 its
// lines and row 15 their total. Line at row r has the bill 1000 + r and the record 80 + r; the line at row 5 is an
// issue from the opening stock, the one at row 6 from a receipt, the one at row 7 has no bill.
class WorkingControl : public ::testing::Test {
 protected:
  WorkingControl() : connection_(std::make_shared<testing::FakeConnection>()) {
    AnswerLines();
    fakes_.control->SetConn(connection_);
    fakes_.fg.SetView({900, 700}, 1.0);
    fakes_.control->Load(7, 0);
    fakes_.control->AddListener(&heard_);
  }

  void AnswerLines() {
    std::vector<testing::JournalLine> lines;
    for (int row = 3; row <= 14; ++row) {
      if (row == 9 || row == 10) continue;
      testing::JournalLine line;
      line.period = row < 9 ? "2004-03" : "2004-04";
      line.bill_no = (row % 2 == 0 ? "出库单 " : "入库单 ") + std::to_string(row);
      line.flag = row % 2 == 0 ? 1 : 0;
      line.quantity = row;
      line.amount = std::to_string(row * 10);
      line.bill_name = row % 2 == 0 ? "出库单" : "入库单";
      line.bill_id = row == 7 ? 0 : 1000 + row;
      line.rec_id = 80 + row;
      line.other_id = row == 5 ? -3 : row == 6 ? 83 : 0;
      lines.push_back(line);
    }
    testing::AnswerJournal(*connection_, lines);
    connection_->Answer("SELECT 仓库余额表.*", {"仓库名称", "年份", "月份"},
                        {{testing::Text("总库"), testing::Whole(2005), testing::Whole(1)}});
    connection_->Answer("SELECT d.BillID", {"BillID", "BillDate", "BillName", "BillNo", "DepotName"},
                        {{testing::Whole(1), base::Value(*base::Date::Parse("2005-03-08")), testing::Text("采购入库"),
                          testing::Text("12"), testing::Text("总库")}});
  }

  int ColumnOf(const char* key) const { return fakes_.fg.ColIndex(key); }
  sheet::Point CellPoint(int row, int column) const {
    const sheet::Rect rect = fakes_.fg.geometry().CellRect(row, column);
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
    const sheet::Rect rect = fakes_.fg.geometry().CellRect(row, 0);
    sheet::MouseEvent event{sheet::MouseButton::kLeft, {}, {rect.x + rect.width / 2, rect.bottom()}};
    mouse_.Press(event);
    event.at.y += pixels;
    mouse_.Move(event);
    mouse_.Release(event);
  }
  bool Key(sheet::Key key, int16_t modifiers = 0) { return keyboard_.Press({key, {modifiers}}); }

  Stockbook& control() { return *fakes_.control; }
  sheet::Sheet& grid() { return fakes_.fg; }
  testing::FakeMenu& menu() { return fakes_.menu; }

  testing::ControlOverFakes fakes_;
  std::shared_ptr<testing::FakeConnection> connection_;
  Journalist heard_;
  sheet::Mouse mouse_{fakes_.fg};
  sheet::Keyboard keyboard_{fakes_.fg};
};

using Lines = std::vector<std::string>;

}  // namespace stockbook::control
