// SPDX-License-Identifier: MIT
// What a host sees of find, the menus and the row clamp beyond the items themselves.
#include <gtest/gtest.h>

#include "control/working_control.h"
#include "stockbook/base/value.h"

namespace stockbook::control {
namespace {

using FindRules = WorkingControl;
using MenuRules = WorkingControl;

TEST_F(FindRules, TheStartRowIsNotUsedAndTheResultIsAlwaysFalse) {
  heard_.Take();
  EXPECT_FALSE(control().Find("出库单 4", 12));
  const Lines from_twelve = heard_.Take();
  EXPECT_FALSE(control().Find("出库单 4"));
  EXPECT_EQ(heard_.Take(), from_twelve);
  EXPECT_GE(from_twelve.size(), 4U) << "begin, the hit in row 4, end, the count";
  EXPECT_FALSE(control().Find("没有这样的文字"));
  EXPECT_EQ(heard_.Take(), (Lines{"FindMsg #BEGIN#", "FindMsg #END#", "Notify 找到记录共 0 条。"}));
}

TEST_F(FindRules, AHitIsNamedByItsBillNumber) {
  grid().SetTextMatrix(4, ColumnOf("Explain"), "独一无二");
  heard_.Take();
  control().Find("独一无二");
  EXPECT_EQ(heard_.Take(),
            (Lines{"FindMsg #BEGIN#", "FindMsg 出库单 4 |4", "FindMsg #END#", "Notify 找到记录共 1 条。"}));
  control().Find("2004年03月期初");
  EXPECT_EQ(heard_.Take()[1], "FindMsg 2004年03月期初 |1") << "the opening row is searched as well";
}

TEST_F(FindRules, HitsInFoldedPeriodsAreReportedToo) {
  grid().SetTextMatrix(4, ColumnOf("Explain"), "独一无二");
  grid().CollapseAll();
  heard_.Take();
  control().Find("独一无二");
  EXPECT_EQ(heard_.Take()[1], "FindMsg 出库单 4 |4");
  EXPECT_TRUE(grid().IsCollapsed(2)) << "finding unfolds nothing";
}

TEST_F(FindRules, EveryCallStartsAfresh) {
  control().Find("说明");
  const Lines first = heard_.Take();
  control().Find("说明");
  EXPECT_EQ(heard_.Take(), first);
  EXPECT_EQ(first.size(), 13U) << "ten lines";
}

TEST_F(MenuRules, TheFindItemOnlyAsksTheHost) {
  heard_.Take();
  menu().Choose("mnuFind");
  grid().SelectRange(4, ColumnOf("Explain"), 5, ColumnOf("Explain"));
  heard_.Take();
  RightClick(4, "Explain");
  EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute Find"}));
}

TEST_F(MenuRules, TheDefaultLayoutComesBeforeItsCommandAndTheNamesAfterIt) {
  const int name = ColumnOf("ProductName");
  grid().SetCellData(4, name, base::Value(std::string("螺栓")));
  grid().SetTextMatrix(4, name, "old");
  grid().SetTextMatrix(4, ColumnOf("Measure"), "个");
  grid().SetColHidden(ColumnOf("Explain"), true);
  std::string seen;
  heard_.on_hearing = [&](const std::string& line) {
    if (line == "CommandExecute SetDefaultFormat") {
      seen = std::string(grid().ColHidden(ColumnOf("Explain")) ? "hidden " : "shown ") + grid().TextMatrix(4, name);
    }
  };
  menu().Choose("mnuDefault");
  heard_.cancels = true;
  RightClick(0, "RevQty");
  EXPECT_EQ(seen, "shown old");
  EXPECT_EQ(grid().TextMatrix(4, name), "螺栓 (个)") << "whatever the host cancels";
}

TEST_F(MenuRules, AFieldThatIsShownOrHiddenRewritesTheNames) {
  const int name = ColumnOf("ProductName");
  grid().SetCellData(4, name, base::Value(std::string("螺栓")));
  grid().SetTextMatrix(4, ColumnOf("Model"), "M8");
  grid().SetTextMatrix(4, name, "old");
  int index = -1;
  menu().choose = [&](const platform::MenuItem& header) {
    for (const platform::MenuItem& field : header.items[5].items) {
      if (field.tag == "Depot") index = field.index;
    }
    return platform::MenuChoice{"mnuField", index};
  };
  RightClick(0, "RevQty");
  ASSERT_GE(index, 0);
  EXPECT_FALSE(grid().ColHidden(ColumnOf("Depot"))) << "an optional column is shown";
  EXPECT_EQ(grid().TextMatrix(4, name), "螺栓 M8");
}

int FieldOf(const platform::MenuItem& header, const std::string& key) {
  for (const platform::MenuItem& field : header.items[5].items) {
    if (field.tag == key) return field.index;
  }
  return -1;
}

TEST_F(MenuRules, FieldsTickedInOneMenuAreEachShownOrHiddenAndToldAtOnce) {
  ASSERT_FALSE(grid().ColHidden(ColumnOf("Explain")));
  ASSERT_TRUE(grid().ColHidden(ColumnOf("Depot")));
  menu().while_open = [&](const platform::MenuItem& header, const platform::MenuTick& tick) {
    const auto expect = [&](const char* key, bool shown) {
      EXPECT_EQ(tick({"mnuField", FieldOf(header, key)}), shown) << key;
      EXPECT_EQ(grid().ColHidden(ColumnOf(key)), !shown) << key;
      EXPECT_EQ(heard_.Take(), (Lines{"CommandExecute AfterFieldShow"})) << key;
    };
    expect("Explain", false);
    expect("Depot", true);
    expect("Explain", true);
    expect("Depot", false);
    expect("Explain", false);
  };
  RightClick(0, "RevQty");
  EXPECT_TRUE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_TRUE(heard_.Take().empty()) << "nothing was chosen";
}

TEST_F(MenuRules, TheOutlineColumnKeepsItsTickInAMenuThatStaysOpen) {
  menu().while_open = [&](const platform::MenuItem& header, const platform::MenuTick& tick) {
    for (int time = 0; time < 2; ++time) {
      EXPECT_TRUE(tick({"mnuField", FieldOf(header, "BillNo")}));
      EXPECT_EQ(heard_.Take(), (Lines{"Notify "}));
    }
  };
  RightClick(0, "RevQty");
  EXPECT_FALSE(grid().ColHidden(ColumnOf("BillNo")));
}

TEST_F(MenuRules, AFieldWhoseColumnIsGoneKeepsItsTick) {
  menu().while_open = [&](const platform::MenuItem& header, const platform::MenuTick& tick) {
    const int field = FieldOf(header, "Explain");
    grid().SetColKey(ColumnOf("Explain"), "Other");
    EXPECT_TRUE(tick({"mnuField", field}));
    EXPECT_FALSE(tick({"mnuField", 99})) << "no item of the menu";
  };
  RightClick(0, "RevQty");
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(MenuRules, AFixedColumnIsNotHidden) {
  grid().SetFixedCols(ColumnOf("Explain") + 1);
  heard_.Take();
  menu().Choose("mnuHiddenCol");
  RightClick(0, "Explain");
  ASSERT_EQ(menu().shown.size(), 1U);
  EXPECT_FALSE(grid().ColHidden(ColumnOf("Explain")));
  EXPECT_TRUE(heard_.Take().empty());
}

TEST_F(MenuRules, MoreFieldsThanItemsAreAllOffered) {
  grid().SetCols(56 + 30);
  for (int column = 56; column < grid().Cols(); ++column) {
    grid().SetColKey(column, "Extra" + std::to_string(column));
    grid().SetTextMatrix(0, column, "更多");
  }
  RightClick(0, "BillNo");
  ASSERT_EQ(menu().shown.size(), 1U);
  const std::vector<platform::MenuItem>& fields = menu().shown[0].items[5].items;
  EXPECT_GT(fields.size(), 35U);
  for (const platform::MenuItem& field : fields) EXPECT_TRUE(field.visible);
  EXPECT_EQ(fields.back().tag, "Extra85");
}

TEST_F(MenuRules, TheClampMeasuresTheSampleTextInTheGridsFont) {
  struct Metrics : testing::FakeTextMetrics {
    double TextHeightTwips(std::string_view text, const platform::Font& font) const override {
      return text == "Tallomere" && font.name == "Some Sans" ? 400.4 : 1;
    }
  } metrics;
  testing::ControlOverFakes fakes;
  platform::Font font = fakes.fg.GridFont();
  font.name = "Some Sans";
  fakes.fg.SetGridFont(font);
  Stockbook control({fakes.fg, fakes.fg1, metrics, fakes.images, fakes.menu, fakes.clipboard, fakes.site});
  fakes.fg.SetRows(3);
  fakes.fg.SetRowHeight(1, 10);
  fakes.fg.view().SetSize({900, 700}, 1.0);
  sheet::Mouse mouse(fakes.fg.view());
  const sheet::Rect rect = fakes.fg.view().geometry().CellRect(2, 0);
  sheet::MouseEvent event{sheet::MouseButton::kLeft, {}, {rect.x + rect.width / 2, rect.bottom()}};
  mouse.Press(event);
  event.at.y -= 300;
  mouse.Move(event);
  mouse.Release(event);
  EXPECT_EQ(control.RowHeight(), 430) << "400.4 and two pixels of 15 twips, rounded";
}

}  // namespace
}  // namespace stockbook::control
