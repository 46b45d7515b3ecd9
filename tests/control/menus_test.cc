// SPDX-License-Identifier: MIT
// The two menus of the grid and what their items do.
#include "control/working_control.h"

#include "sheet/outline/row_states.h"
#include "stockbook/base/value.h"
#include "support/faulty_grid.h"

namespace stockbook::control {
namespace {

// One line an item: name, caption, "x" checked, "-" disabled; separators by name; what is invisible is left out.
Lines Describe(const platform::MenuItem& menu) {
  Lines lines;
  for (const platform::MenuItem& item : menu.items) {
    if (!item.visible) continue;
    lines.push_back(item.name + (item.separator ? "" : " " + item.caption) + (item.checked ? " x" : "") +
                    (item.enabled ? "" : " -"));
  }
  return lines;
}

using Menus = WorkingControl;

TEST_F(Menus, OfferTheBillOnALine) {
  RightClick(5, "Explain");
  ASSERT_EQ(menu().shown.size(), 1u);
  EXPECT_EQ(menu().shown[0].name, "mnuFastMenu");
  EXPECT_EQ(menu().shown[0].caption, "Fastmenu");
  EXPECT_EQ(Describe(menu().shown[0]), (Lines{"mnuBill 查看单据(&B)", "mnuSpBill", "mnuCopy 复制(&C)", "mnuSpFind",
                                              "mnuFind 查找(&F)", "mnuSpRefresh", "mnuRefresh 刷新"}));
  EXPECT_EQ(grid().Row(), 5);
  EXPECT_EQ(grid().Col(), ColumnOf("Explain"));
}

TEST_F(Menus, OfferNoBillWhereThereIsNone) {
  RightClick(7, "Explain");
  EXPECT_EQ(Describe(menu().shown[0])[0], "mnuBill 查看单据(&B) -");
  RightClick(1, "Explain");
  EXPECT_EQ(Describe(menu().shown[1])[0], "mnuBill 查看单据(&B) -");
}

TEST_F(Menus, OfferFoldingOnANodeAndATotal) {
  for (const int row : {2, 9}) {
    menu().shown.clear();
    RightClick(row, "Explain");
    ASSERT_EQ(menu().shown.size(), 1u);
    EXPECT_EQ(Describe(menu().shown[0]),
              (Lines{"mnuCollapse 展开全部(&E)", "mnuCollapse 折叠全部(&L)", "mnuSpCollapse", "mnuCopy 复制(&C)",
                     "mnuSpFind", "mnuFind 查找(&F)", "mnuSpRefresh", "mnuRefresh 刷新"}));
  }
}

TEST_F(Menus, FoldAndUnfoldAllNodesAndLeaveTheRestAlone) {
  control().SetRow(5);
  const int top = grid().TopRow();
  menu().Choose("mnuCollapse", 1);
  grid().SelectRange(2, 2, 2, 3);
  RightClick(2, "Explain");
  EXPECT_TRUE(grid().IsCollapsed(2));
  EXPECT_TRUE(grid().IsCollapsed(10));
  EXPECT_TRUE(grid().RowHidden(5) || grid().states().At(5).covered);
  EXPECT_FALSE(grid().states().At(9).covered) << "totals stay in sight";
  EXPECT_EQ(grid().Row(), 2);
  EXPECT_EQ(grid().TopRow(), top);
  menu().Choose("mnuCollapse", 0);
  RightClick(9, "Explain");
  EXPECT_FALSE(grid().IsCollapsed(2));
  EXPECT_FALSE(grid().IsCollapsed(10));
}

TEST_F(Menus, KeepASelectedRangeUnderTheRightButton) {
  grid().SelectRange(3, ColumnOf("Explain"), 5, ColumnOf("Price"));
  heard_.Take();
  RightClick(4, "Explain");
  EXPECT_EQ(menu().shown.size(), 1u);
  EXPECT_EQ(grid().Row(), 3);
  EXPECT_EQ(grid().RowSel(), 5);
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(Menus, OpenBesideTheRowsAndOnTheFixedColumnToo) {
  control().SetRow(4);
  heard_.Take();
  mouse_.Press({sheet::MouseButton::kRight, {}, {300, 690}});
  ASSERT_EQ(menu().shown.size(), 1u);
  EXPECT_EQ(menu().shown[0].name, "mnuFastMenu");
  EXPECT_EQ(grid().Row(), 4);
  mouse_.Press({sheet::MouseButton::kRight, {}, CellPoint(0, 0)});
  ASSERT_EQ(menu().shown.size(), 2u);
  EXPECT_EQ(menu().shown[1].name, "mnuFastMenu") << "the corner is no caption";
  mouse_.Press({sheet::MouseButton::kRight, {}, CellPoint(6, 0)});
  EXPECT_EQ(grid().Row(), 6) << "the row is the one that the menu speaks of";
}

TEST_F(Menus, OnlyAnnounceBillFindAndRefreshWhateverTheHostCancels) {
  heard_.cancels = true;
  const int64_t revision = grid().Revision();
  for (const auto& [item, command] :
       {std::pair{"mnuBill", "Bill"}, std::pair{"mnuFind", "Find"}, std::pair{"mnuRefresh", "Refresh"}}) {
    control().SetRow(5);
    grid().Select(5, ColumnOf("Explain"));
    heard_.Take();
    menu().Choose(item);
    RightClick(5, "Explain");
    EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute " + std::string(command)}));
  }
  EXPECT_EQ(grid().Revision(), revision);
}

TEST_F(Menus, OfferFreezingHidingTheDefaultAndTheFieldsOnACaption) {
  RightClick(0, "Explain");
  ASSERT_EQ(menu().shown.size(), 1u);
  const platform::MenuItem& header = menu().shown[0];
  EXPECT_EQ(header.name, "mnuHeader");
  EXPECT_EQ(header.caption, "HeaderMenu");
  EXPECT_EQ(Describe(header), (Lines{"mnuFrozen 冻结列(&Z)", "mnuHiddenCol 隐藏列(&H)", "mnuSpDefault",
                                     "mnuDefault 默认格式(&F)", "mnuSpField", "mnuFields 字段显示(&l)"}));
  RightClick(0, "BillNo");
  EXPECT_EQ(Describe(menu().shown[1])[1], "mnuHiddenCol 隐藏列(&H) -") << "the outline stays in sight";
}

TEST_F(Menus, OfferEveryColumnThatIsNotOnTheListOfHiddenKeys) {
  const int explain = ColumnOf("Explain");
  grid().SetColHidden(explain, true);
  RightClick(0, "Quantity");
  const std::vector<platform::MenuItem>& fields = menu().shown[0].items[5].items;
  EXPECT_GE(fields.size(), 35u);
  size_t at = 0;
  for (int column = 1; column < grid().Cols(); ++column) {
    const std::string key = grid().ColKey(column);
    if (control().ColsFilter().find("|" + key + "|") != std::string::npos) continue;
    ASSERT_LT(at, fields.size());
    EXPECT_EQ(fields[at].name, "mnuField");
    EXPECT_EQ(fields[at].index, static_cast<int>(at));
    EXPECT_EQ(fields[at].tag, key);
    EXPECT_EQ(fields[at].caption, grid().TextMatrix(0, column));
    EXPECT_EQ(fields[at].checked, !grid().ColHidden(column)) << key;
    EXPECT_TRUE(fields[at].visible);
    ++at;
  }
  EXPECT_GT(at, 10u);
  for (; at < fields.size(); ++at) EXPECT_FALSE(fields[at].visible) << at;
}

int IndexOf(const platform::MenuItem& header, const std::string& key) {
  for (const platform::MenuItem& field : header.items[5].items) {
    if (field.tag == key) return field.index;
  }
  return -1;
}

TEST_F(Menus, ShowAndHideAFieldAndRewriteTheNames) {
  // A column that was shown; the names follow what is hidden.
  ASSERT_FALSE(grid().ColHidden(ColumnOf("Explain")));
  menu().choose = [](const platform::MenuItem& header) {
    return platform::MenuChoice{"mnuField", IndexOf(header, "Explain")};
  };
  bool hidden_when_told = false;
  heard_.on_hearing = [&](const std::string&) { hidden_when_told = grid().ColHidden(ColumnOf("Explain")); };
  RightClick(0, "Quantity");
  EXPECT_TRUE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_TRUE(hidden_when_told);
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute AfterFieldShow"}));
  RightClick(0, "Quantity");
  EXPECT_FALSE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute AfterFieldShow"}));
}

TEST_F(Menus, LeaveTheOutlineColumnAndRaiseAnEmptyMessage) {
  menu().choose = [](const platform::MenuItem& header) {
    return platform::MenuChoice{"mnuField", IndexOf(header, "BillNo")};
  };
  RightClick(0, "Quantity");
  EXPECT_FALSE(grid().ColHidden(ColumnOf("BillNo")));
  EXPECT_EQ(heard_.Take(), (Lines{"Notify "}));
}

TEST_F(Menus, HideTheColumnUnderTheMouseAndRewriteTheNames) {
  // The names of the rows tell what is hidden; they are rewritten after the event.
  const int name = ColumnOf("ProductName");
  const int standard = ColumnOf("Standard");
  ASSERT_GE(standard, 0);
  grid().SetColHidden(standard, false);
  grid().SetCellData(4, name, base::Value(std::string("螺栓")));
  grid().SetTextMatrix(4, standard, "GB5783");
  std::string name_when_told;
  heard_.on_hearing = [&](const std::string&) { name_when_told = grid().TextMatrix(4, name); };
  menu().Choose("mnuHiddenCol");
  grid().SetLeftCol(standard);
  RightClick(0, "Standard");
  EXPECT_TRUE(grid().ColHidden(standard));
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute AfterFieldShow"}));
  EXPECT_NE(name_when_told, "螺栓 [GB5783]");
  EXPECT_EQ(grid().TextMatrix(4, name), "螺栓 [GB5783]");
}

TEST_F(Menus, DoNotHideTheOutlineColumnWhateverIsChosen) {
  menu().Choose("mnuHiddenCol");
  RightClick(0, "BillNo");
  EXPECT_FALSE(grid().ColHidden(ColumnOf("BillNo")));
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(Menus, FreezeUpToTheColumnUnderTheMouse) {
  control().SetRow(5);
  heard_.Take();
  menu().Choose("mnuFrozen");
  RightClick(0, "BillNo");
  EXPECT_EQ(grid().FrozenCols(), ColumnOf("BillNo"));
  EXPECT_TRUE(heard_.Take().empty());
  control().SetRow(6);
  for (int column = 1; column < grid().Cols(); ++column)
    EXPECT_EQ(grid().CellBackColor(5, column), grid().CellBackColor(4, column)) << column;
}

TEST_F(Menus, PutTheDefaultLayoutBack) {
  grid().SetColHidden(ColumnOf("Explain"), true);
  menu().Choose("mnuDefault");
  RightClick(0, "Quantity");
  EXPECT_FALSE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_EQ(heard_.Take(), (Lines{"AfterFormatted", "CommandExecute SetDefaultFormat"}));
}

TEST_F(Menus, CopyTheSelectionUnderABusyPointer) {
  grid().SelectRange(4, ColumnOf("BillNo"), 5, ColumnOf("BillNo"));
  fakes_.clipboard.text = "旧";
  platform::MousePointer pointer = platform::MousePointer::kDefault;
  fakes_.clipboard.on_clear = [&] { pointer = grid().Pointer(); };
  menu().Choose("mnuCopy");
  heard_.Take();
  RightClick(4, "BillNo");
  EXPECT_EQ(pointer, platform::MousePointer::kArrowHourglass);
  EXPECT_EQ(grid().Pointer(), platform::MousePointer::kDefault);
  EXPECT_EQ(fakes_.clipboard.cleared, 1);
  std::string caption = grid().TextMatrix(0, ColumnOf("BillNo"));
  std::erase_if(caption, [](char c) { return c == '\n' || c == '\r'; });
  EXPECT_EQ(fakes_.clipboard.text, caption + "\r\n出库单 4\r\n入库单 5");
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(Menus, CopyByTheKeysWhatTheItemCopies) {
  grid().SelectRange(4, ColumnOf("BillNo"), 6, ColumnOf("BillNo"));
  menu().Choose("mnuCopy");
  RightClick(4, "BillNo");
  const std::string copied = std::exchange(fakes_.clipboard.text, "");
  platform::MousePointer pointer = platform::MousePointer::kDefault;
  fakes_.clipboard.on_clear = [&] { pointer = grid().Pointer(); };
  for (const sheet::Key key : {sheet::Key::kC, sheet::Key::kInsert}) {
    EXPECT_TRUE(Key(key, sheet::Modifiers::kControl));
    EXPECT_EQ(fakes_.clipboard.text, copied);
    EXPECT_EQ(pointer, platform::MousePointer::kArrowHourglass);
  }
  EXPECT_EQ(fakes_.clipboard.cleared, 3);
  Key(sheet::Key::kC);  // a letter alone
  EXPECT_EQ(fakes_.clipboard.cleared, 3);
  heard_.Take();
  fakes_.clipboard.on_clear = [] { throw platform::Error("clipboard", "剪贴板被占用，请稍后再复制。"); };
  EXPECT_TRUE(Key(sheet::Key::kC, sheet::Modifiers::kControl));
  EXPECT_EQ(heard_.Take(), (Lines{"Notify 剪贴板被占用，请稍后再复制。"}));
}

TEST_F(Menus, LeaveTheClipboardEmptyWhenCopyingFails) {
  class Refusing : public testing::FakeClipboard {
   public:
    void SetText(std::string) override { throw platform::Error("clipboard", "剪贴板被占用，请稍后再复制。"); }
  };
  Refusing clipboard;
  clipboard.text = "旧";
  grid().SetPointer(platform::MousePointer::kDefault);
  EXPECT_THROW(grid().CopySelection(clipboard), platform::Error);
  EXPECT_EQ(clipboard.text, "");
  EXPECT_EQ(grid().Pointer(), platform::MousePointer::kDefault);
}

TEST_F(Menus, OpenByTheMenuKeyOnTheCurrentCellAndOnItsCaption) {
  grid().Select(5, ColumnOf("Explain"));
  EXPECT_TRUE(Key(sheet::Key::kMenu));
  ASSERT_EQ(menu().shown.size(), 1u);
  EXPECT_EQ(Describe(menu().shown[0])[0], "mnuBill 查看单据(&B)");
  menu().Choose("mnuHiddenCol");
  EXPECT_TRUE(Key(sheet::Key::kMenu, sheet::Modifiers::kControl));
  ASSERT_EQ(menu().shown.size(), 2u);
  EXPECT_EQ(menu().shown[1].name, "mnuHeader");
  EXPECT_TRUE(grid().ColHidden(ColumnOf("Explain")));
}

TEST_F(Menus, ActOnTheColumnThatWasMeantWhenOthersCameMeanwhile) {
  menu().choose = [&](const platform::MenuItem&) {
    grid().SetColPosition(ColumnOf("Explain"), grid().Cols() - 1);
    return platform::MenuChoice{"mnuHiddenCol", 0};
  };
  RightClick(0, "Explain");
  EXPECT_TRUE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_EQ(ColumnOf("Explain"), grid().Cols() - 1);
  menu().choose = [&](const platform::MenuItem&) {
    grid().SetCols(1);
    return platform::MenuChoice{"mnuFrozen", 0};
  };
  RightClick(0, "Quantity");
  EXPECT_EQ(grid().FrozenCols(), 0);
  EXPECT_TRUE(grid().CheckInvariants());
}

TEST_F(Menus, KeepTheHotRowWhereverTheGridRefuses) {
  bool refused = true;
  for (int call = 1; refused; ++call) {
    ASSERT_LT(call, 2000);
    testing::ControlOverFakes fakes;
    testing::FaultyGrid faulty(fakes.fg);
    Stockbook control({faulty, fakes.fg1, fakes.metrics, fakes.images, fakes.menu, fakes.clipboard, fakes.site});
    control.SetConn(testing::SmallJournal());
    fakes.fg.view().SetSize({900, 700}, 1.0);
    ASSERT_TRUE(control.Load(7, 0));
    fakes.fg.Select(5, 2);
    fakes.menu.Choose("mnuFrozen");
    faulty.RefuseCall(call);
    sheet::Mouse(fakes.fg.view())
        .Press({sheet::MouseButton::kRight, {}, {fakes.fg.view().geometry().CellRect(0, 3).x + 2, 2}});
    refused = faulty.HasRefused();
    EXPECT_TRUE(refused || fakes.fg.FrozenCols() == 3);
    faulty.RefuseCall(0);
    fakes.fg.Select(6, 2);
    EXPECT_EQ(fakes.fg.CellBackColor(6, 2), control.BackColorHot()) << "call " << call;
  }
}

TEST_F(Menus, TellTheErrorOfAMenuThatCannotOpen) {
  menu().choose = [](const platform::MenuItem&) -> platform::MenuChoice {
    throw platform::Error("menu", "菜单打不开。");
  };
  EXPECT_NO_THROW(RightClick(5, "Explain"));
  EXPECT_EQ(heard_.Take().back(), "Notify 菜单打不开。");
}

}  // namespace
}  // namespace stockbook::control
