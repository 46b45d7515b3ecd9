// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <olectl.h>

#include "com/hosted_journal.h"

namespace stockbook::com {
namespace {

using testing::HostedJournal;
using testing::Late;
using testing::NewPicture;

constexpr HRESULT kMismatch = static_cast<HRESULT>(0x800A000D);

TEST(GridObject, IsTheSameEveryTime) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  EXPECT_EQ(host.late().Get("Grid").Object().get(), host.late().Get("Grid").Object().get());
}

TEST(GridObject, ShowsTheLoadedCells) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  const Late grid = host.grid();
  EXPECT_EQ(grid.Get("Rows").Long(), 16);
  EXPECT_EQ(grid.Get("FixedRows").Long(), 1);
  EXPECT_EQ(grid.Get("FixedCols").Long(), 1);
  const int column = grid.Get("ColIndex", "BillNo").Long();
  ASSERT_GT(column, 0);
  EXPECT_EQ(grid.Get("ColKey", column).Text(), "BillNo");
  EXPECT_EQ(grid.Get("OutlineCol").Long(), column);
  EXPECT_EQ(grid.Get("TextMatrix", 3, column).Text(), "入库单 3");
  EXPECT_EQ(grid.Get("textmatrix", 4, column).Text(), "出库单 4") << "names have no case";
  const int quantity = grid.Get("ColIndex", "RevQty").Long();
  EXPECT_EQ(grid.Get("ValueMatrix", 3, quantity).Double(), 3.0);
  EXPECT_EQ(grid.Get("DisplayText", 3, quantity).Text(), "3.00");
  EXPECT_TRUE(grid.Get("IsSubtotal", 2).Truth());
  EXPECT_FALSE(grid.Get("IsSubtotal", 3).Truth());
  EXPECT_EQ(grid.Get("RowOutlineLevel", 3).Long(), 1);
  EXPECT_EQ(grid.Get("ColIndex", "NoSuchKey").Long(), -1);
  EXPECT_EQ(grid.Get("CellData", 3, grid.Get("ColIndex", "RevAcc").Long()).value.get().vt, VT_CY);
}

TEST(GridObject, WritesCellsColumnsAndRows) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  const Late grid = host.grid();
  EXPECT_TRUE(grid.Put("TextMatrix", 3, 2, "改").Succeeded());
  EXPECT_EQ(grid.Get("TextMatrix", 3, 2).Text(), "改");
  EXPECT_TRUE(grid.Put("CellData", 3, 2, 12.5).Succeeded());
  EXPECT_EQ(grid.Get("CellData", 3, 2).Double(), 12.5);
  EXPECT_TRUE(grid.Put("ColHidden", 2, true).Succeeded());
  EXPECT_TRUE(grid.Get("ColHidden", 2).Truth());
  EXPECT_TRUE(grid.Put("ColWidth", 2, 1500).Succeeded());
  EXPECT_EQ(grid.Get("ColWidth", 2).Long(), 1500);
  EXPECT_TRUE(grid.Put("ColFormat", 2, "#,##0.0").Succeeded());
  EXPECT_EQ(grid.Get("ColFormat", 2).Text(), "#,##0.0");
  EXPECT_TRUE(grid.Put("ColAlignment", 2, 7).Succeeded());
  EXPECT_EQ(grid.Get("ColAlignment", 2).Long(), 7);
  EXPECT_TRUE(grid.Put("RowHidden", 4, true).Succeeded());
  EXPECT_TRUE(grid.Get("RowHidden", 4).Truth());
  EXPECT_TRUE(grid.Put("RowHeight", 5, 500).Succeeded());
  EXPECT_EQ(grid.Get("RowHeight", 5).Long(), 500);
  EXPECT_TRUE(grid.Put("RowHeight", -1, 300).Succeeded());
  EXPECT_EQ(grid.Get("RowHeight", 5).Long(), 300);
  EXPECT_TRUE(grid.Put("FrozenCols", 3).Succeeded());
  EXPECT_EQ(grid.Get("FrozenCols").Long(), 3);
  EXPECT_TRUE(grid.Call("AddItem", "\t甲\t乙").Succeeded());
  EXPECT_EQ(grid.Get("Rows").Long(), 17);
  EXPECT_EQ(grid.Get("TextMatrix", 16, 2).Text(), "乙");
  EXPECT_TRUE(grid.Call("RemoveItem", 16).Succeeded());
  EXPECT_EQ(grid.Get("Rows").Long(), 16);
  EXPECT_TRUE(grid.Put("Tag", "忙").Succeeded());
  EXPECT_EQ(grid.Get("Tag").Text(), "忙");
  EXPECT_TRUE(grid.Put("Redraw", false).Succeeded());
  EXPECT_FALSE(grid.Get("Redraw").Truth());
  EXPECT_TRUE(grid.Put("BackColorSel", 0x112233).Succeeded());
  EXPECT_EQ(host.late().Get("BackColorSel").Long(), 0x112233);
  EXPECT_TRUE(grid.Put("CellBackColor", 3, 3, 0x445566).Succeeded());
  EXPECT_EQ(grid.Get("CellBackColor", 3, 3).Long(), 0x445566);
  const auto picture = NewPicture(6);
  EXPECT_TRUE(grid.Put("CellPicture", 3, 3, Variant(picture.get())).Succeeded());
  EXPECT_EQ(grid.Get("CellPicture", 3, 3).Object().get(), picture.get());
}

