// SPDX-License-Identifier: MIT
// What the control does with the rows that become current, the mouse, and the heights that users give rows.
#include "control/working_control.h"
#include "stockbook/platform/grid_appearance.h"

namespace stockbook::control {
namespace {

constexpr platform::Colour kHotBack = 0x00E2D2C7;

using GridEvents = WorkingControl;

TEST_F(GridEvents, TellOfTheNewRowAndDescribeIt) {
  control().SetRow(4);
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify "}));
  control().SetRow(5);
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify 出库自“总库”：2005年1月期初库存"}));
  EXPECT_TRUE(Key(sheet::Key::kDown));
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify 出库自“总库”：2005年03月08日采购入库第 12 号"}));
}

TEST_F(GridEvents, DescribeTheRowOnlyWhenAnotherColumnOfItIsReached) {
  grid().Select(5, ColumnOf("Quantity"));
  heard_.Take();
  EXPECT_TRUE(Key(sheet::Key::kRight));
  EXPECT_EQ(heard_.Take(), (Lines{"Notify 出库自“总库”：2005年1月期初库存"}));
}

TEST_F(GridEvents, StayQuietWhileABulkOperationRuns) {
  control().SetRow(4);
  heard_.Take();
  grid().SetTag("Load");
  control().SetRow(5);
  EXPECT_TRUE(heard_.Take().empty());
  EXPECT_NE(grid().CellBackColor(5, 1), kHotBack);
  EXPECT_EQ(grid().CellBackColor(4, 1), kHotBack);
  grid().SetTag("");
  control().SetRow(6);
  EXPECT_EQ(grid().CellBackColor(6, 1), kHotBack);
  EXPECT_NE(grid().CellBackColor(4, 1), kHotBack);
}

TEST_F(GridEvents, PaintTheCurrentRowHotAndGiveItsColoursBack) {
  grid().SetFrozenCols(3);
  const auto colours = [&](int row) {
    std::vector<std::pair<platform::Colour, platform::Colour>> all;
    for (int column = 0; column < grid().Cols(); ++column)
      all.emplace_back(grid().CellBackColor(row, column), grid().CellForeColor(row, column));
    return all;
  };
  grid().SetCellColors({4, 1, 5, grid().Cols()}, 0x00112233, 0x00445566);
  const auto line = colours(3);
  const auto coloured = colours(4);
  const auto total = colours(9);
  control().SetRow(3);
  for (int column = 1; column < grid().Cols(); ++column) {
    EXPECT_EQ(grid().CellBackColor(3, column), control().BackColorHot()) << column;
    EXPECT_EQ(grid().CellForeColor(3, column), control().ForeColorHot()) << column;
  }
  EXPECT_EQ(grid().CellBackColor(3, 0), line[0].first) << "fixed cells stay as they are";
  control().SetRow(4);
  EXPECT_EQ(colours(3), line);
  control().SetRow(9);
  EXPECT_EQ(colours(4), coloured);
  control().SetRow(5);
  EXPECT_EQ(colours(9), total);
}

TEST_F(GridEvents, NeverTouchARowThatWasNotHot) {
  const platform::Colour before = grid().CellBackColor(grid().Row(), 2);
  control().SetRow(5);
  EXPECT_EQ(grid().CellBackColor(1, 2), before);
  control().Load(7, 0);
  for (int row = 1; row < grid().Rows(); ++row) EXPECT_NE(grid().CellBackColor(row, 2), kHotBack) << row;
  const int current = grid().Row();
  const platform::Colour own = grid().CellBackColor(current, 2);
  control().SetRow(8);
  EXPECT_EQ(grid().CellBackColor(current, 2), own);
}

TEST_F(GridEvents, FindTheHotRowAgainWhenRowsCameBeforeIt) {
  control().SetRow(5);
  grid().AddItem("", 2);
  ASSERT_EQ(grid().CellBackColor(6, 2), kHotBack);
  control().SetRow(8);
  EXPECT_NE(grid().CellBackColor(6, 2), kHotBack);
  EXPECT_EQ(grid().CellBackColor(8, 2), kHotBack);
}

TEST_F(GridEvents, FindAHotNodeAndTotalAgainToo) {
  for (const int row : {1, 2, 9, 10, 15}) {
    control().Load(7, 0);
    control().SetRow(4);
    control().SetRow(row);
    grid().AddItem("", 1);
    ASSERT_EQ(grid().CellBackColor(row + 1, 2), kHotBack) << row;
    control().SetRow(6);
    EXPECT_NE(grid().CellBackColor(row + 1, 2), kHotBack) << row;
  }
}

TEST_F(GridEvents, GiveColumnsThatWereFrozenMeanwhileTheFrozenColours) {
  control().SetRow(5);
  grid().SetFrozenCols(2);
  control().SetRow(6);
  EXPECT_EQ(grid().CellBackColor(5, 1), grid().ColourOf(platform::GridColour::kBackColorFrozen));
  EXPECT_EQ(grid().CellBackColor(5, 3), grid().CellBackColor(3, 3));
}

TEST_F(GridEvents, GiveTheRowItsColoursBackWhereAllColumnsAreFrozen) {
  grid().SetFrozenCols(grid().Cols() - 1);
  const platform::Colour back = grid().CellBackColor(4, 2);
  const platform::Colour fore = grid().CellForeColor(4, 2);
  control().SetRow(4);
  ASSERT_EQ(grid().CellBackColor(4, 2), kHotBack);
  control().SetRow(5);
  EXPECT_EQ(grid().CellBackColor(4, 2), back);
  EXPECT_EQ(grid().CellForeColor(4, 2), fore);
}

TEST_F(GridEvents, GiveTheRowItsColoursBackAfterALoadWhoseArgumentsWereRefused) {
  const platform::Colour back = grid().CellBackColor(4, 2);
  control().SetRow(4);
  ASSERT_FALSE(control().Load(-1, 40000));
  ASSERT_EQ(grid().CellBackColor(4, 2), kHotBack) << "the rows are the same";
  control().SetRow(5);
  EXPECT_EQ(grid().CellBackColor(4, 2), back);
}

TEST_F(GridEvents, ShowNewHotColoursAtOnceAndSetTheRowAsideWhenAsked) {
  control().SetRow(5);
  control().SetBackColorHot(0x00010203);
  control().SetForeColorHot(0x00030201);
  EXPECT_EQ(grid().CellBackColor(5, 2), 0x00010203u);
  EXPECT_EQ(grid().CellForeColor(5, 2), 0x00030201u);
  {
    const auto aside = control().SetHotRowAside();
    EXPECT_EQ(grid().CellBackColor(5, 2), grid().CellBackColor(3, 2));
    control().SetRow(6);
    EXPECT_EQ(grid().CellBackColor(6, 2), grid().CellBackColor(3, 2));
  }
  EXPECT_EQ(grid().CellBackColor(6, 2), 0x00010203u);
  control().SetBackColor(0x00A0B0C0);
  control().SetRow(7);
  EXPECT_EQ(grid().CellBackColor(6, 2), 0x00A0B0C0u) << "the row's own colour is the grid's new one";
}

TEST_F(GridEvents, ShowTheIdentifiersOnAModifiedClickAndOpenNoMenu) {
  for (const int16_t modifier : {sheet::Modifiers::kShift, sheet::Modifiers::kControl, sheet::Modifiers::kAlt}) {
    control().SetRow(4);
    heard_.Take();
    Press(At(4, "Explain", sheet::MouseButton::kLeft, modifier));
    const Lines heard = heard_.Take();
    EXPECT_EQ(heard.back(), "Notify BillID:1004 RecID:84") << modifier;
  }
  EXPECT_TRUE(menu().shown.empty());
  Press(At(4, "Explain", sheet::MouseButton::kLeft));
  for (const std::string& line : heard_.Take()) EXPECT_EQ(line.find("BillID"), std::string::npos);
  Press(At(4, "Explain", sheet::MouseButton::kRight, sheet::Modifiers::kShift));
  Press(At(4, "Explain", sheet::MouseButton::kMiddle));
  EXPECT_TRUE(menu().shown.empty());
  EXPECT_TRUE(heard_.Take().empty());
}

TEST(EmptyControl, DoesNothingOnMouseButtonsBeforeRecordsAreLoaded) {
  testing::ControlOverFakes fakes;
  testing::EventRecorder heard;
  fakes.control->AddListener(&heard);
  sheet::Mouse mouse(fakes.fg.view());
  mouse.Press({sheet::MouseButton::kRight, {}, {200, 5}});
  mouse.Press({sheet::MouseButton::kLeft, {sheet::Modifiers::kShift}, {200, 200}});
  EXPECT_TRUE(fakes.menu.shown.empty());
  EXPECT_TRUE(heard.Take().empty());
  // A journal without a line counts as none.
  auto connection = std::make_shared<testing::FakeConnection>();
  testing::AnswerJournal(*connection, {});
  fakes.control->SetConn(connection);
  ASSERT_TRUE(fakes.control->Load(7, 0));
  heard.Take();
  mouse.Press({sheet::MouseButton::kRight, {}, {200, 5}});
  EXPECT_TRUE(fakes.menu.shown.empty());
}

TEST_F(GridEvents, RaiseMouseUpAndTheRangeBeforeIt) {
  Click(4, "Explain");
  const sheet::Point at = CellPoint(4, ColumnOf("Explain"));
  const std::string up = "MouseUp 1 0 " + std::to_string(at.x * 15) + " " + std::to_string(at.y * 15);
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify ", up}));
  Press(At(4, "Explain", sheet::MouseButton::kLeft));
  mouse_.Move(At(6, "Explain", sheet::MouseButton::kLeft));
  heard_.Take();
  mouse_.Release(At(6, "Explain", sheet::MouseButton::kLeft));
  const Lines heard = heard_.Take();
  ASSERT_EQ(heard.size(), 2u);
  EXPECT_EQ(heard[0], "AfterRangeSelected");
  EXPECT_EQ(heard[1].substr(0, 11), "MouseUp 1 0");
}

TEST_F(GridEvents, OpenTheBillOnADoubleClickOnItsNumberOnly) {
  DoubleClick(5, "BillNo");
  Lines heard = heard_.Take();
  EXPECT_EQ(std::count(heard.begin(), heard.end(), "CommandExecute Bill"), 1);
  for (const char* key : {"Quantity", "Explain"}) {
    DoubleClick(5, key);
    heard = heard_.Take();
    EXPECT_EQ(std::count(heard.begin(), heard.end(), "CommandExecute Bill"), 0) << key;
  }
  for (const int row : {1, 2, 7, 9}) {
    DoubleClick(row, "BillNo");
    heard = heard_.Take();
    EXPECT_EQ(std::count(heard.begin(), heard.end(), "CommandExecute Bill"), 0) << row << " has no bill";
  }
  // Beside the rows, with a bill row being current.
  control().SetRow(5);
  grid().Select(5, ColumnOf("BillNo"));
  heard_.Take();
  mouse_.DoubleClick({sheet::MouseButton::kLeft, {}, {CellPoint(5, ColumnOf("BillNo")).x, 690}});
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(GridEvents, OpenNoBillOnADoubleClickBesideTheCellsOfTheRow) {
  DoubleClick(5, "SeqNo");
  EXPECT_EQ(grid().Col(), ColumnOf("BillNo")) << "the first column of the selected row";
  EXPECT_EQ(heard_.Of("CommandExecute"), Lines{});
}

TEST_F(GridEvents, OpenTheBillOnADoubleClickOfTheLeftButtonOnly) {
  grid().Select(5, ColumnOf("BillNo"));
  for (const auto button : {sheet::MouseButton::kMiddle, sheet::MouseButton::kRight})
    mouse_.DoubleClick(At(5, "BillNo", button));
  EXPECT_EQ(heard_.Of("CommandExecute"), Lines{});
}

TEST_F(GridEvents, OpenTheBillByTheEnterKey) {
  grid().Select(5, ColumnOf("BillNo"));
  heard_.Take();
  EXPECT_TRUE(Key(sheet::Key::kEnter));
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute Bill"}));
  grid().Select(5, ColumnOf("Quantity"));
  heard_.Take();
  Key(sheet::Key::kEnter);
  EXPECT_TRUE(heard_.Take().empty());
}

// A text line is 240.5 twips here, 210.5 and two pixels: rounded half to even, 240.
TEST_F(GridEvents, ClampALineAndGiveItsHeightToAllLines) {
  DragRowEdge(4, 200);
  EXPECT_EQ(grid().RowHeight(4), 3 * 240);
  EXPECT_EQ(control().RowHeight(), 3 * 240);
  EXPECT_EQ(grid().RowHeight(11), 3 * 240);
  DragRowEdge(4, -200);
  EXPECT_EQ(grid().RowHeight(4), 240);
  EXPECT_EQ(control().RowHeight(), 240);
  DragRowEdge(4, 5);
  EXPECT_EQ(grid().RowHeight(12), 240 + 5 * 15);
}

TEST_F(GridEvents, ClampATotalRowAndGiveItsHeightToAllNodes) {
  DragRowEdge(9, 300);
  EXPECT_EQ(grid().RowHeight(9), 3 * 240);
  EXPECT_EQ(control().RowHeightSum(), 3 * 240);
  EXPECT_EQ(grid().RowHeight(15), 3 * 240);
  EXPECT_NE(grid().RowHeight(4), 3 * 240);
  DragRowEdge(9, -300);
  EXPECT_EQ(grid().RowHeight(9), 2 * 240);
  EXPECT_EQ(control().RowHeightSum(), 2 * 240);
}

TEST_F(GridEvents, ClampTheCaptionRow) {
  const int line = grid().RowHeight(4);
  DragRowEdge(0, 300);
  EXPECT_EQ(grid().RowHeight(0), 3 * 240);
  EXPECT_EQ(control().RowHeightTitle(), 3 * 240);
  DragRowEdge(0, -300);
  EXPECT_EQ(grid().RowHeight(0), 360) << "one and a half lines";
  EXPECT_EQ(control().RowHeightTitle(), 360);
  EXPECT_EQ(grid().RowHeight(4), line);
}

TEST_F(GridEvents, LetUsersResizeEveryColumnButTheFixedOne) {
  const auto drag = [&](int column) {
    const sheet::Rect rect = grid().view().geometry().CellRect(0, column);
    sheet::MouseEvent event{sheet::MouseButton::kLeft, {}, {rect.right(), 10}};
    const int before = grid().ColWidth(column);
    mouse_.Press(event);
    event.at.x += 20;
    mouse_.Move(event);
    mouse_.Release(event);
    return grid().ColWidth(column) - before;
  };
  EXPECT_EQ(drag(0), 0);
  EXPECT_EQ(drag(ColumnOf("BillNo")), 300);
}

TEST_F(GridEvents, KeepTheOutlineInItsColumnWhereverItMoves) {
  const int from = ColumnOf("BillNo");
  const int to = ColumnOf("Explain");
  sheet::MouseEvent event = At(0, "BillNo", sheet::MouseButton::kLeft);
  mouse_.Press(event);
  event.at = {grid().view().geometry().CellRect(0, to).right() - 3, event.at.y};
  mouse_.Move(event);
  mouse_.Release(event);
  ASSERT_NE(ColumnOf("BillNo"), from);
  EXPECT_EQ(grid().OutlineCol(), ColumnOf("BillNo"));
}

TEST_F(GridEvents, ReachASecondListenerToo) {
  testing::EventRecorder second;
  control().AddListener(&second);
  control().SetRow(4);
  EXPECT_EQ(second.Take(), (Lines{"AfterRowChanged", "Notify "}));
  control().RemoveListener(&second);
  control().SetRow(5);
  EXPECT_TRUE(second.Take().empty());
}

TEST_F(GridEvents, TellWhatAListenerThrowsAndDoTheRest) {
  heard_.on_hearing = [](const std::string& line) {
    if (line == "AfterRowChanged") throw std::runtime_error("宿主出错");
  };
  EXPECT_NO_THROW(control().SetRow(5));
  EXPECT_EQ(heard_.Take(), (Lines{"AfterRowChanged", "Notify 宿主出错", "Notify 出库自“总库”：2005年1月期初库存"}));
  heard_.on_hearing = [](const std::string&) { throw std::runtime_error("总是出错"); };
  EXPECT_NO_THROW(Click(6, "Explain"));
  EXPECT_NO_THROW(Click(4, "Explain", sheet::Modifiers::kControl));
  EXPECT_NO_THROW(DoubleClick(5, "BillNo"));
  heard_.on_hearing = [](const std::string&) { throw 7; };
  EXPECT_NO_THROW(Click(6, "Explain"));
  EXPECT_EQ(grid().CellBackColor(6, 2), kHotBack);
}

// In every event that the mouse and the keys raise.
TEST_F(GridEvents, SurviveALoadWhereverAListenerCallsIt) {
  for (const std::string event : {"AfterRowChanged", "Notify ", "MouseUp", "AfterRangeSelected", "CommandExecute"}) {
    bool loaded = false;
    heard_.on_hearing = [&](const std::string& line) {
      if (loaded || line.compare(0, event.size(), event) != 0) return;
      loaded = true;
      EXPECT_TRUE(control().Load(7, 0)) << event;
    };
    Click(4, "Explain");
    Press(At(5, "BillNo", sheet::MouseButton::kLeft));
    mouse_.Move(At(6, "Explain", sheet::MouseButton::kLeft));
    mouse_.Release(At(6, "Explain", sheet::MouseButton::kLeft));
    DoubleClick(5, "BillNo");
    EXPECT_TRUE(loaded) << event;
    EXPECT_EQ(grid().Tag(), "");
    EXPECT_TRUE(grid().Redraw());
    EXPECT_TRUE(grid().CheckInvariants());
    heard_.on_hearing = nullptr;
  }
}

TEST_F(GridEvents, SurviveThatAListenerEmptiesTheGrid) {
  heard_.on_hearing = [&](const std::string& line) {
    if (line == "AfterRowChanged") grid().SetRows(1);
  };
  control().SetRow(6);
  EXPECT_EQ(grid().Rows(), 1);
  EXPECT_TRUE(grid().CheckInvariants());
}

}  // namespace
}  // namespace stockbook::control
