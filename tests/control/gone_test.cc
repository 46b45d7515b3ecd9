// SPDX-License-Identifier: MIT
// A listener that destroys the control while it hears an event.
#include "control/working_control.h"

namespace stockbook::control {
namespace {

class Gone : public WorkingControl {
 protected:
  // Destroys the control on the first event that begins so.
  void DestroyOn(const std::string& event) {
    heard_.on_hearing = [this, event](const std::string& line) {
      if (fakes_.control == nullptr || line.compare(0, event.size(), event) != 0) return;
      fakes_.control.reset();
    };
  }
  void ExpectGone() {
    EXPECT_EQ(fakes_.control, nullptr);
    EXPECT_EQ(grid().Tag(), "");
    EXPECT_TRUE(grid().Redraw());
    EXPECT_TRUE(grid().CheckInvariants());
    const Lines last = heard_.Take();
    ASSERT_FALSE(last.empty());
    // Nobody hears anything of a control that is gone, and the grid goes on without it.
    Click(4, "Explain");
    DoubleClick(5, "BillNo");
    RightClick(4, "Explain");
    EXPECT_TRUE(heard_.Take().empty());
  }
};

TEST_F(Gone, InAnyEventOfALoad) {
  for (const char* event : {"CommandExecute Load", "Notify 正在读入", "Process 0", "Process 30", "AfterFormatted",
                            "Process 40", "Process 76", "AfterLoaded", "Notify 已读入", "Process -1"}) {
    SCOPED_TRACE(event);
    testing::ControlOverFakes fakes;
    Journalist heard;
    fakes.control->SetConn(connection_);
    fakes.control->AddListener(&heard);
    heard.on_hearing = [&](const std::string& line) {
      if (fakes.control != nullptr && line.rfind(event, 0) == 0) fakes.control.reset();
    };
    EXPECT_FALSE(fakes.control->Load(7, 0));
    EXPECT_EQ(fakes.control, nullptr);
    EXPECT_EQ(fakes.fg.Tag(), "");
    EXPECT_TRUE(fakes.fg.Redraw());
    EXPECT_TRUE(fakes.fg.CheckInvariants());
    const Lines lines = heard.Take();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().rfind(event, 0), 0u) << "nothing was heard behind it";
  }
}

TEST_F(Gone, WhileAnErrorOfTheLoadIsTold) {
  connection_->Fail("SELECT * FROM (SELECT  * FROM (", "没有这样的表");
  DestroyOn("Notify 没有这样的表");
  EXPECT_FALSE(control().Load(7, 0));
  ExpectGone();
}

TEST_F(Gone, WithRowsThatWereNotComputedYet) {
  DestroyOn("AfterFormatted");
  control().Load(7, 0);
  for (int row = 1; row < grid().Rows(); ++row) EXPECT_EQ(grid().TextMatrix(row, ColumnOf("StoQty")), "") << row;
  ExpectGone();
}

TEST_F(Gone, WhenTheRowChanges) {
  for (const char* event : {"AfterRowChanged", "Notify"}) {
    testing::ControlOverFakes fakes;
    Journalist heard;
    fakes.control->SetConn(connection_);
    fakes.control->Load(7, 0);
    fakes.control->AddListener(&heard);
    heard.on_hearing = [&](const std::string& line) {
      if (line.rfind(event, 0) == 0) fakes.control.reset();
    };
    fakes.control->SetRow(5);
    EXPECT_EQ(fakes.control, nullptr);
    EXPECT_TRUE(fakes.fg.CheckInvariants());
  }
}

TEST_F(Gone, WhenARowIsSoughtByItsProduct) {
  grid().Select(9, 2);
  DestroyOn("AfterRowChanged");
  const RowFields fields = control().Fields();
  fields.Set(fields::pdID, -1, 7);
  ExpectGone();
}

TEST_F(Gone, WhenTheMouseGoesUp) {
  DestroyOn("MouseUp");
  Click(4, "Explain");
  ExpectGone();
}

TEST_F(Gone, WhenARangeWasSelected) {
  DestroyOn("AfterRangeSelected");
  Press(At(4, "Explain", sheet::MouseButton::kLeft));
  mouse_.Move(At(6, "Explain", sheet::MouseButton::kLeft));
  mouse_.Release(At(6, "Explain", sheet::MouseButton::kLeft));
  ExpectGone();
}

TEST_F(Gone, WhenTheIdentifiersAreShown) {
  control().SetRow(4);
  DestroyOn("Notify BillID");
  Click(4, "Explain", sheet::Modifiers::kControl);
  ExpectGone();
}

TEST_F(Gone, WhenABillIsOpened) {
  grid().Select(5, ColumnOf("BillNo"));
  DestroyOn("CommandExecute Bill");
  DoubleClick(5, "BillNo");
  ExpectGone();
}

TEST_F(Gone, InEveryCommandOfTheMenus) {
  for (const char* name : {"mnuBill", "mnuFind", "mnuRefresh"}) {
    SCOPED_TRACE(name);
    testing::ControlOverFakes fakes;
    Journalist heard;
    fakes.control->SetConn(connection_);
    fakes.control->Load(7, 0);
    fakes.control->AddListener(&heard);
    heard.on_hearing = [&](const std::string& line) {
      if (line.rfind("CommandExecute", 0) == 0) fakes.control.reset();
    };
    fakes.menu.Choose(name);
    sheet::Mouse mouse(fakes.fg);
    mouse.Press({sheet::MouseButton::kRight, {}, {200, 200}});
    EXPECT_EQ(fakes.control, nullptr);
  }
}

TEST_F(Gone, InTheMenuOfACaption) {
  DestroyOn("CommandExecute AfterFieldShow");
  menu().Choose("mnuHiddenCol");
  RightClick(0, "Explain");
  ExpectGone();
}

TEST_F(Gone, WhileTheDefaultLayoutIsMade) {
  DestroyOn("AfterFormatted");
  menu().Choose("mnuDefault");
  RightClick(0, "Explain");
  ExpectGone();
}

TEST_F(Gone, WhileAMenuIsOpen) {
  for (const int row : {0, 4}) {
    testing::ControlOverFakes fakes;
    fakes.control->SetConn(connection_);
    fakes.control->Load(7, 0);
    fakes.menu.choose = [&](const platform::MenuItem&) {
      fakes.control.reset();
      return platform::MenuChoice{row == 0 ? "mnuHiddenCol" : "mnuCopy", 0};
    };
    const int column = fakes.fg.ColIndex("Explain");
    const sheet::Rect rect = fakes.fg.geometry().CellRect(row, column);
    sheet::Mouse mouse(fakes.fg);
    mouse.Press({sheet::MouseButton::kRight, {}, {rect.x + 5, rect.y + 5}});
    EXPECT_EQ(fakes.control, nullptr);
    EXPECT_FALSE(fakes.fg.ColHidden(column));
    EXPECT_EQ(fakes.clipboard.cleared, 0);
  }
}

TEST_F(Gone, WhenTheRightButtonMovesTheCurrentRow) {
  control().SetRow(4);
  DestroyOn("AfterRowChanged");
  RightClick(6, "Explain");
  EXPECT_TRUE(menu().shown.empty());
  ExpectGone();
}

TEST_F(Gone, WhenItsMembersRaiseEvents) {
  for (const auto& member : std::vector<std::function<void(Stockbook&)>>{
           [](Stockbook& control) { control.Prompt("x"); }, [](Stockbook& control) { control.DefaultFormat(); },
           [](Stockbook& control) { control.SetJournalType(base::ProjectJournal); },
           [](Stockbook& control) { control.Find("入库单"); }}) {
    testing::ControlOverFakes fakes;
    Journalist heard;
    fakes.control->SetConn(connection_);
    fakes.control->Load(7, 0);
    fakes.control->AddListener(&heard);
    heard.on_hearing = [&](const std::string&) { fakes.control.reset(); };
    member(*fakes.control);
    EXPECT_EQ(fakes.control, nullptr);
    EXPECT_EQ(heard.Take().size(), 1u);
  }
}

}  // namespace
}  // namespace stockbook::control