TEST(GridObject, SelectsAndFolds) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  const Late grid = host.grid();
  EXPECT_TRUE(grid.Put("Row", 4).Succeeded());
  EXPECT_TRUE(grid.Put("Col", 3).Succeeded());
  EXPECT_EQ(grid.Get("Row").Long(), 4);
  EXPECT_EQ(grid.Get("Col").Long(), 3);
  EXPECT_TRUE(grid.Call("Select", 6, 4, 3, 2).Succeeded());
  EXPECT_EQ(grid.Get("RowSel").Long(), 3);
  EXPECT_EQ(grid.Get("ColSel").Long(), 2);
  LONG corners[4] = {};
  std::vector<Variant> arguments(4);
  for (size_t index = 0; index < 4; ++index) {
    arguments[index].get().vt = VT_BYREF | VT_I4;
    arguments[index].get().plVal = &corners[index];
  }
  EXPECT_TRUE(grid.Invoke("GetSelection", DISPATCH_METHOD, std::move(arguments)).Succeeded());
  EXPECT_EQ(corners[0], 3);
  EXPECT_EQ(corners[1], 2);
  EXPECT_EQ(corners[2], 6);
  EXPECT_EQ(corners[3], 4);
  EXPECT_TRUE(grid.Call("CollapseAll").Succeeded());
  EXPECT_TRUE(grid.Get("IsCollapsed", 2).Truth());
  EXPECT_TRUE(grid.Call("ExpandAll").Succeeded());
  EXPECT_FALSE(grid.Get("IsCollapsed", 2).Truth());
}

TEST(GridObject, RefusesRowsAndColumnsThatAreNotThere) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  const Late grid = host.grid();
  for (const int row : {-2, 16, 2147483647}) {
    const auto refused = grid.Get("TextMatrix", row, 1);
    EXPECT_EQ(refused.code, CTL_E_INVALIDPROPERTYARRAYINDEX);
    EXPECT_EQ(refused.description, "行 " + std::to_string(row) + " 不存在：网格中为 0 至 15。");
  }
  EXPECT_EQ(grid.Put("TextMatrix", 3, 500, "x").code, CTL_E_INVALIDPROPERTYARRAYINDEX);
  for (const char* name :
       {"ColKey", "ColHidden", "ColWidth", "ColFormat", "ColDataType", "ColAlignment", "ColPosition"})
    EXPECT_EQ(grid.Get(name, 999).code, CTL_E_INVALIDPROPERTYARRAYINDEX) << name;
  for (const char* name : {"RowHidden", "RowHeight", "IsSubtotal", "RowOutlineLevel", "IsCollapsed", "RowIsVisible"})
    EXPECT_EQ(grid.Get(name, 999).code, CTL_E_INVALIDPROPERTYARRAYINDEX) << name;
  EXPECT_EQ(grid.Put("TopRow", 999).code, CTL_E_INVALIDPROPERTYARRAYINDEX);
  EXPECT_EQ(grid.Call("Select", 3, 999).code, CTL_E_INVALIDPROPERTYARRAYINDEX);
  // The engine's own refusals come with a number and a Chinese sentence, too.
  const auto negative = grid.Put("ColWidth", 2, -5);
  EXPECT_EQ(negative.code, CTL_E_INVALIDPROPERTYVALUE);
  EXPECT_EQ(negative.description.substr(0, 3), "“");
  EXPECT_EQ(grid.Put("GridLines", 8).code, CTL_E_INVALIDPROPERTYVALUE);
  EXPECT_EQ(grid.Put("Rows", -1).code, CTL_E_INVALIDPROPERTYVALUE);
}

TEST(GridObject, RefusesWrongTypesCountsAndNames) {
  const HostedJournal host(HostedJournal::State::kLoaded);
  const Late grid = host.grid();
  EXPECT_EQ(grid.Get("TextMatrix", "drei", 1).code, kMismatch);
  EXPECT_EQ(grid.Get("TextMatrix", 1e300, 1).code, CTL_E_OVERFLOW);
  EXPECT_EQ(grid.Get("TextMatrix", 1).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(grid.Get("TextMatrix", 1, 1, 1).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(grid.Put("TextMatrix", 1, 1).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(grid.Get("NoSuchMember").code, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(grid.Put("MouseRow", 1).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(grid.Call("GetSelection", 1, 2, 3, 4).code, kMismatch);
  const auto object = host.late().Get("Grid").Object();
  DISPID id = 0;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER);
  EXPECT_EQ(object->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr), E_POINTER);
  DISPPARAMS none{};
  EXPECT_EQ(object->Invoke(99999, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(object->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr), S_OK);
}

TEST(GridObject, SaysSoWhenTheControlHasEnded) {
  ComPtr<IDispatch> grid;
  ComPtr<IDispatch> frame;
  {
    const HostedJournal host(HostedJournal::State::kLoaded);
    grid = host.late().Get("Grid").Object();
    frame = host.grid().Get("C1EBody").Object();
    EXPECT_FALSE(testing::ComponentIsIdle());
  }
  for (const auto& object : {grid, frame}) {
    const auto said = Late(object.get()).Get("BackColor");
    EXPECT_EQ(said.code, CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(said.description, "控件已经关闭：这个对象不再属于任何控件。");
  }
}

TEST(FrameObjects, ReadAndWriteWhatTheControlKeepsOfThem) {
  const HostedJournal host(HostedJournal::State::kEmpty);
  const Late grid = host.grid();
  const Late desk(grid.Get("C1EDesk").Object().get());
  const Late body(grid.Get("C1EBody").Object().get());
  const Late header(grid.Get("C1EHeader").Object().get());
  EXPECT_TRUE(desk.Put("BorderWidth", 0).Succeeded());
  EXPECT_EQ(host.late().Get("BorderWidth").Long(), 0);
  EXPECT_EQ(body.Get("BorderWidth").Long(), 1);
  EXPECT_TRUE(desk.Put("ChildSpacing", 4).Succeeded());
  EXPECT_EQ(host.late().Get("ChildSpacing").Long(), 4);
  EXPECT_TRUE(body.Put("BackColor", 0x0A0B0C).Succeeded());
  EXPECT_EQ(host.late().Get("BorderColor").Long(), 0x0A0B0C);
  EXPECT_TRUE(header.Put("Caption", " 甲 ").Succeeded());
  EXPECT_EQ(header.Get("Caption").Text(), "甲   ");
  EXPECT_EQ(body.Put("Caption", "x").code, CTL_E_SETNOTSUPPORTED);
  EXPECT_EQ(header.Put("BorderWidth", 3).code, CTL_E_SETNOTSUPPORTED);
  EXPECT_EQ(desk.Put("BorderWidth", 40000).code, CTL_E_OVERFLOW);
}

}  // namespace
}  // namespace stockbook::com
